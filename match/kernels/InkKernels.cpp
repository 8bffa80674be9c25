#include "match/kernels/InkKernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "match/kernels/InkKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
using kernels::InkMask;
using kernels::inkStep;

namespace {

#if HWY_TARGET == HWY_SCALAR

HWY_INLINE std::uint64_t inkUnder(const std::uint8_t* ink, std::ptrdiff_t stride, const InkMask& mask)
{
    std::uint64_t sum = 0;
    for (std::size_t y = 0; y < mask.rows; ++y)
        for (std::size_t x = 0; x < mask.stride; ++x)
            sum += ink[std::ptrdiff_t(y) * stride + std::ptrdiff_t(x)] & mask.mask[y * mask.stride + x];
    return sum;
}

#else

// Characters are some twenty pixels wide: longer vectors would be half empty.
HWY_INLINE std::uint64_t inkUnder(const std::uint8_t* ink, std::ptrdiff_t stride, const InkMask& mask)
{
    const hn::FixedTag<std::uint8_t, inkStep> d;
    const hn::Repartition<std::uint64_t, decltype(d)> d64;
    auto sum = hn::Zero(d64);
    const std::uint8_t* row = mask.mask;
    for (std::size_t y = 0; y < mask.rows; ++y, row += mask.stride, ink += stride)
        for (std::size_t x = 0; x < mask.stride; x += inkStep)
            sum = hn::Add(sum, hn::SumsOf8(hn::And(hn::LoadU(d, ink + x), hn::LoadU(d, row + x))));
    return hn::GetLane(hn::SumOfLanes(d64, sum));
}

#endif

} // namespace

std::uint64_t mostInkUnder(const std::uint8_t* ink, std::ptrdiff_t stride, const InkMask& mask, int shift)
{
    std::uint64_t most = 0;
    for (int dy = -shift; dy <= shift; ++dy)
        for (int dx = -shift; dx <= shift; ++dx) {
            const std::uint64_t sum = inkUnder(ink + dy * stride + dx, stride, mask);
            most = sum > most ? sum : most;
        }
    return most;
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(mostInkUnder);

std::uint64_t mostInkUnder(const std::uint8_t* ink, std::ptrdiff_t stride, const InkMask& mask, int shift)
{
    return ORMALUX_SIMD_CALL(mostInkUnder)(ink, stride, mask, shift);
}

} // namespace ormalux::kernels
#endif
