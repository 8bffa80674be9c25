#include "array/Polygon.h"

#include <algorithm>
#include <cstdint>

namespace ormalux {

namespace {

/// Whether the edge from upper to lower, which covers the point's row, crosses it at or left of the point.
bool crossesAtOrLeft(POINT upper, POINT lower, POINT point)
{
    if (point.x >= std::max(upper.x, lower.x))
        return true;
    if (point.x < std::min(upper.x, lower.x))
        return false;
    // The crossing lies (y - upper.y) * width / height from upper.x. Between the ends both products are made
    // of differences of one sign below 2^32, so that 64 unsigned bits hold them.
    const auto distance = [](LONG low, LONG high) { return std::uint64_t(std::int64_t(high) - low); };
    const std::uint64_t height = distance(upper.y, lower.y);
    const std::uint64_t down = distance(upper.y, point.y);
    if (upper.x <= lower.x)
        return down * distance(upper.x, lower.x) <= distance(upper.x, point.x) * height;
    return down * distance(lower.x, upper.x) >= distance(point.x, upper.x) * height;
}

} // namespace

bool windingPolygonHolds(std::span<const POINT> polygon, POINT point)
{
    if (polygon.size() < 3)
        return false;
    std::int64_t winding = 0;
    POINT from = polygon.back();
    for (const POINT& to : polygon) {
        if (from.y <= point.y && point.y < to.y)
            winding += crossesAtOrLeft(from, to, point);
        else if (to.y <= point.y && point.y < from.y)
            winding -= crossesAtOrLeft(to, from, point);
        from = to;
    }
    return winding != 0;
}

} // namespace ormalux
