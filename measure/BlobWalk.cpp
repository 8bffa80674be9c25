#include "measure/BlobWalk.h"

#include <algorithm>
#include <cstring>

namespace ormalux {

bool BlobWalk::prepare(const ConstGrayView& image, const BlobRegion& region, ObjectLevels levels)
{
    m_image = image;
    m_region = region;
    m_levels = levels;
    if (region.empty())
        return true;
    m_stride = std::size_t(region.right - region.left) + 1;
    const std::size_t size = m_stride * (std::size_t(region.bottom - region.top) + 1);
    if (!m_visits.reserve(size))
        return false;
    std::memset(m_visits.data(), NotVisited, size);
    return true;
}

bool BlobWalk::enter(int x, int y, Step step)
{
    const int level = m_image.row(y)[x];
    std::uint8_t& visited = visit(x, y);
    if (visited != NotVisited || level < m_levels.low || level > m_levels.high)
        return false;
    visited = step;
    return true;
}

// Deliberate: the walk stops at the region's last column and row, but at the image's first ones. A pixel
// outside the region is entered, and the walk goes on from the pixel that it came from.
bool BlobWalk::advance(POINT& at, POINT& entered)
{
    const auto [x, y] = at;
    if (x > 0 && enter(x - 1, y, Left))
        entered = {x - 1, y};
    else if (x < m_region.right - 1 && enter(x + 1, y, Right))
        entered = {x + 1, y};
    else if (y > 0 && enter(x, y - 1, Up))
        entered = {x, y - 1};
    else if (y < m_region.bottom - 1 && enter(x, y + 1, Down))
        entered = {x, y + 1};
    else
        return false;
    at = {std::max(entered.x, m_region.left), std::max(entered.y, m_region.top)};
    return true;
}

void BlobWalk::list(POINT seed, std::span<POINT> points)
{
    std::size_t count = 0;
    const auto add = [&](POINT point) {
        if (count < points.size())
            points[count++] = point;
    };
    visit(seed.x, seed.y) = Seed;
    add(seed);
    for (POINT at = seed;;) {
        if (POINT entered; advance(at, entered)) {
            add(entered);
            continue;
        }
        switch (visit(at.x, at.y)) {
        case Left:
            ++at.x;
            break;
        case Right:
            --at.x;
            break;
        case Up:
            ++at.y;
            break;
        case Down:
            --at.y;
            break;
        default:
            return;
        }
    }
}

} // namespace ormalux
