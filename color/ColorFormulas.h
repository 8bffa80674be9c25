#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

/// What the colour planes hold, one pixel at a time: channels as 0 .. 255, results truncated. The kernels
/// give the same values by other means.
namespace ormalux::formula {

using Byte = std::uint8_t;

/// The 57.29577951 degrees of a radian that the hue planes are defined with. Deliberate: cut short, so that
/// pure green lies just below a third of the circle.
inline constexpr double degreesPerRadian = 57.29577951;

constexpr int largest(int b, int g, int r)
{
    return std::max({b, g, r});
}
constexpr int smallest(int b, int g, int r)
{
    return std::min({b, g, r});
}

constexpr Byte luma(int b, int g, int r)
{
    return Byte(int(0.257 * r + 0.504 * g + 0.098 * b + 16.0));
}
constexpr Byte blueDifference(int b, int g, int r)
{
    return Byte(int(0.439 * b - (0.291 * g + 0.148 * r) + 128.0));
}
constexpr Byte redDifference(int b, int g, int r)
{
    return Byte(int(0.439 * r - 0.368 * g - 0.071 * b + 128.0));
}
constexpr Byte mean(int b, int g, int r)
{
    return Byte((b + g + r) / 3);
}
/// S / 3.0 + 0.5, truncated.
constexpr Byte intensity(int b, int g, int r)
{
    return Byte((b + g + r + 1) / 3);
}
constexpr Byte saturation(int b, int g, int r)
{
    const int sum = b + g + r;
    return sum == 0 ? Byte(0) : Byte(255 * (sum - 3 * smallest(b, g, r)) / sum);
}
constexpr Byte value(int b, int g, int r)
{
    return Byte((largest(b, g, r) + smallest(b, g, r)) / 2);
}
constexpr Byte cyan(int b, int g, int r)
{
    return Byte(largest(b, g, r) - r);
}
constexpr Byte magenta(int b, int g, int r)
{
    return Byte(largest(b, g, r) - g);
}
constexpr Byte yellow(int b, int g, int r)
{
    return Byte(largest(b, g, r) - b);
}
constexpr Byte black(int b, int g, int r)
{
    return Byte(255 - largest(b, g, r));
}

/// The hue angle in degrees; 0 for gray.
inline double hueAngle(int b, int g, int r, double degrees)
{
    const double d = std::sqrt(double((r - g) * (r - g) + (r - b) * (g - b)));
    if (d == 0)
        return 0;
    // Rounding may carry the quotient of two opposite colours past the ends of the cosine.
    const double cosine = std::clamp(0.5 * ((r - g) + (r - b)) / d, -1.0, 1.0);
    const double angle = std::acos(cosine) * degrees;
    return b > g ? 360 - angle : angle;
}
inline Byte hue(int b, int g, int r)
{
    return Byte(int(hueAngle(b, g, r, degreesPerRadian) / 360 * 255));
}

} // namespace ormalux::formula
