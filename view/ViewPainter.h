#pragma once

#include "platform/Types.h"
#include "image/PixelSource.h"
#include "view/ViewGeometry.h"

#include <QImage>

class CDrawObjArray;

namespace ormalux {

/// Prepares a frame (32-bit) for a client area on a screen of the given scale; reuses its memory and what it
/// shows unless somebody else holds the same image.
void prepareFrame(QImage& frame, QSize client, qreal scale);

// Each of the following paints the part of a prepared frame that shows the exposed part of the client area;
// what the frame shows beside it is left undefined.

/// Paints the picture, each device pixel with the picture's pixel that columnAt and rowAt name there, and
/// black beside it.
void paintPixels(QImage& frame, const PixelSource& picture, const ViewGeometry& geometry,
                 const QRect& exposed);

/// Draws the shapes over it, whatever part is exposed: heads and wide pens reach out of a shape's box.
void paintOverlays(QImage& frame, CDrawObjArray& shapes, const ViewGeometry& geometry);

/// Writes every visible pixel's gray level into its cell. Only for gray pictures at the largest zoom;
/// otherwise nothing happens.
void paintLevels(QImage& frame, const PixelSource& picture, const ViewGeometry& geometry,
                 const QRect& exposed);

} // namespace ormalux
