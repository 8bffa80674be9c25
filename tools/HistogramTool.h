#pragma once

#include "tools/Tool.h"

#include <array>

namespace ormalux {

/// How many pixels each level has.
using LevelCounts = std::array<long, 256>;

/// Nothing but zeros without pixels.
struct LevelStatistics
{
    long long pixels = 0;
    double mean = 0;
    double deviation = 0; ///< the standard deviation
    int lowest = 0;       ///< levels that occur
    int highest = 0;
};
LevelStatistics statisticsOf(const LevelCounts& counts);
/// The pixels of the levels from low to high, both included.
long long countBetween(const LevelCounts& counts, int low, int high);

/// Counts the pixels of every level over the area. It has no values of its own.
struct HistogramTool : Tool
{
    static LevelCounts run(const CKestImage& picture, const RECT& area);
    /// The levels of red, green and blue; the picture's rows are padded.
    static std::array<LevelCounts, 3> channels(const CKestImage24& picture, const RECT& area);
    /// The levels that occur.
    static ResultList list(const LevelCounts& counts);

    CString script(const ToolScene& scene) const override;
    CString program(const ToolScene& scene) const override;
    QList<QJsonObject> recipeSteps(const ToolScene& scene) const override;
};

} // namespace ormalux
