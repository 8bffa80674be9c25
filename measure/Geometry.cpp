#include "measure/Geometry.h"

#include "measure/Tracing.h"

#include <algorithm>
#include <cmath>

namespace ormalux {

namespace {

constexpr double pi = 3.141592653589793;
constexpr double degree = 0.017453292519943295;

double directionRadians(double dx, double dy)
{
    if (dx == 0)
        return dy == 0 ? 0 : dy > 0 ? 4.71238898038469 : 1.5707963267948966;
    if (dy == 0)
        return dx > 0 ? 0 : pi;
    if (dx < 0)
        return pi - std::atan(dy / dx);
    return dy > 0 ? 2 * pi - std::atan(dy / dx) : -std::atan(dy / dx);
}

} // namespace

std::int32_t truncated(double value)
{
    return value > -2147483649.0 && value < 2147483648.0 ? std::int32_t(value) : INT32_MIN;
}

double directionDegrees(std::int64_t dx, std::int64_t dy)
{
    const double degrees = directionRadians(double(dx), double(dy)) * 180 / pi;
    return degrees >= 360 ? degrees - 360 : degrees;
}

POINT rotated(int x, int y, double angle, int cx, int cy)
{
    const double t = angle * degree;
    const double cosine = std::cos(t), sine = std::sin(t);
    const double u = double(x) - cx, v = double(y) - cy;
    return {truncated(u * cosine - v * sine + cx), truncated(v * cosine + u * sine + cy)};
}

bool insideByCrossings(std::span<const POINT> polygon, POINT p)
{
    if (polygon.empty())
        return false;
    bool inside = false;
    POINT previous = polygon.back();
    for (const POINT& current : polygon) {
        const double px = double(previous.x) - p.x, py = double(previous.y) - p.y;
        const double cx = double(current.x) - p.x, cy = double(current.y) - p.y;
        if (cy * py < 0 && px < (cx - px) / (cy - py) * py)
            inside = !inside;
        previous = current;
    }
    return inside;
}

bool segmentsCross(POINT a1, POINT a2, POINT b1, POINT b2)
{
    if (a1.x > a2.x)
        std::swap(a1, a2);
    if (b1.x > b2.x)
        std::swap(b1, b2);
    const double adx = double(a2.x) - a1.x, ady = double(a2.y) - a1.y;
    const double bdx = double(b2.x) - b1.x, bdy = double(b2.y) - b1.y;
    const double denominator = adx * bdy - ady * bdx;
    if (std::trunc(denominator) == 0)
        return false;
    const double share = (double(b1.x) - a1.x) * bdy - (double(b1.y) - a1.y) * bdx;
    // One product and one division: exact where the crossing is a whole pixel, so that the ends are included.
    const float x = float(a1.x + adx * share / denominator);
    return x >= float(a1.x) && x <= float(a2.x) && x >= float(b1.x) && x <= float(b2.x);
}

bool crossingPixel(POINT a1, POINT a2, POINT b1, POINT b2, POINT& crossing)
{
    const LineWalk first(a1, a2), second(b1, b2);
    if (first.count() > maxTracedPoints || second.count() > maxTracedPoints)
        return false;
    // Pixels that meet the second segment lie within a pixel of its bounds, so no others are looked at.
    const auto [left, right] = std::minmax({std::int64_t(b1.x), std::int64_t(b2.x)});
    const auto [top, bottom] = std::minmax({std::int64_t(b1.y), std::int64_t(b2.y)});
    std::int64_t met = -1;
    first.visitWhile(first.inside(left - 1, top - 1, right + 1, bottom + 1), [&](std::int64_t x,
                                                                                 std::int64_t y) {
        const std::int64_t steps[] = {second.stepAt(x, y), second.stepAt(x + 1, y), second.stepAt(x, y - 1)};
        for (std::int64_t step : steps)
            if (step >= 0 && (met < 0 || step < met))
                met = step;
        return met < 0;
    });
    if (met < 0)
        return false;
    crossing = second.at(met);
    return true;
}

} // namespace ormalux
