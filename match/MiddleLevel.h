#pragma once

#include "image/Histogram.h"

namespace ormalux {

/// The mean levels of the pixels up to a level and of those above it. Where one side has no pixels its mean
/// lies as far behind the level as the other's before it.
struct SideMeans
{
    double low;
    double high;
};

/// There must be pixels.
SideMeans sideMeans(const LevelCounts& counts, int level);

/// The level in the middle of the means of its two sides, approached from a start: T. W. Ridler and S.
/// Calvard, Picture thresholding using an iterative selection method (1978). The start, if all pixels lie on
/// one side of it.
int middleLevel(const LevelCounts& counts, int start);

} // namespace ormalux
