#include "match/MiddleLevel.h"

#include <cmath>

namespace ormalux {

namespace {

struct Sides
{
    std::int64_t sums[2] = {};
    std::int64_t counts[2] = {};

    Sides(const LevelCounts& levels, int level)
    {
        for (int i = 0; i < 256; ++i) {
            sums[i > level] += i * levels[std::size_t(i)];
            counts[i > level] += levels[std::size_t(i)];
        }
    }
    bool both() const { return counts[0] > 0 && counts[1] > 0; }
    double mean(int side) const { return double(sums[side]) / double(counts[side]); }
};

} // namespace

SideMeans sideMeans(const LevelCounts& counts, int level)
{
    const Sides sides(counts, level);
    const double middle = level + 0.5;
    const double low = sides.counts[0] ? sides.mean(0) : 2 * middle - sides.mean(1);
    return {low, sides.counts[1] ? sides.mean(1) : 2 * middle - low};
}

int middleLevel(const LevelCounts& counts, int start)
{
    // Every turn goes the same way; from any start there are a few.
    constexpr int mostTurns = 64;
    int level = start;
    for (int turn = 0; turn < mostTurns; ++turn) {
        const Sides sides(counts, level);
        const int middle = sides.both() ? int(std::floor((sides.mean(0) + sides.mean(1)) / 2)) : level;
        if (middle == level)
            break;
        level = middle;
    }
    return level;
}

} // namespace ormalux
