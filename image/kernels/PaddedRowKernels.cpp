#include "image/kernels/PaddedRowKernels.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/PaddedRowKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

void copyPadded(const std::uint8_t* from, std::uint8_t* to, std::size_t width, std::size_t before,
                std::size_t after)
{
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    const auto first = hn::Set(d, from[0]), last = hn::Set(d, from[width - 1]);
    for (std::size_t i = 0; i < before; i += lanes)
        hn::StoreU(first, d, to - i - lanes);
    if (width < lanes) {
        std::memcpy(to, from, width);
    } else {
        for (std::size_t x = 0; x + lanes < width; x += lanes)
            hn::StoreU(hn::LoadU(d, from + x), d, to + x);
        hn::StoreU(hn::LoadU(d, from + width - lanes), d, to + width - lanes);
    }
    for (std::size_t i = 0; i < after; i += lanes)
        hn::StoreU(last, d, to + width + i);
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(copyPadded);

PaddedCopy paddedCopy()
{
    return ORMALUX_SIMD_CALL(copyPadded);
}

} // namespace ormalux::kernels
#endif
