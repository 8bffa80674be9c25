#pragma once

#include "image/GrayView.h"
#include "image/PictureOrigin.h"
#include "image/PixelSource.h"

#include <cstdint>
#include <vector>

namespace ormalux {

/// A picture in memory: rows top-down and unpadded, 8-bit gray or 24-bit blue, green, red.
struct Picture
{
    int width = 0;
    int height = 0;
    int bitCount = 8;
    std::vector<std::uint8_t> pixels;
    std::vector<std::uint16_t> deep{}; ///< of a file of 16-bit gray levels: these, row by row; else empty
    PictureOrigin origin{};            ///< of a picture that was read from a file

    bool empty() const { return pixels.empty(); }
    bool isGray() const { return bitCount == 8; }
    /// The pixels in place; an empty view for a colour picture.
    GrayView gray() { return isGray() ? GrayView{pixels.data(), width, height, width} : GrayView{}; }
    PixelSource source() const
    {
        return {pixels.data(), width, height, std::ptrdiff_t(width) * (bitCount / 8), bitCount};
    }
};

/// Pictures of more pixels are refused.
inline constexpr std::int64_t largestPicture = std::int64_t(512) << 20;

} // namespace ormalux
