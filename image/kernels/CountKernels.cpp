#include "image/kernels/CountKernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/CountKernels.cpp"
#include "platform/Simd.h"

#include "image/kernels/ByteLoops-inl.h"

#include <algorithm>

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
using kernels::IndexSum;

#if ORMALUX_PLAIN

std::uint64_t sumBytes(const std::uint8_t* pixels, std::size_t count)
{
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum += pixels[i];
    return sum;
}

std::uint64_t countRange(const std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high)
{
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < count; ++i)
        number += low <= pixels[i] && pixels[i] <= high;
    return number;
}

IndexSum sumIndices(const std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high)
{
    IndexSum found;
    for (std::size_t i = 0; i < count; ++i)
        if (low <= pixels[i] && pixels[i] <= high) {
            ++found.number;
            found.sum += i;
        }
    return found;
}

#else

template <class D, class V>
HWY_INLINE std::uint64_t total(D d, V sums)
{
    return hn::GetLane(hn::SumOfLanes(d, sums));
}

std::uint64_t sumBytes(const std::uint8_t* pixels, std::size_t count)
{
    const hn::ScalableTag<std::uint8_t> d;
    const hn::Repartition<std::uint64_t, decltype(d)> d64;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t i = 0;
    if (count < lanes) {
        std::uint64_t sum = 0;
        for (; i < count; ++i)
            sum += pixels[i];
        return sum;
    }
    // Vectors that straddle no cache line are read twice as fast: the ends are summed by vectors that
    // overlap.
    const std::size_t before = (0 - reinterpret_cast<std::uintptr_t>(pixels)) % lanes;
    const std::size_t behind = (count - before) % lanes;
    auto a = hn::SumsOf8(hn::IfThenElseZero(hn::FirstN(d, before), hn::LoadU(d, pixels)));
    auto b =
        hn::SumsOf8(hn::IfThenZeroElse(hn::FirstN(d, lanes - behind), hn::LoadU(d, pixels + count - lanes)));
    auto c = hn::Zero(d64), e = c;
    const std::size_t end = count - behind;
    for (i = before; i + 4 * lanes <= end; i += 4 * lanes) {
        a = a + hn::SumsOf8(hn::LoadU(d, pixels + i));
        b = b + hn::SumsOf8(hn::LoadU(d, pixels + i + lanes));
        c = c + hn::SumsOf8(hn::LoadU(d, pixels + i + 2 * lanes));
        e = e + hn::SumsOf8(hn::LoadU(d, pixels + i + 3 * lanes));
    }
    for (; i < end; i += lanes)
        a = a + hn::SumsOf8(hn::LoadU(d, pixels + i));
    return total(d64, (a + b) + (c + e));
}

std::uint64_t countRange(const std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high)
{
    const hn::ScalableTag<std::uint8_t> d;
    const hn::Repartition<std::uint64_t, decltype(d)> d64;
    const std::size_t lanes = hn::Lanes(d);
    const auto first = hn::Set(d, low), span = hn::Set(d, std::uint8_t(high - low)), one = hn::Set(d, 1);
    auto sums = hn::Zero(d64);
    std::size_t i = 0;
    while (i + lanes <= count) {
        // Bytes count up to 255 before they overflow.
        const std::size_t end = std::min(count, i + 255 * lanes);
        auto met = hn::Zero(d);
        for (; i + lanes <= end; i += lanes) {
            const auto v = hn::LoadU(d, pixels + i);
            met = met + hn::IfThenElseZero(inRange(v, first, span), one);
        }
        sums = sums + hn::SumsOf8(met);
    }
    std::uint64_t number = total(d64, sums);
    for (; i < count; ++i)
        number += low <= pixels[i] && pixels[i] <= high;
    return number;
}

// A vector's indices are its first index plus the lane: numbers times first indices, plus the sum of lanes.
IndexSum sumIndices(const std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high)
{
    const hn::ScalableTag<std::uint8_t> d;
    const hn::Repartition<std::uint64_t, decltype(d)> d64;
    const hn::Repartition<std::uint32_t, decltype(d)> d32;
    const std::size_t lanes = hn::Lanes(d);
    const auto first = hn::Set(d, low), span = hn::Set(d, std::uint8_t(high - low)), one = hn::Set(d, 1),
               lane = hn::Iota(d, 0);
    auto numbers = hn::Zero(d64), sums = numbers;
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes) {
        const auto v = hn::LoadU(d, pixels + i);
        const auto in = inRange(v, first, span);
        const auto met = hn::SumsOf8(hn::IfThenElseZero(in, one));
        numbers = numbers + met;
        sums = sums + hn::SumsOf8(hn::IfThenElseZero(in, lane)) +
               hn::MulEven(hn::BitCast(d32, met), hn::Set(d32, std::uint32_t(i)));
    }
    IndexSum found{total(d64, numbers), total(d64, sums)};
    for (; i < count; ++i)
        if (low <= pixels[i] && pixels[i] <= high) {
            ++found.number;
            found.sum += i;
        }
    return found;
}

#endif

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include <cstring>
#include <utility>

namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(sumBytes);
ORMALUX_SIMD_TABLE(countRange);
ORMALUX_SIMD_TABLE(sumIndices);

std::uint64_t sumBytes(const std::uint8_t* pixels, std::size_t count)
{
    return ORMALUX_SIMD_CALL(sumBytes)(pixels, count);
}

std::uint64_t countRange(const std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high)
{
    return ORMALUX_SIMD_CALL(countRange)(pixels, count, low, high);
}

IndexSum sumIndices(const std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high)
{
    return ORMALUX_SIMD_CALL(sumIndices)(pixels, count, low, high);
}

// Eight sets of counters: neighbours are often equal, and a counter cannot be raised twice in a row without
// waiting for its last store.
void countValues(const std::uint8_t* pixels, std::size_t count, std::int64_t* counters)
{
    std::uint32_t sets[8][256] = {};
    std::size_t i = 0;
    for (; i + 8 <= count; i += 8) {
        std::uint64_t eight;
        std::memcpy(&eight, pixels + i, 8);
        // Written out, since a loop that the compiler leaves as one takes twice as long.
        [&]<std::size_t... k>(std::index_sequence<k...>)
        {
            (++sets[k][std::uint8_t(eight >> (8 * k))], ...);
        }
        (std::make_index_sequence<8>());
    }
    for (; i < count; ++i)
        ++sets[0][pixels[i]];
    for (int value = 0; value < 256; ++value)
        for (int k = 0; k < 8; ++k)
            counters[value] += sets[k][value];
}

} // namespace ormalux::kernels
#endif
