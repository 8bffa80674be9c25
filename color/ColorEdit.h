#pragma once

#include "color/ColorView.h"

#include <cstdint>

namespace ormalux {

/// Small edits of a colour image. Colours have red in their lowest bits.

/// The pixel at byte width x y + 3 x x; bytes outside the buffer read as 0 and are not written.
std::uint32_t colorAt(const ConstColorView& image, int x, int y);
void setColorAt(const ColorView& image, int x, int y, std::uint32_t color);

/// Columns x1 to x2 - 1 of rows y1 to y2 - 1.
struct PixelBox
{
    int x1;
    int y1;
    int x2;
    int y2;
};

/// Paints the box at 3 x width x y + 3 x x; what leaves the buffer is left out.
void paintBox(const ColorView& image, const PixelBox& box, std::uint32_t color);
/// The same for one byte of each pixel: 0 blue, 1 green, 2 red.
void paintChannel(const ColorView& image, const PixelBox& box, int channel, std::uint8_t value);

/// Multiplies the channel byte of the first pixel of every row width times by gain.
void repeatGain(const ColorView& image, int channel, float gain);

} // namespace ormalux
