#include "image/HistogramTables.h"

#include <algorithm>
#include <cmath>

namespace ormalux {

namespace {

struct LevelRange
{
    int low;
    int high;
};

int brightestLevel(const LevelCounts& counts)
{
    for (int level = 255; level > 1; --level)
        if (counts[level] > 0)
            return level;
    return 1;
}

/// Fills a table from a formula of the level.
template <class Formula>
LookupTable tableOf(Formula formula)
{
    LookupTable table;
    for (int i = 0; i < 256; ++i)
        table[i] = std::uint8_t(std::clamp(formula(i), 0, 255));
    return table;
}

/// The levels at which more than cut pixels were met from either end: low is one of 0 to 254, or 255 without
/// any, high one of 255 to 1, or 0 without any.
LevelRange cutEnds(const LevelCounts& counts, std::int64_t cut)
{
    LevelRange range{0, 255};
    for (std::int64_t met = counts[0]; range.low < 255 && met <= cut; met += counts[range.low])
        ++range.low;
    for (std::int64_t met = counts[255]; range.high > 0 && met <= cut; met += counts[range.high])
        --range.high;
    return range;
}

/// The levels at which 3 % of the pixels were met from either end, in single precision.
LevelRange percentEnds(const LevelCounts& counts, std::int64_t total)
{
    const auto reached = [&](std::int64_t met) { return float(met) * 100.0f / float(total) >= 3.0f; };
    LevelRange range{0, 255};
    std::int64_t met = 0;
    for (int level = 0; level < 256; ++level) {
        met += counts[level];
        if (reached(met)) {
            range.low = level;
            break;
        }
    }
    met = 0;
    for (int level = 255; level >= 0; --level) {
        met += counts[level];
        if (reached(met)) {
            range.high = level;
            break;
        }
    }
    return range;
}

} // namespace

LookupTable buildEqualizeTable(const LevelCounts& counts, std::int64_t total)
{
    const double factor = 255.0 / double(total);
    std::int64_t met = 0;
    return tableOf([&](int i) {
        met += counts[i];
        return int(double(met) * factor);
    });
}

LookupTable buildLogTable(const LevelCounts& counts)
{
    const double scale = std::log(double(brightestLevel(counts) + 1));
    return tableOf([&](int i) { return int(255 * std::log(double(i + 1)) / scale); });
}

LookupTable buildRootTable(const LevelCounts& counts)
{
    const double scale = std::log(double(brightestLevel(counts) + 1));
    return tableOf([&](int i) { return int(std::sqrt(double(i)) * 128 / scale); });
}

std::optional<LookupTable> buildNormalizeTable(const LevelCounts& counts, std::int64_t total)
{
    LevelRange ends = cutEnds(counts, std::int64_t(double(total) / 100.0));
    if (ends.low == ends.high)
        ends = cutEnds(counts, 0);
    if (ends.low == ends.high)
        return {};
    return tableOf([=](int i) {
        if (i < ends.low)
            return 0;
        return i > ends.high ? 255 : 254 * (i - ends.low) / (ends.high - ends.low);
    });
}

std::optional<LookupTable> buildStretchTable(const LevelCounts& counts)
{
    // Deliberate: the share of the largest count that a level must exceed is 0, so every occupied level
    // counts.
    const double share = 0.0;
    const auto cut = std::int64_t(double(*std::max_element(counts.begin(), counts.end())) * share);
    LevelRange ends{0, 255};
    while (ends.low < 255 && counts[ends.low] <= cut)
        ++ends.low;
    while (ends.high > 0 && counts[ends.high] <= cut)
        --ends.high;
    if ((ends.low == 0 && ends.high == 255) || ends.low >= ends.high)
        return {};
    return tableOf([=](int i) { return (i - ends.low) * 255 / (ends.high - ends.low); });
}

std::optional<LookupTable> buildAutoContrastTable(const LevelCounts& counts, std::int64_t total)
{
    const LevelRange ends = percentEnds(counts, total);
    if (ends.high <= ends.low)
        return {};
    return tableOf([=](int i) {
        if (i < ends.low)
            return 0;
        return i > ends.high ? 255 : int(std::lround((i - ends.low) * 255.0 / (ends.high - ends.low)));
    });
}

} // namespace ormalux
