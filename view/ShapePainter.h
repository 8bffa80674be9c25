#pragma once

#include "platform/Types.h"

namespace ormalux {

class ShapeList;

/// A coordinate of the picture in device pixels: the product in single precision, truncated; limited to what
/// an int holds, 0 when it is not a number.
inline int toDevice(int image, float zoom)
{
    const float product = float(image) * zoom;
    if (product >= 2147483648.0f)
        return INT32_MAX;
    if (product <= -2147483648.0f)
        return INT32_MIN;
    return product == product ? int(product) : 0;
}

/// Draws the shapes whose device box meets clip (null: whatever the painter's device shows) in their order.
/// Does nothing without an active painter; leaves texts out without a QGuiApplication.
/// Labels come last, where a LabelPlacer puts them.
void drawShapes(const ShapeList& list, QPainter* painter, float zoomX, float zoomY, const RECT* clip);

} // namespace ormalux
