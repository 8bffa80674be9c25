#include "image/kernels/ConvolutionKernels.h"

#include <algorithm>
#include <utility>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/NarrowConvolutionKernels.cpp"
#include "platform/Simd.h"

#include "image/kernels/RowBlocks-inl.h"

// A vector of bytes is taken as 16-bit lanes that hold an even column (low byte) and an odd one (high byte);
// sums wrap at 16 bits on the way, which the bias makes good at the end.

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using kernels::NarrowConvolution;
using Source = const std::uint8_t* const*;

#if ORMALUX_PLAIN

void convolveNarrow(const NarrowConvolution& c, Source source, std::uint8_t* out, std::ptrdiff_t stride,
                    std::size_t width, int count)
{
    const auto divided = [&](int value) {
        return c.multiplier ? int((std::uint32_t(value) * c.multiplier) >> (16 + c.shift)) : value;
    };
    const int before = c.size / 2;
    eachPixel(out, stride, width, count, [&](int y, std::ptrdiff_t x) {
        std::uint16_t biased = c.bias;
        for (int row = 0; row < c.size; ++row)
            for (int column = 0; column < c.size; ++column)
                biased = std::uint16_t(biased + (c.taps[column * c.size + row] & 0xffff) *
                                                    source[y + row][x + column - before]);
        const int value = biased - c.bias;
        const int quotient = value < 0 ? -divided(-value) : divided(value);
        return std::clamp(c.up - c.down + quotient, 0, 255);
    });
}

#else

const hn::ScalableTag<std::uint8_t> d8;
const hn::RepartitionToWide<decltype(d8)> d16;
const hn::RepartitionToWide<decltype(d16)> d32;
using V16 = hn::VFromD<decltype(d16)>;

struct Columns
{
    V16 even;
    V16 odd;
};

HWY_INLINE Columns columnsAt(const std::uint8_t* p)
{
    const V16 pairs = hn::BitCast(d16, hn::LoadU(d8, p));
    return {hn::And(pairs, hn::Set(d16, 255)), hn::ShiftRight<8>(pairs)};
}

// Adds a tap's products to the sums of the output rows First to Last; the tap of output row j stands j
// entries before `tap`.
template <int First, int... Rows>
HWY_INLINE void addTap(V16 even, V16 odd, const std::uint32_t* tap, Columns* sums,
                       std::integer_sequence<int, Rows...>)
{
    const auto add = [&](int j) {
        const V16 factor = hn::BitCast(d16, hn::Set(d32, tap[-j]));
        sums[j].even = sums[j].even + even * factor;
        sums[j].odd = sums[j].odd + odd * factor;
    };
    (add(First + Rows), ...);
}

// Adds a source row to the sums of the output rows First to Last. The odd columns at p are the even ones at p
// + 1, so every second column is loaded.
template <int First, int Last>
HWY_INLINE void addRow(const std::uint8_t* p, const std::uint32_t* tap, int size, Columns* sums)
{
    constexpr std::make_integer_sequence<int, Last - First + 1> rows{};
    Columns here = columnsAt(p);
    int column = 0;
    for (; column + 2 <= size; column += 2) {
        const Columns next = columnsAt(p + column + 2);
        addTap<First>(here.even, here.odd, tap, sums, rows);
        addTap<First>(here.odd, next.even, tap + size, sums, rows);
        tap += 2 * size;
        here = next;
    }
    if (column < size)
        addTap<First>(here.even, here.odd, tap, sums, rows);
}

// The source rows before the last output row's first one, and those after the first output row's last one.
template <int Count, int... I>
HWY_INLINE void addEnds(const NarrowConvolution& c, Source source, std::ptrdiff_t x, Columns* sums,
                        std::integer_sequence<int, I...>)
{
    (addRow<0, I>(source[I] + x, c.taps + I, c.size, sums), ...);
    (addRow<I + 1, Count - 1>(source[c.size + I] + x, c.taps + c.size + I, c.size, sums), ...);
}

HWY_INLINE V16 divided(const NarrowConvolution& c, V16 value)
{
    if (!c.multiplier)
        return value;
    return hn::ShiftRightSame(hn::MulHigh(value, hn::Set(d16, c.multiplier)), c.shift);
}

HWY_INLINE V16 finished(const NarrowConvolution& c, V16 sum)
{
    const V16 most = hn::Set(d16, 255), up = hn::Set(d16, c.up);
    if (!c.isSigned)
        return hn::Min(hn::SaturatedAdd(divided(c, sum), up), most);
    // One of the two parts is 0.
    const V16 bias = hn::Set(d16, c.bias);
    const V16 above = hn::SaturatedAdd(divided(c, hn::SaturatedSub(sum, bias)), up);
    const V16 below = hn::SaturatedAdd(divided(c, hn::SaturatedSub(bias, sum)), hn::Set(d16, c.down));
    return hn::Min(hn::SaturatedSub(above, below), most);
}

// Count output rows of one block, Count at most the kernel's size.
template <int Count>
HWY_INLINE void convolveRows(const NarrowConvolution& c, Source source, std::ptrdiff_t x, std::uint8_t* out,
                             std::ptrdiff_t stride)
{
    Columns sums[Count];
    for (Columns& sum : sums)
        sum.even = sum.odd = hn::Set(d16, c.bias);
    addEnds<Count>(c, source, x, sums, std::make_integer_sequence<int, Count - 1>());
    for (int row = Count - 1; row < c.size; ++row)
        addRow<0, Count - 1>(source[row] + x, c.taps + row, c.size, sums);
    for (int y = 0; y < Count; ++y) {
        const V16 even = finished(c, sums[y].even), odd = finished(c, sums[y].odd);
        hn::StoreU(hn::BitCast(d8, hn::Or(even, hn::ShiftLeft<8>(odd))), d8, out + y * stride);
    }
}

template <int Count>
void convolveBlocks(const NarrowConvolution& c, Source source, std::uint8_t* out, std::ptrdiff_t stride,
                    std::size_t width, int count)
{
    const std::ptrdiff_t before = c.size / 2;
    eachBlock(out, stride, width, count, [&](std::size_t x, std::uint8_t* to, std::ptrdiff_t step) {
        int y = 0;
        for (; y + Count <= count; y += Count)
            convolveRows<Count>(c, source + y, std::ptrdiff_t(x) - before, to + y * step, step);
        for (; y < count; ++y)
            convolveRows<1>(c, source + y, std::ptrdiff_t(x) - before, to + y * step, step);
    });
}

void convolveNarrow(const NarrowConvolution& c, Source source, std::uint8_t* out, std::ptrdiff_t stride,
                    std::size_t width, int count)
{
    if (c.size >= 4)
        convolveBlocks<4>(c, source, out, stride, width, count);
    else if (c.size == 3)
        convolveBlocks<3>(c, source, out, stride, width, count);
    else
        convolveBlocks<1>(c, source, out, stride, width, count);
}

#endif

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(convolveNarrow);

void convolve(const NarrowConvolution& c, const std::uint8_t* const* source, std::uint8_t* out,
              std::ptrdiff_t stride, std::size_t width, int count)
{
    ORMALUX_SIMD_CALL(convolveNarrow)(c, source, out, stride, width, count);
}

} // namespace ormalux::kernels
#endif
