#include "image/kernels/PointKernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/PointKernels.cpp"
#include "platform/Simd.h"

#include "image/kernels/ByteLoops-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {

void invert(std::uint8_t* pixels, std::size_t count)
{
    const auto ones = hn::Set(hn::ScalableTag<std::uint8_t>(), 255);
    mapBytes(pixels, count, [&](auto v) HWY_ATTR { return hn::Xor(v, ones); });
}

void threshold(std::uint8_t* pixels, std::size_t count, std::uint8_t t)
{
    const hn::ScalableTag<std::uint8_t> d;
    const auto limit = hn::Set(d, t);
    mapBytes(pixels, count, [&](auto v) HWY_ATTR { return hn::VecFromMask(d, v > limit); });
}

void splitRange(std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high,
                std::uint8_t inside, std::uint8_t outside)
{
    const hn::ScalableTag<std::uint8_t> d;
    const auto first = hn::Set(d, low);
    const auto span = hn::Set(d, std::uint8_t(high - low));
    const auto in = hn::Set(d, inside);
    const auto out = hn::Set(d, outside);
    mapBytes(pixels, count,
             [&](auto v) HWY_ATTR { return hn::IfThenElse(inRange(v, first, span), in, out); });
}

#if ORMALUX_PLAIN

void lookUp(std::uint8_t* pixels, std::size_t count, const std::uint8_t* table)
{
    for (std::size_t i = 0; i < count; ++i)
        pixels[i] = table[pixels[i]];
}

#elif HWY_TARGET == HWY_AVX3_DL && HWY_COMPILER_GCC && !HWY_COMPILER_CLANG

// The whole table in four registers. Highway has no byte permute across two registers, but the compiler's own
// vectors have, and it is three times as fast as the tree below.
using TableQuarter [[gnu::vector_size(64)]] = std::uint8_t;

void lookUp(std::uint8_t* pixels, std::size_t count, const std::uint8_t* table)
{
    const hn::ScalableTag<std::uint8_t> d;
    TableQuarter quarters[4];
    std::memcpy(quarters, table, sizeof quarters);
    const TableQuarter q0 = quarters[0], q1 = quarters[1], q2 = quarters[2], q3 = quarters[3];
    mapBytes(pixels, count, [=](auto v) HWY_ATTR {
        const auto index = reinterpret_cast<TableQuarter>(v.raw);
        auto lower = v;
        auto upper = v;
        lower.raw = reinterpret_cast<decltype(v.raw)>(__builtin_shuffle(q0, q1, index));
        upper.raw = reinterpret_cast<decltype(v.raw)>(__builtin_shuffle(q2, q3, index));
        return hn::IfThenElse(hn::MaskFromVec(v), upper, lower);
    });
}

#else

// Looks the low half of each byte up in all sixteen parts of the table, then chooses by the bits of the high
// half.
void lookUp(std::uint8_t* pixels, std::size_t count, const std::uint8_t* table)
{
    const hn::ScalableTag<std::uint8_t> d;
    const auto lowHalf = hn::Set(d, 15);
    mapBytes(pixels, count, [=](auto v) HWY_ATTR {
        const auto index = hn::And(v, lowHalf);
        const auto part = [&](int n) HWY_ATTR {
            return hn::TableLookupBytes(hn::LoadDup128(d, table + 16 * n), index);
        };
        const auto bit = [&](int n) HWY_ATTR {
            const auto one = hn::Set(d, std::uint8_t(1 << n));
            return hn::And(v, one) == one;
        };
        const auto bit4 = bit(4);
        const auto pair = [&](int n) HWY_ATTR { return hn::IfThenElse(bit4, part(n + 1), part(n)); };
        const auto bit5 = bit(5);
        const auto four = [&](int n) HWY_ATTR { return hn::IfThenElse(bit5, pair(n + 2), pair(n)); };
        const auto bit6 = bit(6);
        const auto eight = [&](int n) HWY_ATTR { return hn::IfThenElse(bit6, four(n + 4), four(n)); };
        return hn::IfThenElse(bit(7), eight(8), eight(0));
    });
}

#endif

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(invert);
ORMALUX_SIMD_TABLE(threshold);
ORMALUX_SIMD_TABLE(splitRange);
ORMALUX_SIMD_TABLE(lookUp);

void invert(std::uint8_t* pixels, std::size_t count)
{
    ORMALUX_SIMD_CALL(invert)(pixels, count);
}

void threshold(std::uint8_t* pixels, std::size_t count, std::uint8_t t)
{
    ORMALUX_SIMD_CALL(threshold)(pixels, count, t);
}

void splitRange(std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high,
                std::uint8_t inside, std::uint8_t outside)
{
    ORMALUX_SIMD_CALL(splitRange)(pixels, count, low, high, inside, outside);
}

void lookUp(std::uint8_t* pixels, std::size_t count, const std::uint8_t* table)
{
    ORMALUX_SIMD_CALL(lookUp)(pixels, count, table);
}

} // namespace ormalux::kernels
#endif
