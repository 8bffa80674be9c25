#include "color/kernels/PlaneKernels.h"

#include "color/ColorFormulas.h"

#include <bit>
#include <cstring>
#include <iterator>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "color/kernels/PlaneKernels.cpp"
#include "platform/Simd.h"

// Read once for every instruction set, like this file.
#include "color/kernels/PlaneFormulas-inl.h"

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
        hn::LoadInterleaved3(d, bgr + 3 * i, b, g, r);
        hn::StoreU(formula(b, g, r), d, gray + i);
    }
#endif
    for (; i < count; ++i)
        gray[i] = formula.plain(bgr[3 * i], bgr[3 * i + 1], bgr[3 * i + 2]);
}

} // namespace

void plane(Plane plane, const std::uint8_t* bgr, std::uint8_t* gray, std::size_t count)
{
    switch (plane) {
    case Plane::Luma:
        return eachPixel(bgr, gray, count, Luma());
    case Plane::BlueDifference:
        return eachPixel(bgr, gray, count, BlueDifference());
    case Plane::RedDifference:
        return eachPixel(bgr, gray, count, RedDifference());
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
