#pragma once

#include "platform/Types.h"
#include "view/NearestPixels.h"
#include "view/ShapePainter.h"

#include <QPointF>
#include <QSize>

#include <algorithm>

namespace ormalux {

/// Zooms end here; gray levels are written into the pixels then.
inline constexpr float largestZoom = 25.0f;

/// Where the picture lies in the view. Device points are client coordinates.
struct ViewGeometry
{
    float zoom = 1;
    QPoint center; ///< where the picture starts while it is centred
    QPoint scroll;
    QSize picture; ///< in pixels; empty without a picture

    /// The size at which the picture is shown: pixels times zoom, truncated.
    QSize shown() const { return {toDevice(picture.width(), zoom), toDevice(picture.height(), zoom)}; }

    /// The image pixel of a device point, also outside the picture: the fraction is dropped.
    CPoint toImage(QPointF device) const
    {
        return {truncated((float(device.x()) - float(center.x() - scroll.x())) / zoom),
                truncated((float(device.y()) - float(center.y() - scroll.y())) / zoom)};
    }
    /// The device point of an image point: each product is truncated.
    CPoint toDevicePoint(int x, int y) const
    {
        return {limited(std::int64_t(toDevice(x, zoom)) + center.x() - scroll.x()),
                limited(std::int64_t(toDevice(y, zoom)) + center.y() - scroll.y())};
    }
    CRect toDeviceRect(const RECT& image) const
    {
        const CPoint first = toDevicePoint(image.left, image.top);
        const CPoint second = toDevicePoint(image.right, image.bottom);
        return {first.x, first.y, second.x, second.y};
    }

    /// The column or row of the picture that is painted at a device position, noPixel beside the picture.
    /// Painting and reporting both ask here, so that the pixel under the cursor is the one that is shown
    /// there.
    int columnAt(float x) const { return indexAt(x, center.x() - scroll.x(), picture.width()); }
    int rowAt(float y) const { return indexAt(y, center.y() - scroll.y(), picture.height()); }

private:
    static int truncated(float value)
    {
        return value >= 2147483648.0f    ? INT32_MAX
               : value <= -2147483648.0f ? INT32_MIN
               : value == value          ? int(value)
                                         : 0;
    }
    static int limited(std::int64_t value)
    {
        return int(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
    }
    int indexAt(float device, int start, int size) const
    {
        const float at = device - float(start);
        if (!(at >= 0) || at >= float(toDevice(size, zoom)))
            return noPixel;
        return std::min(int(at / zoom), size - 1);
    }
};

/// The zoom at which the picture fits the client area with a thin border: the smaller ratio less 0.1. 1.0
/// without a picture. Where the border would leave nothing of a large picture, it fits without one.
float fitZoomOf(QSize client, QSize picture);

} // namespace ormalux
