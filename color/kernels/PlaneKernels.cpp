#include "color/kernels/PlaneKernels.h"

#include "color/ColorFormulas.h"

#include <algorithm>
#include <bit>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "color/kernels/PlaneKernels.cpp"
#include "platform/Simd.h"

// Read once for every instruction set, like this file.
#include "image/kernels/LoadColors-inl.h"
#include "color/kernels/PlaneFormulas-inl.h"
#include "color/kernels/WeightedSums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

namespace {

template <class Formula>
void eachPixel(const std::uint8_t* bgr, std::uint8_t* gray, std::size_t count, Formula formula)
{
    std::size_t i = 0;
#if !ORMALUX_PLAIN
    const Bytes d;
    const std::size_t lanes = hn::Lanes(d);
    for (; i + lanes <= count; i += lanes) {
        auto b = hn::Zero(d), g = hn::Zero(d), r = hn::Zero(d);
        loadColors(d, bgr + 3 * i, b, g, r);
        hn::StoreU(formula(b, g, r), d, gray + i);
    }
#endif
    for (; i < count; ++i)
        gray[i] = formula.plain(bgr[3 * i], bgr[3 * i + 1], bgr[3 * i + 2]);
}

/// A vector's pixels whose value may be one too large.
struct Doubt
{
    std::uint64_t pixels[65] = {}; ///< as bits, one entry a vector
    std::size_t places[65];        ///< the vectors' first pixels
    std::size_t count = 0;
};

template <class Weights>
HWY_NOINLINE void settle(const Doubt& doubt, const std::uint8_t* bgr, std::uint8_t* gray)
{
    for (std::size_t n = 0; n < doubt.count; ++n)
        for (std::uint64_t pixels = doubt.pixels[n]; pixels != 0; pixels &= pixels - 1) {
            const std::size_t i = doubt.places[n] + std::size_t(std::countr_zero(pixels));
            gray[i] = Weights::exact(bgr[3 * i], bgr[3 * i + 1], bgr[3 * i + 2]);
        }
}

/// One pixel in a thousand is in doubt. Noting them and settling them for many vectors at once spares a
/// branch in the loop that would be mispredicted every time.
template <class Weights>
void eachSum(const std::uint8_t* bgr, std::uint8_t* gray, std::size_t count)
{
    std::size_t i = 0;
#if !ORMALUX_PLAIN
    const Bytes d;
    const std::size_t lanes = hn::Lanes(d);
    while (i + lanes <= count) {
        const std::size_t end = std::min(count - count % lanes, i + 64 * lanes);
        Doubt doubt;
        for (; i < end; i += lanes) {
            auto b = hn::Zero(d), g = hn::Zero(d), r = hn::Zero(d);
            loadColors(d, bgr + 3 * i, b, g, r);
            const WeightedSum<Weights> sum(b, g, r);
            hn::StoreU(sum.value, d, gray + i);
            const auto doubtful = sum.doubtful();
            hn::StoreMaskBits(d, doubtful, reinterpret_cast<std::uint8_t*>(&doubt.pixels[doubt.count]));
            doubt.places[doubt.count] = i;
            doubt.count += hn::AllFalse(d, doubtful) ? 0 : 1;
        }
        settle<Weights>(doubt, bgr, gray);
    }
#endif
    for (; i < count; ++i)
        gray[i] = Weights::exact(bgr[3 * i], bgr[3 * i + 1], bgr[3 * i + 2]);
}

} // namespace

void plane(Plane plane, const std::uint8_t* bgr, std::uint8_t* gray, std::size_t count)
{
    switch (plane) {
    case Plane::Luma:
        return eachSum<LumaWeights>(bgr, gray, count);
    case Plane::BlueDifference:
        return eachSum<BlueDifferenceWeights>(bgr, gray, count);
    case Plane::RedDifference:
        return eachSum<RedDifferenceWeights>(bgr, gray, count);
    case Plane::Intensity:
        return eachPixel(bgr, gray, count, Intensity());
    case Plane::Saturation:
        return eachPixel(bgr, gray, count, Saturation());
    case Plane::Value:
        return eachPixel(bgr, gray, count, Value());
    case Plane::Cyan:
        return eachPixel(bgr, gray, count, Cyan());
    case Plane::Magenta:
        return eachPixel(bgr, gray, count, Magenta());
    case Plane::Yellow:
        return eachPixel(bgr, gray, count, Yellow());
    case Plane::Black:
        return eachPixel(bgr, gray, count, Black());
    default:
        return;
    }
}

void colorRange(const std::uint8_t* bgr, std::uint8_t* gray, std::size_t count, const std::uint8_t low[3],
                const std::uint8_t high[3])
{
    eachPixel(bgr, gray, count, InRange(low, high));
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(plane);
ORMALUX_SIMD_TABLE(colorRange);

void plane(Plane plane, const std::uint8_t* bgr, std::uint8_t* gray, std::size_t count)
{
    ORMALUX_SIMD_CALL(plane)(plane, bgr, gray, count);
}

void colorRange(const std::uint8_t* bgr, std::uint8_t* gray, std::size_t count, const std::uint8_t low[3],
                const std::uint8_t high[3])
{
    ORMALUX_SIMD_CALL(colorRange)(bgr, gray, count, low, high);
}

} // namespace ormalux::kernels
#endif
