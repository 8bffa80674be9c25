#include "color/kernels/HueKernels.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "color/kernels/HueKernels.cpp"
#include "platform/Simd.h"

// Read once for every instruction set, like this file.
#include "image/kernels/LoadColors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
using kernels::HueLimits;

namespace {

// Fractions are compared by their numerators over d: a hue is turn / d with turn up to 360 x 255, in 256ths
// of a degree below 2^25. A saturation is (510 d + max) / (2 max), truncated.

bool plainInRange(int b, int g, int r, const HueLimits& limits)
{
    const int max = std::max({b, g, r}), d = max - std::min({b, g, r});
    if (max < limits.lowValue || max > limits.highValue)
        return false;
    const int whole = std::max(2 * max, 1), share = 510 * d + max;
    if (share < limits.lowSaturation * whole || share >= (limits.highSaturation + 1) * whole)
        return false;
    const int scale = std::max(d, 1);
    int turn = 60 * (max == r ? g - b : max == g ? b - r + 2 * d : r - g + 4 * d);
    turn = kernels::hueUnit * (turn < 0 ? turn + 360 * d : turn);
    const bool above = turn >= limits.lowHue * scale, below = turn <= limits.highHue * scale;
    return limits.lowHue <= limits.highHue ? above && below : above || below;
}

#if !ORMALUX_PLAIN
using Ints = hn::ScalableTag<std::int32_t>;
using IntVec = hn::Vec<Ints>;
using FewBytes = hn::Rebind<std::uint8_t, Ints>;

/// The limits spread over vectors.
class HueTest
{
public:
    explicit HueTest(const HueLimits& limits)
        : m_lowHue(set(limits.lowHue)), m_highHue(set(limits.highHue)),
          m_lowSaturation(set(limits.lowSaturation)), m_endSaturation(set(limits.highSaturation + 1)),
          m_lowValue(set(limits.lowValue)), m_highValue(set(limits.highValue)),
          m_wraps(limits.lowHue > limits.highHue)
    {}

    /// 255 in the lanes of the pixels that are in range.
    HWY_INLINE IntVec operator()(IntVec b, IntVec g, IntVec r) const
    {
        const auto max = hn::Max(hn::Max(b, g), r), spread = hn::Sub(max, hn::Min(hn::Min(b, g), r));
        const auto whole = hn::Max(hn::Add(max, max), set(1));
        const auto share = hn::Add(hn::Mul(spread, set(510)), max);
        const auto twice = hn::Add(spread, spread);
        const auto red = hn::Sub(g, b), green = hn::Add(hn::Sub(b, r), twice),
                   blue = hn::Add(hn::Sub(r, g), hn::Add(twice, twice));
        const auto sixth = hn::IfThenElse(hn::Eq(max, r), red, hn::IfThenElse(hn::Eq(max, g), green, blue));
        const auto circle = hn::Mul(spread, set(6));
        const auto turn = hn::Mul(hn::IfThenElse(hn::Lt(sixth, set(0)), hn::Add(sixth, circle), sixth),
                                  set(60 * kernels::hueUnit));
        const auto scale = hn::Max(spread, set(1));
        const auto before = hn::Lt(turn, hn::Mul(m_lowHue, scale)),
                   behind = hn::Gt(turn, hn::Mul(m_highHue, scale));
        auto out = m_wraps ? hn::And(before, behind) : hn::Or(before, behind);
        out = hn::Or(out, hn::Lt(share, hn::Mul(m_lowSaturation, whole)));
        out = hn::Or(out, hn::Gt(share, hn::Sub(hn::Mul(m_endSaturation, whole), set(1))));
        out = hn::Or(out, hn::Or(hn::Lt(max, m_lowValue), hn::Gt(max, m_highValue)));
        return hn::AndNot(hn::VecFromMask(Ints(), out), set(255));
    }

private:
    static HWY_INLINE IntVec set(std::int32_t value) { return hn::Set(Ints(), value); }

    IntVec m_lowHue, m_highHue, m_lowSaturation, m_endSaturation, m_lowValue, m_highValue;
    bool m_wraps;
};
#endif

} // namespace

void hueRange(const std::uint8_t* bgr, std::uint8_t* gray, std::size_t count, const HueLimits& limits)
{
    std::size_t i = 0;
#if !ORMALUX_PLAIN
    const hn::ScalableTag<std::uint8_t> d;
    const FewBytes few;
    const HueTest inRange(limits);
    const std::size_t lanes = hn::Lanes(d), part = hn::Lanes(Ints());
    HWY_ALIGN std::uint8_t channels[3][HWY_MAX_BYTES];
    for (; i + lanes <= count; i += lanes) {
        auto b = hn::Zero(d), g = hn::Zero(d), r = hn::Zero(d);
        loadColors(d, bgr + 3 * i, b, g, r);
        hn::Store(b, d, channels[0]);
        hn::Store(g, d, channels[1]);
        hn::Store(r, d, channels[2]);
        for (std::size_t k = 0; k < lanes; k += part) {
            const auto wide = [&](int c)
                                  HWY_ATTR { return hn::PromoteTo(Ints(), hn::LoadU(few, channels[c] + k)); };
            hn::StoreU(hn::DemoteTo(few, inRange(wide(0), wide(1), wide(2))), few, gray + i + k);
        }
    }
#endif
    for (; i < count; ++i)
        gray[i] = plainInRange(bgr[3 * i], bgr[3 * i + 1], bgr[3 * i + 2], limits) ? 255 : 0;
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(hueRange);

void hueRange(const std::uint8_t* bgr, std::uint8_t* gray, std::size_t count, const HueLimits& limits)
{
    ORMALUX_SIMD_CALL(hueRange)(bgr, gray, count, limits);
}

} // namespace ormalux::kernels
#endif
