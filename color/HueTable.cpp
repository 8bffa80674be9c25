#include "color/HueTable.h"

#include "color/ColorFormulas.h"

#include <algorithm>

namespace ormalux {

namespace {

// The hue depends on the differences R - G and R - B alone, from -255 to 255 each.
constexpr int rowLength = 512;
std::uint8_t table[511 * rowLength];

constexpr int placeOf(int b, int g, int r)
{
    return (r - g + 255) * rowLength + (r - b + 255);
}

bool fill()
{
    for (int redOverGreen = -255; redOverGreen <= 255; ++redOverGreen)
        for (int redOverBlue = -255; redOverBlue <= 255; ++redOverBlue) {
            const int r = std::max({0, redOverGreen, redOverBlue});
            const int g = r - redOverGreen, b = r - redOverBlue;
            // No colour has the other differences.
            if (g <= 255 && b <= 255)
                table[placeOf(b, g, r)] = formula::hue(b, g, r);
        }
    return true;
}

} // namespace

void hues(const std::uint8_t* bgr, std::uint8_t* gray, std::size_t count)
{
    [[maybe_unused]] static const bool filled = fill();
    for (std::size_t i = 0; i < count; ++i, bgr += 3)
        gray[i] = table[placeOf(bgr[0], bgr[1], bgr[2])];
}

} // namespace ormalux
