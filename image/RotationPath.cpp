#include "image/RotationPath.h"

#include <algorithm>
#include <cmath>

namespace ormalux {

namespace {

constexpr double radiansPerDegree = 0.017453292519943295;

// Every whole number up to here is a single-precision number.
constexpr std::int64_t exactInSingle = std::int64_t(1) << 24;

int clampTo(double value, int low, int high)
{
    if (!(value > low))
        return low;
    return value < high ? int(value) : high;
}

} // namespace

RotationPath::RotationPath(int width, int height, int cx, int cy, double angle)
    : m_width(width), m_height(height), m_cx(cx), m_cy(cy), m_ca(std::cos(angle * radiansPerDegree)),
      m_sa(std::sin(angle * radiansPerDegree))
{
    const std::int64_t farthest = std::max(std::abs(std::int64_t(cx)), std::abs(std::int64_t(width) - cx));
    const std::int64_t lowest = std::max(std::abs(std::int64_t(cy)), std::abs(std::int64_t(height) - cy));
    m_exact = std::max(farthest, lowest) <= exactInSingle;
}

RotationRow RotationPath::sourceRow(int y) const
{
    const double dy = double(float(std::int64_t(y) - m_cy));
    return {m_ca, m_sa, double(m_cx), double(m_cy), dy * m_sa, dy * m_ca};
}

ColumnRange RotationPath::sourceRows(int top, int end) const
{
    if (!m_exact)
        return {0, m_height};
    // The corners of the target rows, turned back. A place is a unit square, two units where truncation
    // folds.
    double low = INFINITY, high = -INFINITY;
    for (const double x : {-1.0, double(m_width)})
        for (const double y : {top - 1.0, double(end)}) {
            const double source = (y - m_cy) * m_ca - (x - m_cx) * m_sa + m_cy;
            low = std::min(low, source);
            high = std::max(high, source);
        }
    return {clampTo(low - 2, 0, m_height), clampTo(high + 3, 0, m_height)};
}

// The first column from which on the position, which only rises or only falls, is no longer before. The guess
// is mostly right or one off.
template <class Position, class Before>
int RotationPath::firstColumn(int first, int end, double guess, Position position, Before before) const
{
    std::int64_t low = first, high = end;
    const auto narrow = [&](std::int64_t x) {
        if (before(position(dx(int(x)))))
            low = x + 1;
        else
            high = x;
    };
    const std::int64_t near = clampTo(guess, first, end);
    for (const std::int64_t x : {near - 2, near + 2})
        if (x >= low && x < high)
            narrow(x);
    while (low < high)
        narrow(low + (high - low) / 2);
    return int(low);
}

ColumnRange RotationPath::sourceColumns(const RotationRow& row, int top, int end) const
{
    // Truncation takes everything above -1 to 0.
    const auto above = [=](double v) { return top == 0 ? !(v > -1) : v < top; };
    const auto within = [=](double v) { return v < end; };
    const auto left = [](double u) { return !(u > -1); };
    const auto inside = [width = double(m_width)](double u) { return u < width; };
    const auto targetRow = [&](double d) { return row.row(d); };
    const auto targetColumn = [&](double d) { return row.column(d); };
    const auto guessRow = [&](double bound) { return (bound - m_cy - row.dyCos) / m_sa + m_cx; };
    const auto guessColumn = [&](double bound) { return (bound - m_cx + row.dySin) / m_ca + m_cx; };

    const double topBound = top == 0 ? -1 : top;
    ColumnRange range{0, m_width};
    if (m_sa >= 0) {
        range.first = firstColumn(range.first, range.end, guessRow(topBound), targetRow, above);
        range.end = firstColumn(range.first, range.end, guessRow(end), targetRow, within);
    } else {
        range.first = firstColumn(range.first, range.end, guessRow(end), targetRow,
                                  [&](double v) { return !within(v); });
        range.end = firstColumn(range.first, range.end, guessRow(topBound), targetRow,
                                [&](double v) { return !above(v); });
    }
    if (m_ca >= 0) {
        range.first = firstColumn(range.first, range.end, guessColumn(-1), targetColumn, left);
        range.end = firstColumn(range.first, range.end, guessColumn(m_width), targetColumn, inside);
    } else {
        range.first = firstColumn(range.first, range.end, guessColumn(m_width), targetColumn,
                                  [&](double u) { return !inside(u); });
        range.end = firstColumn(range.first, range.end, guessColumn(-1), targetColumn,
                                [&](double u) { return !left(u); });
    }
    return range;
}

} // namespace ormalux
