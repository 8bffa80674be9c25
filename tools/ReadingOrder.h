#pragma once

#include "array/MatchArray.h"

#include <vector>

namespace ormalux {

/// Characters as they are read: lines from top to bottom, in each from left to right. A character belongs to
/// the first line beside whose topmost character its middle lies.
std::vector<std::vector<_stMatchResult>> readingOrder(CMatchResultArray results);

/// The same as lines of a complete program: they make `lines` of `results`.
CString programReadingOrder();

} // namespace ormalux
