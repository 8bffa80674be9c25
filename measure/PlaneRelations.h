#pragma once

#include "measure/EdgeMeasure.h"
#include "measure/PlaneMeasure.h"

/// Distances, angles and intersections of points and lines, in pixels and degrees. What is given must be
/// finite; what is not gives what is not.
namespace ormalux {

/// The line through its middle in its direction.
CPlaneLine lineOf(const CEdgeLine& edge);
CPlanePoint centreOf(const CEdgeCircle& circle);

double distance(CPlanePoint a, CPlanePoint b);
/// Perpendicular.
double distance(CPlanePoint point, const CPlaneLine& line);
/// From the first line's point to the second line, perpendicular to that.
double distance(const CPlaneLine& first, const CPlaneLine& second);

/// The point of the line next to the given one.
CPlanePoint footOn(const CPlaneLine& line, CPlanePoint point);

/// 0 to 90.
double angleBetween(const CPlaneLine& a, const CPlaneLine& b);

/// False, and at as before, for lines that differ by less than a millionth of a degree.
bool intersection(const CPlaneLine& a, const CPlaneLine& b, CPlanePoint& at);

} // namespace ormalux
