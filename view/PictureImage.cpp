#include "view/PictureImage.h"

#include "view/FileHead.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

namespace ormalux {

namespace {

/// The bits that the largest of 16-bit samples needs.
int usedBits(const QImage& image)
{
    const bool gray = image.format() == QImage::Format_Grayscale16;
    unsigned all = 0;
    for (int y = 0; y < image.height(); ++y) {
        const auto* in = reinterpret_cast<const std::uint16_t*>(image.constScanLine(y));
        for (int i = 0; i < image.width() * (gray ? 1 : 4); ++i)
            if (gray || i % 4 != 3) // without transparency
                all |= in[i];
    }
    return int(std::bit_width(all));
}

/// Whether any pixel is not opaque.
bool isTransparent(const QImage& image)
{
    if (!image.hasAlphaChannel())
        return false;
    for (int y = 0; y < image.height(); ++y) {
        const QImage row = image.copy(0, y, image.width(), 1).convertToFormat(QImage::Format_Alpha8);
        if (!std::all_of(row.constBits(), row.constBits() + row.width(), [](uchar a) { return a == 255; }))
            return true;
    }
    return false;
}

} // namespace

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

PictureOrigin originOf(const QImage& image, const FileHead& head, int pages)
{
    PictureOrigin origin;
    const QImage::Format format = image.format();
    const bool wide = format == QImage::Format_Grayscale16 ||
                      (format >= QImage::Format_RGBX64 && format <= QImage::Format_RGBA64_Premultiplied);
    origin.bits = head.bits ? head.bits : wide ? 16 : 8;
    origin.usedBits = wide ? std::min(usedBits(image), origin.bits) : origin.bits;
    origin.pages = std::max(pages, 1);
    origin.transparent = isTransparent(image);
    return origin;
}

} // namespace ormalux
