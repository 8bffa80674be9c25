#pragma once

#include "platform/Types.h"

#include <QImage>

namespace ormalux {

/// A figure that inverts what it covers, each of its pixels once: drawn twice it is gone. Corners are device
/// coordinates and belong to it.
enum class XorFigure
{
    Line,
    Rectangle,
    FocusRectangle ///< every other pixel of the outline
};
void paintXor(QImage& frame, XorFigure figure, const RECT& corners, COLORREF color);

/// The tracker's frame and handles, inverting what they cover.
void paintTracker(QImage& frame, const RECT& device);

} // namespace ormalux
