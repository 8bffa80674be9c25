#include "image/kernels/ConvolutionKernels.h"

#include <algorithm>

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

// Registers hold the sums of so many output rows.
constexpr int rowsAtATime = 4;

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

// Compilers regroup long sums and then run out of registers: they are told that v may have changed.
HWY_INLINE V16 inOrder(V16 v)
{
#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__)
    asm("" : "+v"(v.raw));
#endif
    return v;
}

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
HWY_INLINE void clear(Sums<Count>& sums, V16 bias)
{
    sums.of = {bias, bias};
    if constexpr (Count > 1)
        clear(sums.rest, bias);
}

// Adds a tap's products to the sums of the output rows First to Last; the tap of output row j stands j words
// before `tap`.
template <int First, int Last, int Count>
HWY_INLINE void addTap(V16 even, V16 odd, const std::uint32_t* tap, Sums<Count>& sums)
{
    if constexpr (First <= 0) {
        const V16 factor = hn::BitCast(d16, hn::Set(d32, *tap));
        sums.of.even = inOrder(sums.of.even + even * factor);
        sums.of.odd = inOrder(sums.of.odd + odd * factor);
    }
    if constexpr (Last > 0)
        addTap<First - 1, Last - 1>(even, odd, tap - 1, sums.rest);
}

// Adds a source row to the sums of the output rows First to Last. The odd columns at p are the even ones at p
// + 1, so every second column is loaded.
template <int First, int Last, int Count>
HWY_INLINE void addRow(const std::uint8_t* p, const std::uint32_t* tap, int size, Sums<Count>& sums)
{
    Columns here = columnsAt(p);
    int column = 0;
    for (; column + 2 <= size; column += 2) {
        const Columns next = columnsAt(p + column + 2);
        addTap<First, Last>(here.even, here.odd, tap, sums);
        addTap<First, Last>(here.odd, next.even, tap + size, sums);
        tap += 2 * size;
        here = next;
    }
    if (column < size)
        addTap<First, Last>(here.even, here.odd, tap, sums);
}

// The source rows before the last output row's first one, and those after the first output row's last one.
template <int Done, int Count>
HWY_INLINE void addEnds(const NarrowConvolution& c, Source source, std::ptrdiff_t x, Sums<Count>& sums)
{
    if constexpr (Done + 1 < Count) {
        addRow<0, Done>(source[Done] + x, c.taps + Done, c.size, sums);
        const int row = c.size + Done;
        addRow<Done + 1, Count - 1>(source[row] + x, c.taps + row, c.size, sums);
        addEnds<Done + 1>(c, source, x, sums);
    }
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

template <int Count>
HWY_INLINE void store(const NarrowConvolution& c, const Sums<Count>& sums, std::uint8_t* out,
                      std::ptrdiff_t stride)
{
    const V16 even = finished(c, sums.of.even), odd = finished(c, sums.of.odd);
    hn::StoreU(hn::BitCast(d8, hn::Or(even, hn::ShiftLeft<8>(odd))), d8, out);
    if constexpr (Count > 1)
        store(c, sums.rest, out + stride, stride);
}

// Count output rows of one block, Count at most the kernel's size.
template <int Count>
HWY_INLINE void convolveRows(const NarrowConvolution& c, Source source, std::ptrdiff_t x, std::uint8_t* out,
                             std::ptrdiff_t stride)
{
    Sums<Count> sums;
    clear(sums, hn::Set(d16, c.bias));
    addEnds<0>(c, source, x, sums);
    for (int row = Count - 1; row < c.size; ++row)
        addRow<0, Count - 1>(source[row] + x, c.taps + row, c.size, sums);
    store(c, sums, out, stride);
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
    if (c.size >= rowsAtATime)
        convolveBlocks<rowsAtATime>(c, source, out, stride, width, count);
    else if (c.size >= 3)
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
