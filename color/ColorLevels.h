#pragma once

#include "color/ColorView.h"
#include "image/Histogram.h"
#include "image/LookupTable.h"

#include <array>
#include <cstdint>

namespace ormalux {

/// What each level of a channel becomes, in the order blue, green, red.
using ChannelTables = std::array<LookupTable, 3>;

void applyTables(const ColorView& image, const ChannelTables& tables);

/// How many pixels have each level, per channel.
std::array<LevelCounts, 3> countChannelLevels(const ConstColorView& image);

/// The sums of the channels over a rectangle with inclusive corners in order, which lies inside.
std::array<std::uint64_t, 3> sumChannels(const ConstColorView& image, int x1, int y1, int x2, int y2);

/// Tables that scale each channel by T / (3 S), S its sum and T the sum of all, truncated and limited to 255;
/// a channel with a sum of 0 stays.
ChannelTables buildBalanceTables(const std::array<std::uint64_t, 3>& sums);

/// Tables that stretch each channel by the gray picture's rule; a channel that it leaves alone stays.
ChannelTables buildColorContrastTables(const std::array<LevelCounts, 3>& counts, std::int64_t total);

} // namespace ormalux
