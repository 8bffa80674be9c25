#pragma once

#include "platform/Types.h"
#include "view/PixelSource.h"
#include "view/ViewGeometry.h"

#include <QImage>

class CDrawObjArray;

namespace ormalux {

/// Prepares a frame (32-bit, black) for a client area on a screen of the given scale; reuses its memory.
void prepareFrame(QImage& frame, QSize client, qreal scale);

/// Paints the picture into a prepared frame, each device pixel with the picture's pixel that columnAt and
/// rowAt name there.
void paintPixels(QImage& frame, const PixelSource& picture, const ViewGeometry& geometry);

/// Draws the shapes over it; the client area clips them.
void paintOverlays(QImage& frame, CDrawObjArray& shapes, const ViewGeometry& geometry);

/// Writes every visible pixel's gray level into its cell. Only for gray pictures at the largest zoom;
/// otherwise nothing happens.
void paintLevels(QImage& frame, const PixelSource& picture, const ViewGeometry& geometry);

/// A figure that inverts what it covers; corners are device coordinates and belong to it.
enum class XorFigure
{
    Line,
    Rectangle,
    FocusRectangle
};
void paintXor(QImage& frame, XorFigure figure, const RECT& corners, COLORREF color);

/// The tracker's frame and handles, inverting what they cover.
void paintTracker(QImage& frame, const RECT& device);

} // namespace ormalux
