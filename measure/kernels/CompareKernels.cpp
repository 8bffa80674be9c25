#include "measure/kernels/CompareKernels.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "measure/kernels/CompareKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if !ORMALUX_PLAIN
namespace {

// Where the next vector of count columns begins, behind one at x: the last one overlaps the one before,
// unless all columns are fewer than its lanes; those left over are done one by one.
HWY_INLINE std::size_t nextVector(std::size_t x, std::size_t lanes, std::size_t count)
{
    return x + lanes < count && x + 2 * lanes > count ? count - lanes : x + lanes;
}

} // namespace
#endif

void blendRow(const std::uint8_t* upper, const std::uint8_t* lower, unsigned fx, unsigned fy,
              std::uint8_t* out, std::size_t count)
{
    const unsigned weights[4] = {(256 - fx) * (256 - fy), fx * (256 - fy), (256 - fx) * fy, fx * fy};
    const std::size_t next = fx == 0 ? 0 : 1;
    std::size_t x = 0;
#if !ORMALUX_PLAIN
    const hn::ScalableTag<std::int32_t> d;
    const hn::Rebind<std::uint8_t, decltype(d)> few;
    const auto weighed = [&](const std::uint8_t* pixels, int n) HWY_ATTR {
        return hn::Mul(hn::PromoteTo(d, hn::LoadU(few, pixels)), hn::Set(d, std::int32_t(weights[n])));
    };
    for (; x + hn::Lanes(d) <= count; x = nextVector(x, hn::Lanes(d), count)) {
        const auto above = hn::Add(weighed(upper + x, 0), weighed(upper + x + next, 1));
        const auto below = hn::Add(weighed(lower + x, 2), weighed(lower + x + next, 3));
        const auto sum = hn::Add(hn::Add(above, below), hn::Set(d, 1 << 15));
        hn::StoreU(hn::DemoteTo(few, hn::ShiftRight<16>(sum)), few, out + x);
    }
#endif
    for (; x < count; ++x)
        out[x] = std::uint8_t((upper[x] * weights[0] + upper[x + next] * weights[1] + lower[x] * weights[2] +
                               lower[x + next] * weights[3] + (1u << 15)) >>
                              16);
}

void columnExtremes(const std::uint8_t* const* least, const std::uint8_t* const* greatest, std::size_t n,
                    std::uint8_t* low, std::uint8_t* high, std::size_t count)
{
    std::size_t x = 0;
#if !ORMALUX_PLAIN
    const hn::ScalableTag<std::uint8_t> d;
    const bool same = least == greatest;
    for (; x + hn::Lanes(d) <= count; x = nextVector(x, hn::Lanes(d), count)) {
        auto a = hn::LoadU(d, least[0] + x), b = same ? a : hn::LoadU(d, greatest[0] + x);
        for (std::size_t i = 1; i < n; ++i) {
            const auto next = hn::LoadU(d, least[i] + x);
            a = hn::Min(a, next);
            b = hn::Max(b, same ? next : hn::LoadU(d, greatest[i] + x));
        }
        hn::StoreU(a, d, low + x);
        hn::StoreU(b, d, high + x);
    }
#endif
    for (; x < count; ++x) {
        low[x] = least[0][x];
        high[x] = greatest[0][x];
        for (std::size_t i = 1; i < n; ++i) {
            low[x] = std::min(low[x], least[i][x]);
            high[x] = std::max(high[x], greatest[i][x]);
        }
    }
}

void markOutliers(const std::uint8_t* pixels, const std::uint8_t* least, const std::uint8_t* greatest,
                  std::size_t grow, std::uint8_t threshold, std::uint8_t* marks, std::size_t count)
{
    const std::ptrdiff_t reach = std::ptrdiff_t(grow);
    std::size_t x = 0;
#if !ORMALUX_PLAIN
    const hn::ScalableTag<std::uint8_t> d;
    const auto limit = hn::Set(d, threshold);
    for (; x + hn::Lanes(d) <= count; x = nextVector(x, hn::Lanes(d), count)) {
        auto low = hn::LoadU(d, least + x), high = hn::LoadU(d, greatest + x);
        for (std::ptrdiff_t i = 1; i <= reach; ++i) {
            low = hn::Min(low, hn::Min(hn::LoadU(d, least + x - i), hn::LoadU(d, least + x + i)));
            high = hn::Max(high, hn::Max(hn::LoadU(d, greatest + x - i), hn::LoadU(d, greatest + x + i)));
        }
        const auto p = hn::LoadU(d, pixels + x);
        // One of the two differences is 0.
        const auto apart = hn::Or(hn::SaturatedSub(p, high), hn::SaturatedSub(low, p));
        hn::StoreU(hn::VecFromMask(d, hn::Gt(apart, limit)), d, marks + x);
    }
#endif
    for (; x < count; ++x) {
        const std::uint8_t low = *std::min_element(least + x - reach, least + x + reach + 1);
        const std::uint8_t high = *std::max_element(greatest + x - reach, greatest + x + reach + 1);
        const int apart = std::max({pixels[x] - high, low - pixels[x], 0});
        marks[x] = apart > threshold ? 255 : 0;
    }
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(blendRow);
ORMALUX_SIMD_TABLE(columnExtremes);
ORMALUX_SIMD_TABLE(markOutliers);

void blendRow(const std::uint8_t* upper, const std::uint8_t* lower, unsigned fx, unsigned fy,
              std::uint8_t* out, std::size_t count)
{
    ORMALUX_SIMD_CALL(blendRow)(upper, lower, fx, fy, out, count);
}

void columnExtremes(const std::uint8_t* const* least, const std::uint8_t* const* greatest, std::size_t n,
                    std::uint8_t* low, std::uint8_t* high, std::size_t count)
{
    ORMALUX_SIMD_CALL(columnExtremes)(least, greatest, n, low, high, count);
}

void markOutliers(const std::uint8_t* pixels, const std::uint8_t* least, const std::uint8_t* greatest,
                  std::size_t grow, std::uint8_t threshold, std::uint8_t* marks, std::size_t count)
{
    ORMALUX_SIMD_CALL(markOutliers)(pixels, least, greatest, grow, threshold, marks, count);
}

} // namespace ormalux::kernels
#endif
