#include "measure/PlaneRelations.h"

#include <cmath>
#include <numbers>

namespace ormalux {

namespace {

constexpr double degree = std::numbers::pi / 180;
constexpr double parallel = 1e-6 * degree;

CPlanePoint direction(const CPlaneLine& line)
{
    return {std::cos(line.angle * degree), -std::sin(line.angle * degree)};
}

double cross(CPlanePoint a, CPlanePoint b)
{
    return a.x * b.y - a.y * b.x;
}

} // namespace

CPlaneLine lineOf(const CEdgeLine& edge)
{
    return {edge.x, edge.y, edge.angle};
}

CPlanePoint centreOf(const CEdgeCircle& circle)
{
    return {circle.x, circle.y};
}

double distance(CPlanePoint a, CPlanePoint b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

double distance(CPlanePoint point, const CPlaneLine& line)
{
    return std::abs(cross(direction(line), {point.x - line.x, point.y - line.y}));
}

double distance(const CPlaneLine& first, const CPlaneLine& second)
{
    return distance(CPlanePoint{first.x, first.y}, second);
}

CPlanePoint footOn(const CPlaneLine& line, CPlanePoint point)
{
    const CPlanePoint along = direction(line);
    const double t = (point.x - line.x) * along.x + (point.y - line.y) * along.y;
    return {line.x + t * along.x, line.y + t * along.y};
}

double angleBetween(const CPlaneLine& a, const CPlaneLine& b)
{
    const CPlanePoint u = direction(a), v = direction(b);
    return std::atan2(std::abs(cross(u, v)), std::abs(u.x * v.x + u.y * v.y)) / degree;
}

bool intersection(const CPlaneLine& a, const CPlaneLine& b, CPlanePoint& at)
{
    const CPlanePoint u = direction(a), v = direction(b);
    const double sine = cross(u, v);
    if (!(std::abs(sine) >= parallel))
        return false;
    const double t = cross({b.x - a.x, b.y - a.y}, v) / sine;
    at = {a.x + t * u.x, a.y + t * u.y};
    return true;
}

} // namespace ormalux
