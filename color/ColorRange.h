#pragma once

#include "color/ColorView.h"

#include <cstdint>
#include <span>

namespace ormalux {

/// Colours by hue, saturation and value, all ends included.
///
/// With max and min of the channels R, G, B and d = max - min: value = max; saturation = 255 d / max, rounded
/// to nearest with halves up, 0 for black; hue in degrees = 60 (G - B) / d where R is the max, else 120 + 60
/// (B - R) / d where G is, else 240 + 60 (R - G) / d, plus 360 where negative; 0 for gray (A. R. Smith, Color
/// gamut transform pairs, 1978). Hues are compared as exact fractions.
struct HueRange
{
    double lowHue; ///< degrees, 0 to 360, taken to 1 / 256; above highHue the range passes through 0
    double highHue;
    int lowSaturation; ///< 0 to 255
    int highSaturation;
    int lowValue; ///< 0 to 255
    int highValue;
};

/// Whether the ends lie where they may; saturation and value must be in order.
bool isValid(const HueRange& range);

/// 255 where the colour of a pixel is in range, else 0, in the order of the unpadded rows; what does not fit
/// is dropped. False, and nothing written, for a range that is not valid.
bool selectHues(ConstColorView image, const HueRange& range, std::span<std::uint8_t> gray);

} // namespace ormalux
