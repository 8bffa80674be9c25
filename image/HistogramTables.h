#pragma once

#include "image/Histogram.h"
#include "image/LookupTable.h"

#include <cstdint>
#include <optional>

namespace ormalux {

/// The tables that stretch or bend levels by their distribution. Those that return nothing leave the picture
/// as it is: its levels are too narrow, or fill the range already.

/// The share of pixels not above a level, times 255, truncated; total above 0. Deliberate: the factor 255.0 /
/// total is formed first, so the brightest level may become 254.
LookupTable buildEqualizeTable(const LevelCounts& counts, std::int64_t total);

/// 255 x ln(i + 1) / ln(m + 1), m the brightest occupied level but at least 1; truncated.
LookupTable buildLogTable(const LevelCounts& counts);

/// Deliberate: sqrt(i) x 128 / ln(m + 1), at most 255; a square root scaled by a logarithm.
LookupTable buildRootTable(const LevelCounts& counts);

/// Levels between the ends that hold 1 % of total each become 0 to 254, or between the occupied levels if
/// those ends meet. Deliberate: the top of the range becomes 254, what lies above it 255.
std::optional<LookupTable> buildNormalizeTable(const LevelCounts& counts, std::int64_t total);

/// Occupied levels become 0 to 255.
std::optional<LookupTable> buildStretchTable(const LevelCounts& counts);

/// Levels between the ends that hold 3 % of total each become 0 to 255, rounded.
std::optional<LookupTable> buildAutoContrastTable(const LevelCounts& counts, std::int64_t total);

} // namespace ormalux
