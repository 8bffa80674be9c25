#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

namespace ormalux {

/// What each level becomes.
using LookupTable = std::array<std::uint8_t, 256>;

/// (i - 128) x (contrast + 100) / 100 + brightness + 128, rounded and clamped; nothing unless brightness is
/// -255 to 255 and contrast -100 to 100.
std::optional<LookupTable> buildLightTable(long brightness, long contrast);

/// i^e / k with e = 1 / gamma and k = 255^e / 255, truncated; nothing unless gamma is above 0 and finite. 0
/// and 255 stay whatever the rounding.
std::optional<LookupTable> buildGammaTable(float gamma);

/// Replaces every pixel by its entry.
void applyTable(std::span<std::uint8_t> pixels, const LookupTable& table);

} // namespace ormalux
