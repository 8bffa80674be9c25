#include "image/kernels/ConvolutionKernels.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/WideConvolutionKernels.cpp"
#include "platform/Simd.h"

#include "image/kernels/RowBlocks-inl.h"
#include "image/kernels/ByteConvolution-inl.h"

// A vector of bytes is taken as 32-bit lanes of four columns: four vectors of sums, one for every fourth
// column. Masked, a lane holds a pair of pixels two columns apart, which one instruction multiplies and adds.

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using kernels::Quotient;
using kernels::WideConvolution;
using Source = const std::uint8_t* const*;

// The pairs of entries that a row of the kernel has.
inline int pairsOf(int size)
{
    return size / 4 * 2 + std::min(size % 4, 2);
}

#if ORMALUX_PLAIN

inline std::uint32_t entryOf(const WideConvolution& c, int row, int column)
{
    const int at = (column / 4 * 2 + column % 2) * c.size + row, shift = column % 4 >= 2 ? 16 : 0;
    const std::uint32_t low = std::uint32_t(std::int32_t(std::int16_t(c.low[at] >> shift)));
    return c.high ? low + (c.high[at] >> shift << 16) : low;
}

inline std::uint32_t divided(const WideConvolution& c, std::uint32_t sum)
{
    if (c.quotient == Quotient::None)
        return sum;
    if (c.quotient == Quotient::Negate)
        return 0u - sum;
    if (c.quotient == Quotient::Float)
        return std::uint32_t(std::int32_t(float(std::int32_t(sum)) * float(c.reciprocal)));
    return std::uint32_t(std::int32_t(double(std::int32_t(sum)) * c.reciprocal));
}

void convolveWide(const WideConvolution& c, Source source, std::uint8_t* out, std::ptrdiff_t stride,
                  std::size_t width, int count)
{
    const int before = c.size / 2;
    eachPixel(out, stride, width, count, [&](int y, std::ptrdiff_t x) {
        std::uint32_t sum = 0;
        for (int row = 0; row < c.size; ++row)
            for (int column = 0; column < c.size; ++column)
                sum += entryOf(c, row, column) * source[y + row][x + column - before];
        return std::clamp(std::int32_t(divided(c, sum) + std::uint32_t(c.offset)), 0, 255);
    });
}

#else

const hn::ScalableTag<std::uint8_t> d8;
const hn::Repartition<std::int16_t, decltype(d8)> d16;
const hn::Repartition<std::int32_t, decltype(d8)> d32;
const hn::Repartition<std::uint32_t, decltype(d8)> u32;
using V16 = hn::VFromD<decltype(d16)>;
using V32 = hn::VFromD<decltype(d32)>;

// Registers hold the sums of so many output rows.
constexpr int rowsAtATime = HWY_TARGET <= HWY_AVX3_DL ? 4 : 2;

// Every fourth column from the first, second, third and fourth one on.
struct Columns
{
    V32 first, second, third, fourth;
};

// The sums of Count output rows; only indexed by constants, so that they stay in registers.
template <int Count>
struct Sums
{
    Columns of;
    Sums<Count - 1> rest;
};

template <>
struct Sums<0>
{
};

template <int Count>
HWY_INLINE void clear(Sums<Count>& sums)
{
    const V32 zero = hn::Zero(d32);
    sums.of = {zero, zero, zero, zero};
    if constexpr (Count > 1)
        clear(sums.rest);
}

// Makes the sums those of the entries' upper halves.
template <int Count>
HWY_INLINE void lift(Sums<Count>& sums)
{
    Columns& c = sums.of;
    c = {hn::ShiftLeft<16>(c.first), hn::ShiftLeft<16>(c.second), hn::ShiftLeft<16>(c.third),
         hn::ShiftLeft<16>(c.fourth)};
    if constexpr (Count > 1)
        lift(sums.rest);
}

// The pairs that begin in the even bytes from p on, and in the odd ones.
struct Pairs
{
    V16 even;
    V16 odd;
};

HWY_INLINE Pairs pairsAt(const std::uint8_t* p)
{
    const auto four = hn::BitCast(u32, hn::LoadU(d8, p));
    const auto apart = hn::Set(u32, 0x00ff00ff);
    return {hn::BitCast(d16, hn::And(four, apart)),
            hn::BitCast(d16, hn::And(hn::ShiftRight<8>(four), apart))};
}

// Compilers regroup long sums and then run out of registers: they are told that v may have changed.
HWY_INLINE V32 inOrder(V32 v)
{
#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__)
    asm("" : "+v"(v.raw));
#endif
    return v;
}

HWY_INLINE void addProducts(V16 pixels, V16 factors, V32& sum)
{
    V32 unused = sum;
    sum = inOrder(hn::ReorderWidenMulAccumulate(d32, pixels, factors, sum, unused));
}

// Adds a pair's products to the sums of the output rows First to Last; the pair of output row j stands j
// words before `pair`. a to d are the pixels for the four kinds of columns.
template <int First, int Last, int Count>
HWY_INLINE void addPair(V16 a, V16 b, V16 c, V16 d, const std::uint32_t* pair, Sums<Count>& sums)
{
    if constexpr (First <= 0) {
        const V16 factors = hn::BitCast(d16, hn::Set(u32, *pair));
        addProducts(a, factors, sums.of.first);
        addProducts(b, factors, sums.of.second);
        addProducts(c, factors, sums.of.third);
        addProducts(d, factors, sums.of.fourth);
    }
    if constexpr (Last > 0)
        addPair<First - 1, Last - 1>(a, b, c, d, pair - 1, sums.rest);
}

// Adds a source row to the sums of the output rows First to Last.
template <int First, int Last, int Count>
HWY_INLINE void addRow(const std::uint8_t* p, const std::uint32_t* pair, int size, Sums<Count>& sums)
{
    Pairs here = pairsAt(p);
    for (int left = pairsOf(size); left > 0; left -= 2) {
        const Pairs middle = pairsAt(p + 2), next = pairsAt(p + 4);
        addPair<First, Last>(here.even, here.odd, middle.even, middle.odd, pair, sums);
        if (left > 1)
            addPair<First, Last>(here.odd, middle.even, middle.odd, next.even, pair + size, sums);
        pair += 2 * size;
        p += 4;
        here = next;
    }
}

// The source rows before the last output row's first one, and those after the first output row's last one.
template <int Done, int Count>
HWY_INLINE void addEnds(const std::uint32_t* pairs, int size, Source source, std::ptrdiff_t x,
                        Sums<Count>& sums)
{
    if constexpr (Done + 1 < Count) {
        addRow<0, Done>(source[Done] + x, pairs + Done, size, sums);
        addRow<Done + 1, Count - 1>(source[size + Done] + x, pairs + size + Done, size, sums);
        addEnds<Done + 1>(pairs, size, source, x, sums);
    }
}

template <int Count>
HWY_INLINE void addRows(const std::uint32_t* pairs, int size, Source source, std::ptrdiff_t x,
                        Sums<Count>& sums)
{
    addEnds<0>(pairs, size, source, x, sums);
    for (int row = Count - 1; row < size; ++row)
        addRow<0, Count - 1>(source[row] + x, pairs + row, size, sums);
}

HWY_INLINE V32 dividedDouble(const WideConvolution& c, V32 sum)
{
    const hn::Half<decltype(d32)> half;
    const hn::Repartition<double, decltype(d32)> f64;
    const auto reciprocal = hn::Set(f64, c.reciprocal);
    const auto lower = hn::PromoteTo(f64, hn::LowerHalf(half, sum)) * reciprocal;
    const auto upper = hn::PromoteTo(f64, hn::UpperHalf(half, sum)) * reciprocal;
    return hn::Combine(d32, hn::DemoteTo(half, upper), hn::DemoteTo(half, lower));
}

HWY_INLINE V32 divided(const WideConvolution& c, V32 sum)
{
    const hn::Repartition<float, decltype(d32)> f32;
    switch (c.quotient) {
    case Quotient::Negate:
        return hn::Zero(d32) - sum;
    case Quotient::Float:
        return hn::ConvertTo(d32, hn::ConvertTo(f32, sum) * hn::Set(f32, float(c.reciprocal)));
    case Quotient::Double:
        return dividedDouble(c, sum);
    default:
        return sum;
    }
}

HWY_INLINE V32 finished(const WideConvolution& c, V32 sum)
{
    const V32 value = divided(c, sum) + hn::Set(d32, c.offset);
    return hn::Min(hn::Max(value, hn::Zero(d32)), hn::Set(d32, 255));
}

template <int Count>
HWY_INLINE void store(const WideConvolution& c, const Sums<Count>& sums, std::uint8_t* out,
                      std::ptrdiff_t stride)
{
    const V32 front = hn::Or(finished(c, sums.of.first), hn::ShiftLeft<8>(finished(c, sums.of.second)));
    const V32 back = hn::Or(finished(c, sums.of.third), hn::ShiftLeft<8>(finished(c, sums.of.fourth)));
    hn::StoreU(hn::BitCast(d8, hn::Or(front, hn::ShiftLeft<16>(back))), d8, out);
    if constexpr (Count > 1)
        store(c, sums.rest, out + stride, stride);
}

// Count output rows of one block, Count at most the kernel's size.
template <int Count>
HWY_INLINE void convolveRows(const WideConvolution& c, Source source, std::ptrdiff_t x, std::uint8_t* out,
                             std::ptrdiff_t stride)
{
    Sums<Count> sums;
    clear(sums);
    if (c.high) {
        addRows(c.high, c.size, source, x, sums);
        lift(sums);
    }
    addRows(c.low, c.size, source, x, sums);
    store(c, sums, out, stride);
}

void convolveWide(const WideConvolution& c, Source source, std::uint8_t* out, std::ptrdiff_t stride,
                  std::size_t width, int count)
{
#if HWY_TARGET == HWY_AVX3_DL
    if (c.bytes)
        return ByteProducts(c).run(source, out, stride, width, count);
#endif
    const std::ptrdiff_t before = c.size / 2;
    eachBlock(out, stride, width, count, [&](std::size_t x, std::uint8_t* to, std::ptrdiff_t step) {
        int y = 0;
        for (; y + rowsAtATime <= count && rowsAtATime <= c.size; y += rowsAtATime)
            convolveRows<rowsAtATime>(c, source + y, std::ptrdiff_t(x) - before, to + y * step, step);
        for (; y < count; ++y)
            convolveRows<1>(c, source + y, std::ptrdiff_t(x) - before, to + y * step, step);
    });
}

#endif

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(convolveWide);

void convolve(const WideConvolution& c, const std::uint8_t* const* source, std::uint8_t* out,
              std::ptrdiff_t stride, std::size_t width, int count)
{
    ORMALUX_SIMD_CALL(convolveWide)(c, source, out, stride, width, count);
}

} // namespace ormalux::kernels
#endif
