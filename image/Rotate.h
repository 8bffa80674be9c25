#pragma once

#include "image/PixelBlock.h"

namespace ormalux {

/// Rotates by angle degrees about (cx, cy), clockwise on the screen, in place and keeping the size, for gray
/// and colour pixels.
///
/// With r = angle * 0.017453292519943295, ca = cos r, sa = sin r and dx = x - cx, dy = y - cy in single
/// precision, pixel (x, y) goes to (trunc(dx * ca - dy * sa + cx), trunc(dx * sa + dy * ca + cy)) in doubles;
/// what leaves the frame is lost. Rows go from the top and pixels from the left, the last one to reach a
/// place wins. Then, in the order of pixel indices, every place that none reached takes half the sum of the
/// pixels before and after it as they stand, channel by channel; before the first and after the last pixel,
/// and in unreached places to come, stands 0. Bytes between the rows become 0.
///
/// Deliberate: exactly -180 is the half turn; 180 goes by the formula. An angle that is no finite number, a
/// block that is not whole and a lack of memory change nothing.
void rotate(const PixelBlock& image, int cx, int cy, double angle);

} // namespace ormalux
