#pragma once

#include <cstddef>
#include <cstdint>

namespace ormalux::kernels {

/// The parts of a degree that hues are compared in.
inline constexpr int hueUnit = 256;

/// Ends, included; hues in parts of a degree, lowHue above highHue passes through 0.
struct HueLimits
{
    std::int32_t lowHue, highHue;
    std::int32_t lowSaturation, highSaturation;
    std::int32_t lowValue, highValue;
};

/// 255 where the colour of a pixel's blue, green, red bytes lies within the limits, else 0;
/// color/ColorRange.h has the formulas.
void hueRange(const std::uint8_t* bgr, std::uint8_t* gray, std::size_t count, const HueLimits& limits);

} // namespace ormalux::kernels
