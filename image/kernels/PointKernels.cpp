#include "image/kernels/PointKernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/PointKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

void invert(std::uint8_t* pixels, std::size_t count)
{
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    const auto ones = hn::Set(d, 255);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes)
        hn::StoreU(hn::Xor(hn::LoadU(d, pixels + i), ones), d, pixels + i);
    for (; i < count; ++i)
        pixels[i] = std::uint8_t(~pixels[i]);
}

void threshold(std::uint8_t* pixels, std::size_t count, std::uint8_t t)
{
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    const auto limit = hn::Set(d, t);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes) {
        const auto above = hn::LoadU(d, pixels + i) > limit;
        hn::StoreU(hn::VecFromMask(d, above), d, pixels + i);
    }
    for (; i < count; ++i)
        pixels[i] = pixels[i] > t ? 255 : 0;
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(invert);
ORMALUX_SIMD_TABLE(threshold);

void invert(std::uint8_t* pixels, std::size_t count)
{
    ORMALUX_SIMD_CALL(invert)(pixels, count);
}

void threshold(std::uint8_t* pixels, std::size_t count, std::uint8_t t)
{
    ORMALUX_SIMD_CALL(threshold)(pixels, count, t);
}

} // namespace ormalux::kernels
#endif
