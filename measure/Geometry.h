#pragma once

#include "platform/Types.h"

#include <cstdint>
#include <span>

/// Geometry of points on the pixel grid: x to the right, y downward.
namespace ormalux {

/// Truncated toward 0; what no 32-bit integer holds, infinities and NaN included, gives 0x80000000.
std::int32_t truncated(double value);

/// The direction of the offset (dx, dy) in degrees, counter-clockwise from the x axis as seen, in [0, 360); 0
/// for no offset.
double directionDegrees(std::int64_t dx, std::int64_t dy);

/// (x, y) turned about the centre by angle degrees, clockwise as seen, each coordinate truncated.
POINT rotated(int x, int y, double angle, int cx, int cy);

/// Whether an odd number of the polygon's edges, the closing one included, strictly cross the row of p to its
/// left. Vertices on that row never count.
bool insideByCrossings(std::span<const POINT> polygon, POINT p);

/// Whether the lines through the two segments cross at an x within both segments; parallel ones never do.
bool segmentsCross(POINT a1, POINT a2, POINT b1, POINT b2);

/// The first pixel of the traced second segment that meets the first one: for every pixel p of the first in
/// turn, a pixel that equals p or is its right or upper neighbour. False when the two pass through each other
/// diagonally, or have more points than are traced.
bool crossingPixel(POINT a1, POINT a2, POINT b1, POINT b2, POINT& crossing);

} // namespace ormalux
