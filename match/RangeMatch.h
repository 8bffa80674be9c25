#pragma once

#include "array/MatchArray.h"
#include "image/GrayView.h"

namespace ormalux {

/// The best candidate of every threshold from low to high, in their order: the one with the highest yield
/// average, the last of equals. A threshold without candidates adds nothing. Nothing is
/// appended when memory is short.
///
/// Thresholds between which no pixel lies binarise alike and are searched once. Those below 0 all find what
/// -1 finds, those above 255 what 255 finds; of each at most rangeLimit, those nearest to the gray levels,
/// are added, so that no range of billions fills the memory.
void matchThresholdRange(const ConstGrayView& image, int low, int high, const _stMatchSource& source,
                         CMatchResultArray& results);

inline constexpr int rangeLimit = 1 << 20;

} // namespace ormalux
