#pragma once

#include "platform/Types.h"

#include <cstddef>
#include <span>

namespace ormalux {

/// Takes points out of horizontal runs and moves the others together in their order; returns the number
/// taken.
///
/// Row by row and from left to right, at every point still present: the run of present points that begins
/// there loses the first entry of each point but its two ends. Entries of equal points thus go one run at a
/// time. Nothing happens when memory is short. Cost: that of sorting the points.
std::size_t removeRunInteriors(std::span<POINT> points);

} // namespace ormalux
