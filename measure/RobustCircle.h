#pragma once

#include "image/GrayView.h"
#include "measure/EdgeMeasure.h"

namespace ormalux {

/// Measures the circular edge in the ring: an edge on each ray, then the circle of least orthogonal
/// distances, points weighted by Tukey's biweight. Where not all points lie near the plain fit, it starts
/// from the three points whose circle has the least median distance. No chance is involved.
///
/// Smoothing across a ray moves a rim of radius r towards the centre by variance / 2r; pixel, interpolation
/// and averaging width are counted, and the radius is given without it. False, and circle as before, without
/// an edge on a quarter of the rays and on three, or for arguments out of range. Throws std::bad_alloc.
bool measureCircle(const ConstGrayView& view, const CEdgeRing& ring, const CEdgeSettings& settings,
                   CEdgeCircle& circle);

} // namespace ormalux
