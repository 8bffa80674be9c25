#pragma once

#include "image/GrayView.h"
#include "measure/Alignment.h"

#include <cstdint>

namespace ormalux {

/// The farthest that a comparison forgives.
inline constexpr int maxGrow = 100;

/// Marks with 255 where a picture differs from a golden one, all else with 0. Where p is a pixel's level and
/// low and high are the least and greatest level of the aligned golden picture among the pixels up to `grow`
/// columns and rows away, a pixel differs if |p - clamp(p, low, high)| > threshold. Pixels that lie outside
/// the golden picture are not compared, and count as no neighbours.
///
/// The levels between neighbours fit, too, as a sensor's pixel that an edge passes through may have any of
/// them: a rule that asks for one fitting neighbour raises an alarm at every edge half a pixel away.
///
/// marks has the picture's size and shares no memory with either. Returns the number of compared pixels; 0,
/// with marks untouched, for an empty picture, a threshold outside 0 to 255, a grow outside 0 to maxGrow, an
/// alignment that leads farther than 2^29 pixels away or is no number, or too little memory.
std::int64_t compareGolden(ConstGrayView picture, ConstGrayView golden, const CAlignment& alignment,
                           int threshold, int grow, GrayView marks);

} // namespace ormalux
