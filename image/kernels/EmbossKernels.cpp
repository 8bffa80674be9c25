#include "image/kernels/EmbossKernels.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/EmbossKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

inline std::uint8_t embossed(std::uint8_t above, std::uint8_t below)
{
    return std::uint8_t(std::clamp(127 + above - below, 0, 255));
}

void embossRow(const std::uint8_t* above, std::uint8_t* own, const std::uint8_t* below, std::uint8_t* kept,
               std::size_t width)
{
    const std::uint8_t first = embossed(above[1], below[0]), last = own[width - 1];
    std::size_t x = 0;
#if !ORMALUX_PLAIN
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    const auto gray = hn::Set(d, 127);
    const auto emboss = [&](std::size_t i) {
        const auto a = hn::LoadU(d, above + i + 1), b = hn::LoadU(d, below + i - 1);
        // One of the two differences is 0.
        const auto up = hn::SaturatedAdd(gray, hn::SaturatedSub(a, b));
        hn::StoreU(hn::SaturatedSub(up, hn::SaturatedSub(b, a)), d, own + i);
    };
    for (; x + lanes <= width; x += lanes) {
        hn::StoreU(hn::LoadU(d, own + x), d, kept + x);
        emboss(x);
    }
#endif
    if (x < width)
        std::memcpy(kept + x, own + x, width - x);
#if !ORMALUX_PLAIN
    if (x > 0 && x < width) {
        emboss(width - lanes);
        x = width;
    }
#endif
    for (; x < width; ++x)
        own[x] = embossed(above[x + 1], below[std::ptrdiff_t(x) - 1]);
    own[0] = first;
    kept[width] = last;
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(embossRow);

void embossRow(const std::uint8_t* above, std::uint8_t* own, const std::uint8_t* below, std::uint8_t* kept,
               std::size_t width)
{
    ORMALUX_SIMD_CALL(embossRow)(above, own, below, kept, width);
}

} // namespace ormalux::kernels
#endif
