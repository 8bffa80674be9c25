#pragma once

#include "platform/Types.h"

#include <QPointF>

#include <array>

namespace ormalux {

/// What a point of the tracker's frame does when it is dragged: 0 moves the tracker, 1 to 8 move its handles,
/// from the left top corner clockwise.
inline constexpr int trackerMove = 0;
inline constexpr int trackerMiss = -1;
inline constexpr int trackerHandles = 8;

/// The rectangle with its corners in order.
CRect ordered(const RECT& rect);

inline bool isNothing(const RECT& rect)
{
    return rect == RECT{0, 0, 0, 0};
}

/// Handle 1 to 8 of a rectangle: its corners and the middles of its sides, fractions dropped.
CPoint handlePoint(const RECT& rect, int handle);

/// The 10 x 10 square of a handle; right and bottom do not belong to it.
CRect handleSquare(const RECT& device, int handle);

/// What lies at a device point of a tracker given in device coordinates. The inside comes first: the inner
/// half of every handle's square moves the tracker.
int hitTracker(const RECT& device, QPointF point);

/// The tracker after a handle (or trackerMove) was dragged by an offset; sides may pass one another.
CRect draggedTracker(const RECT& tracker, int handle, int dx, int dy);

/// The offset added to one coordinate, without overflow.
int shifted(int value, int offset);

} // namespace ormalux
