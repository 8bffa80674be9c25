#include "image/kernels/ExtremeKernels.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/ExtremeKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

namespace {

struct Least
{
    template <class V>
    HWY_INLINE V operator()(V a, V b) const
    {
        return hn::Min(a, b);
    }
    static std::uint8_t plain(std::uint8_t a, std::uint8_t b) { return std::min(a, b); }
};

struct Greatest
{
    template <class V>
    HWY_INLINE V operator()(V a, V b) const
    {
        return hn::Max(a, b);
    }
    static std::uint8_t plain(std::uint8_t a, std::uint8_t b) { return std::max(a, b); }
};

// The last vector overlaps the one before; where out is one of the rows that does no harm, since an extreme
// taken twice stays.
template <class Better>
HWY_INLINE void extremeOf(const std::uint8_t* const* rows, std::size_t n, std::uint8_t* out,
                          std::size_t count, Better better)
{
    std::size_t x = 0;
#if !ORMALUX_PLAIN
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    for (; x + 4 * lanes <= count; x += 4 * lanes) {
        const std::uint8_t* row = rows[0] + x;
        auto a = hn::LoadU(d, row), b = hn::LoadU(d, row + lanes), c = hn::LoadU(d, row + 2 * lanes),
             e = hn::LoadU(d, row + 3 * lanes);
        for (std::size_t i = 1; i < n; ++i) {
            row = rows[i] + x;
            a = better(a, hn::LoadU(d, row));
            b = better(b, hn::LoadU(d, row + lanes));
            c = better(c, hn::LoadU(d, row + 2 * lanes));
            e = better(e, hn::LoadU(d, row + 3 * lanes));
        }
        hn::StoreU(a, d, out + x);
        hn::StoreU(b, d, out + x + lanes);
        hn::StoreU(c, d, out + x + 2 * lanes);
        hn::StoreU(e, d, out + x + 3 * lanes);
    }
    while (x < count && count >= lanes) {
        const std::size_t at = x + lanes <= count ? x : count - lanes;
        auto a = hn::LoadU(d, rows[0] + at);
        for (std::size_t i = 1; i < n; ++i)
            a = better(a, hn::LoadU(d, rows[i] + at));
        hn::StoreU(a, d, out + at);
        x = at + lanes;
    }
#endif
    for (; x < count; ++x) {
        std::uint8_t best = rows[0][x];
        for (std::size_t i = 1; i < n; ++i)
            best = better.plain(best, rows[i][x]);
        out[x] = best;
    }
}

} // namespace

void leastOf(const std::uint8_t* const* rows, std::size_t n, std::uint8_t* out, std::size_t count)
{
    extremeOf(rows, n, out, count, Least());
}

void greatestOf(const std::uint8_t* const* rows, std::size_t n, std::uint8_t* out, std::size_t count)
{
    extremeOf(rows, n, out, count, Greatest());
}

void subtractRow(const std::uint8_t* from, const std::uint8_t* less, std::uint8_t* out, std::size_t count)
{
    std::size_t x = 0;
#if !ORMALUX_PLAIN
    const hn::ScalableTag<std::uint8_t> d;
    for (; x + hn::Lanes(d) <= count; x += hn::Lanes(d))
        hn::StoreU(hn::SaturatedSub(hn::LoadU(d, from + x), hn::LoadU(d, less + x)), d, out + x);
#endif
    for (; x < count; ++x)
        out[x] = std::uint8_t(std::max(0, from[x] - less[x]));
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(leastOf);
ORMALUX_SIMD_TABLE(greatestOf);
ORMALUX_SIMD_TABLE(subtractRow);

RowExtreme leastOfRows()
{
    return ORMALUX_SIMD_CALL(leastOf);
}

RowExtreme greatestOfRows()
{
    return ORMALUX_SIMD_CALL(greatestOf);
}

void subtractRow(const std::uint8_t* from, const std::uint8_t* less, std::uint8_t* out, std::size_t count)
{
    ORMALUX_SIMD_CALL(subtractRow)(from, less, out, count);
}

} // namespace ormalux::kernels
#endif
