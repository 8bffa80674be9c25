#include "image/OtsuThreshold.h"

#include <algorithm>
#include <limits>

namespace ormalux {

int otsuLevel(const LevelCounts& counts)
{
    constexpr double least = double(std::numeric_limits<float>::epsilon());
    double total = 0, mean = 0;
    for (int level = 0; level < 256; ++level) {
        total += double(counts[level]);
        mean += level * double(counts[level]);
    }
    if (total == 0)
        return 0;
    const double scale = 1.0 / total;
    mean *= scale;
    double share = 0, lowerMean = 0, largest = 0;
    int best = 0;
    for (int level = 0; level < 256; ++level) {
        const double own = double(counts[level]) * scale;
        lowerMean *= share;
        share += own;
        const double rest = 1.0 - share;
        if (std::min(share, rest) < least || std::max(share, rest) > 1.0 - least)
            continue;
        lowerMean = (lowerMean + level * own) / share;
        const double upperMean = (mean - share * lowerMean) / rest;
        const double variance = share * rest * (lowerMean - upperMean) * (lowerMean - upperMean);
        if (variance > largest) {
            largest = variance;
            best = level;
        }
    }
    return best;
}

} // namespace ormalux
