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

bool isWhole(double offset)
{
    return std::abs(offset) < 1e9 && offset == std::floor(offset);
}

} // namespace

std::optional<DeviceCanvas> canvasOf(QPainter& painter)
{
    QPaintDevice* const device = painter.device();
    if (!device || device->devType() != QInternal::Image || !paintsPlainly(painter))
        return {};
    const auto* const image = static_cast<const QImage*>(device);
    const QTransform move = painter.deviceTransform();
    if (image->format() != QImage::Format_RGB32 || move.type() > QTransform::TxTranslate ||
        !isWhole(move.dx()) || !isWhole(move.dy()))
        return {};
    const int left = -int(move.dx());
    const int top = -int(move.dy());
    // The painter took the image's pixels for itself when it began: no copy may be made of them here.
    return DeviceCanvas{
        reinterpret_cast<std::uint32_t*>(const_cast<uchar*>(image->constBits())),
        image->bytesPerLine() / 4,
        {left, top, left + image->width(), top + image->height()},
    };
}

} // namespace ormalux
