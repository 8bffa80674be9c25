#include "measure/AlignedRows.h"

#include "measure/kernels/CompareKernels.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace ormalux {

namespace {

constexpr std::int64_t one = std::int64_t(1) << 32;
// What turns a place into 256ths of a pixel, rounded.
constexpr int shift = 32 - kernels::subPixelBits;
constexpr std::int64_t half = std::int64_t(1) << (shift - 1);

std::int64_t fixed(double value)
{
    return std::llround(value * double(one));
}

std::int64_t subPixels(std::int64_t place)
{
    return (place + half) >> shift;
}

bool whole(std::int64_t place)
{
    return place % one == 0;
}

} // namespace

AlignedRows::AlignedRows(ConstGrayView golden, const CAlignment& a, int width, int height, int kept)
    : m_golden(golden), m_width(width), m_kept(kept), m_stride(std::size_t(wholeLines(width)))
{
    // Places beyond are nowhere near a picture; numbers that are none fail here, too.
    constexpr double farthest = double(1 << 29);
    m_valid = std::abs(a.xx) * width + std::abs(a.xy) * height + std::abs(a.x) < farthest &&
              std::abs(a.yx) * width + std::abs(a.yy) * height + std::abs(a.y) < farthest;
    if (!m_valid)
        return;
    m_origin = {fixed(a.x), fixed(a.y)};
    m_right = {fixed(a.xx), fixed(a.yx)};
    m_down = {fixed(a.xy), fixed(a.yy)};
    m_direct = m_right.x == one && m_right.y == 0 && m_down.x == 0 && m_down.y == one && whole(m_origin.x) &&
               whole(m_origin.y);
}

bool AlignedRows::prepare()
{
    if (!m_direct)
        m_bytes = scratchBytes(2 * m_stride * std::size_t(m_kept));
    return m_direct || m_bytes;
}

AlignedRows::Place AlignedRows::placeOf(int x, int y) const
{
    return {m_origin.x + x * m_right.x + y * m_down.x, m_origin.y + x * m_right.y + y * m_down.y};
}

bool AlignedRows::holds(const Place& place) const
{
    const std::int64_t x = subPixels(place.x), y = subPixels(place.y);
    return x >= 0 && y >= 0 && x <= std::int64_t(m_golden.width - 1) << kernels::subPixelBits &&
           y <= std::int64_t(m_golden.height - 1) << kernels::subPixelBits;
}

// The golden picture is convex, so a row enters and leaves it once.
AlignedRows::Known AlignedRows::known(int y) const
{
    Known known{0, m_width};
    while (known.begin < known.end && !holds(placeOf(known.begin, y)))
        ++known.begin;
    while (known.end > known.begin && !holds(placeOf(known.end - 1, y)))
        --known.end;
    return known;
}

void AlignedRows::sample(int y, Known columns, std::uint8_t* out) const
{
    constexpr int bits = kernels::subPixelBits;
    constexpr unsigned mask = (1 << bits) - 1;
    const auto below = [&](std::int64_t row) {
        return m_golden.row(int(std::min<std::int64_t>(row + 1, m_golden.height - 1)));
    };
    Place place = placeOf(columns.begin, y);
    if (m_right.x == one && m_right.y == 0) {
        const std::int64_t x = subPixels(place.x), row = subPixels(place.y);
        kernels::blendRow(m_golden.row(int(row >> bits)) + (x >> bits), below(row >> bits) + (x >> bits),
                          unsigned(x) & mask, unsigned(row) & mask, out + columns.begin,
                          std::size_t(columns.end - columns.begin));
        return;
    }
    for (int column = columns.begin; column < columns.end; ++column) {
        const std::int64_t x = subPixels(place.x), row = subPixels(place.y);
        const std::uint8_t *upper = m_golden.row(int(row >> bits)) + (x >> bits),
                           *lower = below(row >> bits) + (x >> bits);
        const unsigned fx = unsigned(x) & mask, fy = unsigned(row) & mask, next = fx == 0 ? 0 : 1;
        const unsigned above = upper[0] * (256 - fx) + upper[next] * fx;
        const unsigned under = lower[0] * (256 - fx) + lower[next] * fx;
        out[column] = std::uint8_t((above * (256 - fy) + under * fy + (1u << 15)) >> 16);
        place.x += m_right.x;
        place.y += m_right.y;
    }
}

void AlignedRows::fetch(int y)
{
    if (m_direct)
        return;
    std::uint8_t *low = slot(y), *high = low + m_stride;
    const Known columns = known(y);
    const std::size_t begin = std::size_t(columns.begin), end = std::size_t(columns.end),
                      width = std::size_t(m_width);
    std::memset(low, 255, begin);
    std::memset(high, 0, begin);
    if (!columns.none()) {
        sample(y, columns, low);
        std::memcpy(high + begin, low + begin, end - begin);
    }
    std::memset(low + end, 255, width - end);
    std::memset(high + end, 0, width - end);
}

} // namespace ormalux
