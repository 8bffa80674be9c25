#pragma once

#include "image/GrayView.h"

namespace ormalux {

/// Replaces every pixel in place by the median of its size x size neighbourhood in the unfiltered picture;
/// pixels outside it count as the nearest one inside. Equals OpenCV's medianBlur.
///
/// False, and nothing has happened, for an empty picture, a size other than 3 and 5, or too little memory for
/// some rows of scratch.
bool medianFilter(GrayView image, int size);

} // namespace ormalux
