#pragma once

#include "platform/Types.h"

#include <cstddef>
#include <limits>
#include <span>

/// What the arrays of rectangles, points and blobs share.
namespace ormalux {

/// a + b, wrapping at 32 bits.
inline LONG wrappingSum(LONG a, LONG b)
{
    return LONG(DWORD(a) + DWORD(b));
}

/// A sum over its count, truncated; 0x80000000 for a count of 0.
inline LONG truncatedMean(double sum, std::size_t count)
{
    return count == 0 ? std::numeric_limits<LONG>::min() : LONG(sum / double(count));
}

/// low + (high - low) / 2, the half truncated toward 0.
inline LONG middle(LONG low, LONG high)
{
    return LONG(low + (std::int64_t(high) - low) / 2);
}

template <class Rectangle>
POINT centerOf(const Rectangle& r)
{
    return {middle(r.left, r.right), middle(r.top, r.bottom)};
}

/// The smallest and largest coordinates of what it was shown; four 0 values when that is nothing.
class Bounds
{
public:
    void include(LONG x, LONG y)
    {
        if (m_empty) {
            m_rect = {x, y, x, y};
            m_empty = false;
            return;
        }
        m_rect.left = x < m_rect.left ? x : m_rect.left;
        m_rect.right = x > m_rect.right ? x : m_rect.right;
        m_rect.top = y < m_rect.top ? y : m_rect.top;
        m_rect.bottom = y > m_rect.bottom ? y : m_rect.bottom;
    }
    RECT rect() const { return m_rect; }

private:
    RECT m_rect{0, 0, 0, 0};
    bool m_empty = true;
};

/// The bounds of all corners, reversed rectangles included.
template <class Rectangle>
RECT boundsOf(std::span<const Rectangle> rectangles)
{
    Bounds bounds;
    for (const Rectangle& r : rectangles) {
        bounds.include(r.left, r.top);
        bounds.include(r.right, r.bottom);
    }
    return bounds.rect();
}

/// The mean of points that are shown one by one.
class MeanPoint
{
public:
    void include(POINT p)
    {
        m_x += p.x;
        m_y += p.y;
        ++m_count;
    }
    /// Truncated; 0x80000000 in both coordinates when there was none.
    POINT point() const { return {truncatedMean(m_x, m_count), truncatedMean(m_y, m_count)}; }

private:
    double m_x = 0;
    double m_y = 0;
    std::size_t m_count = 0;
};

} // namespace ormalux
