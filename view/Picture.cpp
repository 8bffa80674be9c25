#include "view/Picture.h"

#include <cstring>

namespace ormalux {

Picture toGray(Picture picture)
{
    if (picture.isGray())
        return picture;
    const std::size_t count = picture.pixels.size() / 3;
    std::uint8_t* const p = picture.pixels.data(); // the gray bytes never overtake the colours they come from
    for (std::size_t i = 0; i < count; ++i)
        p[i] = std::uint8_t((p[3 * i] + p[3 * i + 1] + p[3 * i + 2]) / 3);
    picture.pixels.resize(count);
    picture.bitCount = 8;
    return picture;
}

QImage toQImage(const PixelSource& source)
{
    if (source.empty())
        return {};
    const auto format = source.bitCount == 8 ? QImage::Format_Grayscale8 : QImage::Format_BGR888;
    QImage image(source.width, source.height, format);
    if (image.isNull())
        return {};
    for (int y = 0; y < source.height; ++y)
        std::memcpy(image.scanLine(y), source.row(y), std::size_t(source.width) * (source.bitCount / 8));
    return image;
}

QImage toQImage(const ConstGrayView& gray)
{
    return toQImage(PixelSource{gray.pixels, gray.width, gray.height, gray.stride, 8});
}

} // namespace ormalux
