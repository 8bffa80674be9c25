#pragma once

#include "array/PixelArray.h"
#include "color/ColorView.h"

#include <cstdint>

namespace ormalux {

/// Appends a record for every pixel of the rectangle whose channels each lie between those of low and high,
/// by rows, in coordinates of the image; all of them or, when memory is short, none. Corners are inclusive
/// and in order, the rectangle lies inside. Colours have red in their lowest bits.
void collectColors(const ConstColorView& image, int x1, int y1, int x2, int y2, std::uint32_t low,
                   std::uint32_t high, CColorPixelArray& pixels);

} // namespace ormalux
