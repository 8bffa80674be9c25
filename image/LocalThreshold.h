#pragma once

#include "image/GrayView.h"

namespace ormalux {

enum class LocalMean
{
    Mean,
    Gaussian
};

/// The windows that localThreshold takes: odd, from and to.
inline constexpr int minLocalWindow = 3;
inline constexpr int maxLocalWindow = 1001;

/// Binarises in place: a pixel becomes 255 where it exceeds the mean of the window around it less offset,
/// else 0. Pixels outside the picture count as the nearest one inside. The mean is rounded to a level, halves
/// to even, in single precision.
///
/// Mean: the plain mean of window x window pixels; the time does not depend on the window. Gaussian: weighted
/// by exp(-d^2 / (2 s^2)) in both directions with s = 0.3 ((window - 1) / 2 - 1) + 0.8; windows up to 9 have
/// the fixed weights that are usual for them. Both as OpenCV's adaptiveThreshold with C = offset.
///
/// False, and nothing has happened, for an empty picture, a window that is even or out of range, an offset
/// that is no number, or too little memory.
bool localThreshold(GrayView image, LocalMean method, int window, double offset);

} // namespace ormalux
