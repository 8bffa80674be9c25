#include "view/DeviceCanvas.h"

#include <QImage>
#include <QPainter>

#include <cmath>

namespace ormalux {

namespace {

bool paintsPlainly(const QPainter& painter)
{
    return painter.compositionMode() == QPainter::CompositionMode_SourceOver && painter.opacity() == 1 &&
           !painter.hasClipping();
}

constexpr double largestScale = 16;

/// Whether canvases know the way from the painter's coordinates to the device's.
bool isPlain(const QTransform& way)
{
    const auto isNear = [](double offset) { return std::abs(offset) < 1e9; };
    const auto isWhole = [](double offset) { return offset == std::floor(offset); };
    return way.type() <= QTransform::TxScale && way.m11() == way.m22() && way.m11() >= 1 &&
           way.m11() <= largestScale && isNear(way.dx()) && isNear(way.dy()) &&
           (way.m11() > 1 || (isWhole(way.dx()) && isWhole(way.dy())));
}

} // namespace

std::optional<DeviceCanvas> canvasOf(QPainter& painter)
{
    QPaintDevice* const device = painter.device();
    if (!device || device->devType() != QInternal::Image || !paintsPlainly(painter))
        return {};
    const auto* const image = static_cast<const QImage*>(device);
    const QTransform way = painter.deviceTransform();
    if (image->format() != QImage::Format_RGB32 || !isPlain(way))
        return {};
    const int left = -int(std::floor(way.dx()));
    const int top = -int(std::floor(way.dy()));
    // The painter took the image's pixels for itself when it began: no copy may be made of them here.
    return DeviceCanvas{
        reinterpret_cast<std::uint32_t*>(const_cast<uchar*>(image->constBits())),
        image->bytesPerLine() / 4,
        {left, top, left + image->width(), top + image->height()},
        way.m11(),
        way.dx() + left,
        way.dy() + top,
    };
}

} // namespace ormalux
