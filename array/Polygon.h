#pragma once

#include "platform/Types.h"

#include <span>

namespace ormalux {

/// Whether the closed polygon holds the point, by the winding rule and exactly for all coordinates.
///
/// An edge counts on the rows from its upper end (included) to its lower end (not included), horizontal edges
/// on none. Of the edges that cross the point's row at or left of it, the downward ones add 1 and the upward
/// ones subtract 1; the point is inside when the sum is not 0. So left and top borders are inside, right and
/// bottom borders outside. Fewer than three points hold nothing.
bool windingPolygonHolds(std::span<const POINT> polygon, POINT point);

} // namespace ormalux
