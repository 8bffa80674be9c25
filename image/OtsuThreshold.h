#pragma once

#include "image/Histogram.h"

namespace ormalux {

/// Otsu's level: of all t the one at which splitting the levels into those up to t and those above makes the
/// variance between the two classes largest, the least of equals; 0 when no level splits (one level only).
///
/// N. Otsu, A threshold selection method from gray-level histograms, IEEE Trans. SMC 9 (1979). In doubles, in
/// the order of OpenCV's THRESH_OTSU, whose level it equals; a class whose share is below the single
/// precision's epsilon does not count.
int otsuLevel(const LevelCounts& counts);

} // namespace ormalux
