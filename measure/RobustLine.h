#pragma once

#include "image/GrayView.h"
#include "measure/EdgeMeasure.h"

namespace ormalux {

/// Measures the straight edge in the box: an edge on each scan, then the line of least orthogonal distances,
/// points weighted by Tukey's biweight. Where not all points lie near the plain fit, it starts from the pair
/// of points whose line has the least median distance, so that up to nearly half of the scans may show
/// something else. No chance is involved. False, and line as before, without an edge on a quarter of the
/// scans and on three, or for arguments out of range. Throws std::bad_alloc.
bool measureLine(const ConstGrayView& view, const CEdgeBox& box, const CEdgeSettings& settings,
                 CEdgeLine& line);

} // namespace ormalux
