#include "image/kernels/EditKernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/EditKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

void markRange(std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high,
               std::uint8_t value)
{
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    const auto from = hn::Set(d, low), to = hn::Set(d, high), mark = hn::Set(d, value);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes) {
        const auto p = hn::LoadU(d, pixels + i);
        const auto outside = hn::Or(hn::Lt(p, from), hn::Gt(p, to));
        hn::StoreU(hn::IfThenElse(outside, p, mark), d, pixels + i);
    }
    for (; i < count; ++i)
        if (pixels[i] >= low && pixels[i] <= high)
            pixels[i] = value;
}

void markDifferent(std::uint8_t* pixels, const std::uint8_t* others, std::size_t count,
                   std::uint8_t tolerance, std::uint8_t value, std::uint8_t rest)
{
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    const auto most = hn::Set(d, tolerance), mark = hn::Set(d, value), ground = hn::Set(d, rest);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes) {
        const auto a = hn::LoadU(d, pixels + i), b = hn::LoadU(d, others + i);
        const auto distance = hn::Sub(hn::Max(a, b), hn::Min(a, b));
        hn::StoreU(hn::IfThenElse(hn::Gt(distance, most), mark, ground), d, pixels + i);
    }
    for (; i < count; ++i) {
        const int distance = pixels[i] > others[i] ? pixels[i] - others[i] : others[i] - pixels[i];
        pixels[i] = distance > tolerance ? value : rest;
    }
}

void addBytes(std::uint8_t* pixels, const std::uint8_t* others, std::size_t count)
{
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes)
        hn::StoreU(hn::Add(hn::LoadU(d, pixels + i), hn::LoadU(d, others + i)), d, pixels + i);
    for (; i < count; ++i)
        pixels[i] = std::uint8_t(pixels[i] + others[i]);
}

void subtractBytes(std::uint8_t* pixels, const std::uint8_t* others, std::size_t count)
{
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes)
        hn::StoreU(hn::SaturatedSub(hn::LoadU(d, pixels + i), hn::LoadU(d, others + i)), d, pixels + i);
    for (; i < count; ++i)
        pixels[i] = pixels[i] > others[i] ? std::uint8_t(pixels[i] - others[i]) : 0;
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(markRange);
ORMALUX_SIMD_TABLE(markDifferent);
ORMALUX_SIMD_TABLE(addBytes);
ORMALUX_SIMD_TABLE(subtractBytes);

void markRange(std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high,
               std::uint8_t value)
{
    ORMALUX_SIMD_CALL(markRange)(pixels, count, low, high, value);
}

void markDifferent(std::uint8_t* pixels, const std::uint8_t* others, std::size_t count,
                   std::uint8_t tolerance, std::uint8_t value, std::uint8_t rest)
{
    ORMALUX_SIMD_CALL(markDifferent)(pixels, others, count, tolerance, value, rest);
}

void addBytes(std::uint8_t* pixels, const std::uint8_t* others, std::size_t count)
{
    ORMALUX_SIMD_CALL(addBytes)(pixels, others, count);
}

void subtractBytes(std::uint8_t* pixels, const std::uint8_t* others, std::size_t count)
{
    ORMALUX_SIMD_CALL(subtractBytes)(pixels, others, count);
}

} // namespace ormalux::kernels
#endif
