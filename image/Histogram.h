#pragma once

#include "image/GrayView.h"

#include <array>
#include <cstdint>

namespace ormalux {

/// How many pixels have each level.
using LevelCounts = std::array<std::int64_t, 256>;

LevelCounts countLevels(const ConstGrayView& view);

} // namespace ormalux
