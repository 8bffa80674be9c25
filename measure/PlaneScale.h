#pragma once

#include "measure/PlaneMeasure.h"

#include <array>
#include <vector>

namespace ormalux {

/// The rows of a homography; the last one gives values above 0 for what is seen of the plane.
using Homography = std::array<double, 9>;

/// The homography of least squared distances in the plane: from the smallest eigenvector of the linear
/// equations of normalised points, then by Gauss and Newton. False, and map as before, for what
/// CKestPlaneScale::SetPoints refuses.
bool fitHomography(const std::vector<CPlanePair>& pairs, Homography& map);

/// False, and to as before, on or beyond the horizon.
bool mapPoint(const Homography& map, CPlanePoint from, CPlanePoint& to);

/// The root of the Jacobian's determinant; 0 on or beyond the horizon.
double localScale(const Homography& map, CPlanePoint at);

} // namespace ormalux
