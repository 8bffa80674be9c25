#pragma once

#include "image/GrayView.h"

namespace ormalux {

/// The mean of the means of the edges (see kernels/RiseKernels.h) on some of the view's lines: rows for mode
/// 'H', columns for 'V', both for 'A'; 0 without edges or for another mode. A step below 1 counts as 1, one
/// that is not below the width as half the width. Deliberate: each band of lines starts its steps anew, so
/// for steps above 1 the result depends on the number of bands.
long autoThreshold(const ConstGrayView& view, char mode, int step);

} // namespace ormalux
