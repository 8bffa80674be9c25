#pragma once

#include <cstddef>
#include <cstdint>

namespace ormalux {

/// A picture to be shown: 8-bit gray, or 24-bit blue, green, red bytes. bits is the top row of the picture as
/// seen; a buffer whose bottom row comes first has a negative stride.
struct PixelSource
{
    const std::uint8_t* bits = nullptr;
    int width = 0;
    int height = 0;
    std::ptrdiff_t stride = 0;
    int bitCount = 8;

    bool empty() const { return !bits || width < 1 || height < 1 || (bitCount != 8 && bitCount != 24); }
    const std::uint8_t* row(int y) const { return bits + y * stride; }
};

/// The bytes of a row that is padded to 4 bytes.
constexpr std::int64_t paddedRow(int width, int bitCount)
{
    return (std::int64_t(width) * bitCount + 31) / 32 * 4;
}

} // namespace ormalux
