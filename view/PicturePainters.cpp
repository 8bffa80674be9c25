#include "view/PicturePainters.h"

#include "image/ImagePainter.h"
#include "view/NearestPixels.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace ormalux {

namespace {

/// One direction of a target: which source index each visible device position shows.
struct Axis
{
    std::int64_t start;
    std::int64_t length;
    bool mirrored;
    std::int64_t firstShown = 0;
    std::int64_t endShown = 0;

    Axis(std::int64_t from, std::int64_t to)
        : start(std::min(from, to)), length(std::abs(to - from)), mirrored(to < from)
    {}

    bool limitTo(std::int64_t low, std::int64_t high)
    {
        firstShown = std::max(start, low);
        endShown = std::min(start + length, high);
        return firstShown < endShown;
    }

    std::vector<int> sources(int size) const
    {
        std::vector<int> indexes(std::size_t(endShown - firstShown));
        for (std::size_t i = 0; i < indexes.size(); ++i) {
            const std::int64_t at = firstShown - start + std::int64_t(i);
            indexes[i] = int((mirrored ? length - 1 - at : at) * size / length);
        }
        return indexes;
    }
};

QRect shownBy(QPainter& painter)
{
    if (!painter.device())
        return {};
    const QRect device(0, 0, painter.device()->width(), painter.device()->height());
    bool invertible = false;
    const QTransform back = painter.transform().inverted(&invertible);
    if (!invertible)
        return {};
    const QRect shown = back.mapRect(QRectF(device)).toAlignedRect();
    return painter.hasClipping() ? shown & painter.clipBoundingRect().toAlignedRect() : shown;
}

void paintGray(CDC* dc, const CRect& rect, const ConstGrayView& picture)
{
    paintPicture(dc, rect, {picture.pixels, picture.width, picture.height, picture.stride, 8});
}

void paintColor(CDC* dc, const CRect& rect, const std::uint8_t* pixels, int width, int height)
{
    if (!pixels || width < 1 || height < 1)
        return;
    const std::ptrdiff_t stride = paddedRow(width, 24);
    paintPicture(dc, rect, {pixels + stride * (height - 1), width, height, -stride, 24});
}

/// The processing module paints through these as long as the display module is loaded.
struct Installed
{
    Installed() { setImagePainters(paintGray, paintColor); }
    ~Installed() { setImagePainters(nullptr, nullptr); }
} const installed;

} // namespace

void paintPicture(QPainter* painter, const RECT& target, const PixelSource& picture)
{
    if (!painter || !painter->isActive() || picture.empty())
        return;
    const QRect shown = shownBy(*painter);
    Axis across(target.left, target.right);
    Axis down(target.top, target.bottom);
    if (shown.isEmpty() || !across.limitTo(shown.left(), std::int64_t(shown.left()) + shown.width()) ||
        !down.limitTo(shown.top(), std::int64_t(shown.top()) + shown.height()))
        return;
    QImage pixels(int(across.endShown - across.firstShown), int(down.endShown - down.firstShown),
                  QImage::Format_RGB32);
    if (pixels.isNull())
        return;
    copyNearest(picture, across.sources(picture.width), down.sources(picture.height),
                reinterpret_cast<std::uint32_t*>(pixels.bits()), pixels.bytesPerLine() / 4);
    painter->drawImage(QPoint(int(across.firstShown), int(down.firstShown)), pixels);
}

} // namespace ormalux
