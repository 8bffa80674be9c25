#pragma once

#include "image/GrayView.h"
#include "platform/Types.h"

#include <cstdint>
#include <optional>

namespace ormalux {

/// The mean level, 0 for an empty view.
double grayAverage(const ConstGrayView& view);

/// The number of pixels with low <= p <= high.
std::int64_t countInRange(const ConstGrayView& view, std::uint8_t low, std::uint8_t high);

/// The mean position, truncated, of the pixels above the threshold (polarity 255) or not above it (0), from
/// the view's top left pixel; nothing when no pixel counts.
std::optional<POINT> gravityCenter(const ConstGrayView& view, int threshold, std::uint8_t polarity);

} // namespace ormalux
