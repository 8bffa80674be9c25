#include "view/PictureOrigin.h"

#include "view/FileHead.h"

#include <QImage>

#include <algorithm>
#include <bit>
#include <cstdint>

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

std::vector<std::string> whatWasCut(const PictureOrigin& origin)
{
    std::vector<std::string> losses;
    if (origin.depthCut()) {
        const std::string bits = std::to_string(origin.bits);
        losses.push_back(bits + " bits a sample are cut to 8");
        if (origin.usedBits < origin.bits)
            losses.back() += "; its levels need only " + std::to_string(origin.usedBits) + " of " + bits +
                             " bits, so that it is dark";
    }
    if (origin.pages > 1)
        losses.push_back("only the first of " + std::to_string(origin.pages) + " pages is read");
    if (origin.transparent)
        losses.push_back("its transparency is dropped");
    return losses;
}

} // namespace ormalux
