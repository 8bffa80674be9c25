#pragma once

#include "color/ColorView.h"

#include <cstdint>
#include <span>

namespace ormalux {

/// What can be taken out of a colour image as gray values; color/ColorFormulas.h has the formulas.
enum class Plane : std::uint8_t
{
    Blue,
    Green,
    Red,
    Mean,
    Luma,
    BlueDifference,
    RedDifference,
    Intensity,
    Saturation,
    Value,
    Cyan,
    Magenta,
    Yellow,
    Black,
    Hue,
    Count
};

/// Writes the plane of every pixel, in the order of the unpadded rows, to gray; what does not fit is dropped.
void extractPlane(ConstColorView image, Plane plane, std::span<std::uint8_t> gray);

/// 255 where low <= channel <= high holds in all three channels, else 0. Colours have red in their lowest
/// bits.
void selectColors(ConstColorView image, std::uint32_t low, std::uint32_t high, std::span<std::uint8_t> gray);

/// The plane that a letter stands for: 'R', 'G', 'B', or 'A' for the mean. False for another letter.
bool planeOfLetter(char letter, Plane& plane);

} // namespace ormalux
