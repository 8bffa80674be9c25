#pragma once

#include "image/GrayView.h"
#include "platform/Export.h"
#include "platform/Types.h"

namespace ormalux {

/// Paints a gray picture (top row first) upright into a rectangle.
using GrayPainter = void (*)(CDC* dc, const CRect& rect, const ConstGrayView& picture);
/// Paints a buffer of blue, green, red bytes, bottom row first, rows padded to 4 bytes, into a rectangle.
using ColorPainter = void (*)(CDC* dc, const CRect& rect, const std::uint8_t* pixels, int width, int height);

/// What PaintImage of both image classes calls: the display module sets it when it loads, so that the
/// processing module needs no GUI. Nulls mean that nothing is painted. To be called from one thread at a
/// time.
ORMALUX_API void setImagePainters(GrayPainter gray, ColorPainter color);

GrayPainter grayPainter();
ColorPainter colorPainter();

} // namespace ormalux
