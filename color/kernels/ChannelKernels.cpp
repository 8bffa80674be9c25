#include "color/kernels/ChannelKernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "color/kernels/ChannelKernels.cpp"
#include "platform/Simd.h"

#include "image/kernels/LoadColors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

void splitChannels(const std::uint8_t* bgr, std::size_t count, std::uint8_t* blue, std::uint8_t* green,
                   std::uint8_t* red)
{
    std::size_t i = 0;
#if !ORMALUX_PLAIN
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    for (; i + lanes <= count; i += lanes) {
        auto b = hn::Zero(d), g = hn::Zero(d), r = hn::Zero(d);
        loadColors(d, bgr + 3 * i, b, g, r);
        hn::StoreU(b, d, blue + i);
        hn::StoreU(g, d, green + i);
        hn::StoreU(r, d, red + i);
    }
#endif
    for (; i < count; ++i) {
        blue[i] = bgr[3 * i];
        green[i] = bgr[3 * i + 1];
        red[i] = bgr[3 * i + 2];
    }
}

void joinChannels(const std::uint8_t* blue, const std::uint8_t* green, const std::uint8_t* red,
                  std::size_t count, std::uint8_t* bgr)
{
    std::size_t i = 0;
#if !ORMALUX_PLAIN
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    for (; i + lanes <= count; i += lanes)
        hn::StoreInterleaved3(hn::LoadU(d, blue + i), hn::LoadU(d, green + i), hn::LoadU(d, red + i), d,
                              bgr + 3 * i);
#endif
    for (; i < count; ++i) {
        bgr[3 * i] = blue[i];
        bgr[3 * i + 1] = green[i];
        bgr[3 * i + 2] = red[i];
    }
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(splitChannels);
ORMALUX_SIMD_TABLE(joinChannels);

void splitChannels(const std::uint8_t* bgr, std::size_t count, std::uint8_t* blue, std::uint8_t* green,
                   std::uint8_t* red)
{
    ORMALUX_SIMD_CALL(splitChannels)(bgr, count, blue, green, red);
}

void joinChannels(const std::uint8_t* blue, const std::uint8_t* green, const std::uint8_t* red,
                  std::size_t count, std::uint8_t* bgr)
{
    ORMALUX_SIMD_CALL(joinChannels)(blue, green, red, count, bgr);
}

} // namespace ormalux::kernels
#endif
