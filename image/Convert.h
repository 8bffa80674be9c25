#pragma once

#include <cstdint>

namespace ormalux {

/// Gray pixels from blue, green, red bytes, rows top-down and unpadded. channels names the value, by exact
/// comparison: "R", "G", "B" one byte; "RGB" (blue + green + red) / 3; "RG", "RB", "GB" half the sum of the
/// two. Any other text, and null, gives black. The new buffer is freed with delete[]; null when memory is
/// short. The sizes must not be negative and their product must fit 31 bits.
std::uint8_t* convert24To8(int width, int height, const std::uint8_t* pixels, const char* channels);

/// Deliberate: with s the source bytes, for every y from 0 to height inclusive and x = 0, 4, 8, ... up to
/// width inclusive, byte (y * width + x) / 4 becomes (s[i] + s[i + 1] + s[i + 2]) / 3 for i = y * width + x.
/// Rows thus advance by width bytes, not by 4 * width, and only the first quarter of the result is written;
/// the rest is 0.
std::uint8_t* convert32To8(int width, int height, const std::uint8_t* pixels);

} // namespace ormalux
