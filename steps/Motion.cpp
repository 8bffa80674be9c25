#include "steps/Motion.h"

#include <cmath>

namespace ormalux {

namespace {
constexpr double radians = 3.14159265358979323846 / 180;
constexpr double farthest = 1e9; // keeps rounded positions inside the integers
} // namespace

Motion::Motion(double fromX, double fromY, double toX, double toY, double degrees) : m_degrees(degrees)
{
    if (degrees != 0) {
        m_cos = std::cos(degrees * radians);
        m_sin = std::sin(degrees * radians);
    }
    m_dx = toX - (m_cos * fromX + m_sin * fromY);
    m_dy = toY - (-m_sin * fromX + m_cos * fromY);
}

Motion::Point Motion::map(double x, double y) const
{
    return {m_cos * x + m_sin * y + m_dx, -m_sin * x + m_cos * y + m_dy};
}

Motion::Point Motion::back(double x, double y) const
{
    x -= m_dx;
    y -= m_dy;
    return {m_cos * x - m_sin * y, m_sin * x + m_cos * y};
}

RECT Motion::map(const RECT& rect) const
{
    const double halfWidth = (double(rect.right) - rect.left) / 2;
    const double halfHeight = (double(rect.bottom) - rect.top) / 2;
    const Point middle = map(rect.left + halfWidth, rect.top + halfHeight);
    const auto nearest = [](double value) {
        return LONG(std::floor(std::fmin(std::fmax(value, -farthest), farthest) + 0.5));
    };
    const LONG left = nearest(middle.x - halfWidth), top = nearest(middle.y - halfHeight);
    return {left, top, LONG(left + (rect.right - rect.left)), LONG(top + (rect.bottom - rect.top))};
}

double turnOf(double degrees)
{
    const double turn = std::remainder(degrees, 360.0);
    return turn <= -180 ? turn + 360 : turn;
}

double lineTurnOf(double degrees)
{
    const double turn = std::remainder(degrees, 180.0);
    return turn <= -90 ? turn + 180 : turn;
}

double directionOf(double x1, double y1, double x2, double y2)
{
    return std::atan2(y1 - y2, x2 - x1) / radians;
}

} // namespace ormalux
