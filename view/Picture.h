#pragma once

#include "image/GrayView.h"
#include "view/PictureOrigin.h"
#include "view/PixelSource.h"

#include <QImage>

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
    PictureOrigin origin;              ///< of a picture that was read from a file

    bool empty() const { return pixels.empty(); }
    bool isGray() const { return bitCount == 8; }
    /// The pixels in place; an empty view for a colour picture.
    GrayView gray() { return isGray() ? GrayView{pixels.data(), width, height, width} : GrayView{}; }
    PixelSource source() const
    {
        return {pixels.data(), width, height, std::ptrdiff_t(width) * (bitCount / 8), bitCount};
    }
};

/// The gray form that tools measure on: (R + G + B) / 3. A gray picture comes back as it is.
Picture toGray(Picture picture);

/// A copy for the toolkit: gray pictures as Format_Grayscale8, colour ones as Format_BGR888. Null when there
/// are no pixels or memory is short. A gray image is toQImage({view.pixels, view.width, view.height,
/// view.stride}).
QImage toQImage(const PixelSource& source);
QImage toQImage(const ConstGrayView& gray);

} // namespace ormalux
