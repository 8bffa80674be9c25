#pragma once

#include "platform/Types.h"
#include "image/PixelSource.h"

namespace ormalux {

/// Paints the whole picture into a rectangle (right and bottom exclusive): device pixel (x, y) of it shows
/// picture pixel (floor(x * width / rectangle width), floor(y * height / rectangle height)). A rectangle
/// whose right lies left of its left mirrors the picture, and so does one upside down. Does nothing without
/// an active painter.
void paintPicture(QPainter* painter, const RECT& target, const PixelSource& picture);

} // namespace ormalux
