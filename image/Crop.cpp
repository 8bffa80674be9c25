#include "image/Crop.h"

#include "image/PixelBuffer.h"

#include <cstring>

namespace ormalux {

namespace {

bool liesInside(const ConstGrayView& image, int left, int top, int right, int bottom)
{
    return !image.empty() && left >= 0 && top >= 0 && right < image.width && bottom < image.height;
}

} // namespace

std::uint8_t* copyOfRectangle(const ConstGrayView& image, int left, int top, int right, int bottom)
{
    if (!liesInside(image, left, top, right, bottom))
        return nullptr;
    const std::size_t width = std::size_t(right) - left + 1;
    const std::size_t height = std::size_t(bottom) - top + 1;
    std::uint8_t* copy = newPixels(width * height);
    if (!copy)
        return nullptr;
    if (std::ptrdiff_t(width) == image.stride) {
        std::memcpy(copy, image.row(top), width * height);
        return copy;
    }
    for (std::size_t y = 0; y < height; ++y)
        std::memcpy(copy + y * width, image.row(top + int(y)) + left, width);
    return copy;
}

bool cropInPlace(const GrayView& image, int left, int top, int right, int bottom)
{
    if (!liesInside(image, left, top, right, bottom))
        return false;
    const std::size_t width = std::size_t(right) - left + 1;
    std::uint8_t* to = image.pixels;
    for (int y = top; y <= bottom; ++y, to += width)
        std::memmove(to, image.row(y) + left, width);
    return true;
}

} // namespace ormalux
