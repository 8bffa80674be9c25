#include "measure/LineWalk.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace ormalux {

namespace {

/// The first step in [first, end) for which reached holds, which then holds for all behind it; end if none.
template <class Reached>
std::int64_t firstStep(std::int64_t first, std::int64_t end, Reached reached)
{
    while (first < end) {
        const std::int64_t middle = first + (end - first) / 2;
        if (reached(middle))
            end = middle;
        else
            first = middle + 1;
    }
    return first;
}

} // namespace

LineWalk::LineWalk(POINT from, POINT to)
{
    std::int64_t along2 = to.x, across2 = to.y;
    m_along = from.x, m_across = from.y;
    m_steep = std::abs(along2 - m_along) <= std::abs(across2 - m_across);
    if (m_steep) {
        std::swap(m_along, m_across);
        std::swap(along2, across2);
    }
    if (m_along > along2) {
        std::swap(m_along, along2);
        std::swap(m_across, across2);
    }
    m_length = along2 - m_along;
    m_rise = std::abs(across2 - m_across);
    m_sign = across2 > m_across ? 1 : -1;
}

std::int64_t LineWalk::sidewaysAt(std::int64_t step) const
{
    if (step == 0 || m_length == 0)
        return 0;
    // Both factors are below 2^32: the product needs all 64 bits.
    const std::uint64_t way = std::uint64_t(m_rise) * std::uint64_t(step);
    const std::uint64_t rest = way % std::uint64_t(m_length);
    return std::int64_t(way / std::uint64_t(m_length)) + (2 * rest > std::uint64_t(m_length));
}

std::int64_t LineWalk::stepOfSideways(std::int64_t sideways) const
{
    return (2 * sideways - 1) * m_length / (2 * m_rise) + 1;
}

LineWalk::Slope LineWalk::slope() const
{
    // The way in pixels is (2 rise step + length - 1) / (2 length), a multiple of 1 / (2 length). Both terms
    // are rounded up by at most one unit, so less than that is added up to the last step.
    const std::uint64_t length = std::uint64_t(m_length);
    return {((length - 1) << Slope::shift) / (2 * length) + 1,
            (std::uint64_t(m_rise) << Slope::shift) / length + 1};
}

LineWalk::State LineWalk::stateAt(std::int64_t step) const
{
    const std::int64_t start = 2 * m_rise - m_length;
    if (step == 0 || m_length == 0)
        return {m_along + step, m_across, start};
    const std::uint64_t way = std::uint64_t(m_rise) * std::uint64_t(step);
    const std::int64_t rest = std::int64_t(way % std::uint64_t(m_length));
    const bool up = 2 * rest > m_length;
    const std::int64_t sideways = std::int64_t(way / std::uint64_t(m_length)) + up;
    return {m_along + step, m_across + m_sign * sideways, start + 2 * rest - (up ? 2 * m_length : 0)};
}

POINT LineWalk::at(std::int64_t step) const
{
    const LONG along = LONG(m_along + step), across = LONG(m_across + m_sign * sidewaysAt(step));
    return m_steep ? POINT{across, along} : POINT{along, across};
}

std::int64_t LineWalk::stepAt(std::int64_t x, std::int64_t y) const
{
    const std::int64_t step = (m_steep ? y : x) - m_along;
    const std::int64_t sideways = m_sign * ((m_steep ? x : y) - m_across);
    const bool possible = step >= 0 && step <= m_length && sideways >= 0 && sideways <= m_rise;
    return possible && sidewaysAt(step) == sideways ? step : -1;
}

Steps LineWalk::inside(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom) const
{
    if (m_steep) {
        std::swap(left, top);
        std::swap(right, bottom);
    }
    const std::int64_t least = m_sign > 0 ? top - m_across : m_across - bottom;
    const std::int64_t most = m_sign > 0 ? bottom - m_across : m_across - top;
    std::int64_t first = std::max<std::int64_t>(left - m_along, 0);
    std::int64_t end = std::min(right - m_along, m_length) + 1;
    if (least > 0)
        first = firstStep(first, end, [&](std::int64_t step) { return sidewaysAt(step) >= least; });
    if (most < m_rise)
        end = firstStep(first, end, [&](std::int64_t step) { return sidewaysAt(step) > most; });
    return {first, end};
}

} // namespace ormalux
