#include "image/kernels/NamedFilterKernels.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/NamedFilterKernels.cpp"
#include "platform/Simd.h"

#include "image/kernels/RowBlocks-inl.h"

// A vector of bytes is taken as 16-bit lanes that hold an even column (low byte) and an odd one (high byte).
// Even and odd sums are formed apart, and two results join by a shift and an or: nothing is unpacked or
// packed.
//
// Each block walks down its rows, so that a source row is loaded and summed along once for all output rows.

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using Source = const std::uint8_t* const*;

// A compiler makes two instructions of a multiplication by a factor that it knows.
const volatile std::uint16_t seven = 7, nine = 9;

// What becomes of the sum of a neighbourhood and its centre. Divisions by multiplication are exact over the
// whole range of the sum: m = ceil(2^s / d) adds sum x (m d - 2^s) / (d 2^s), which is less than 1 / d.

struct Blur // sums up to 2295
{
    static constexpr bool weighted = false;
    static constexpr std::uint16_t factor = 7282;
    static int of(int sum, int) { return sum / 9; }
    template <class D, class V>
    static HWY_INLINE V of(D, V sum, V, V factor)
    {
        return hn::MulHigh(sum, factor);
    }
};

struct Soften // sums up to 2295, and 7 times the centre
{
    static constexpr bool weighted = false;
    static constexpr const volatile std::uint16_t& factor = seven;
    static int of(int sum, int centre) { return (sum + 7 * centre) / 16; }
    template <class D, class V>
    static HWY_INLINE V of(D, V sum, V centre, V factor)
    {
        return hn::ShiftRight<4>(sum + centre * factor);
    }
};

struct Gassian3x3
{
    static constexpr bool weighted = true;
    static constexpr std::uint16_t factor = 0;
    static int of(int sum, int) { return sum / 16; }
    template <class D, class V>
    static HWY_INLINE V of(D, V sum, V, V)
    {
        return hn::ShiftRight<4>(sum);
    }
};

struct Sharpen // up to 3825 before the division
{
    static constexpr bool weighted = false;
    static constexpr std::uint16_t factor = 9363;
    static int of(int sum, int centre) { return std::clamp((16 * centre - sum) / 7, 0, 255); }
    template <class D, class V>
    static HWY_INLINE V of(D d, V sum, V centre, V factor)
    {
        const V above = hn::SaturatedSub(hn::ShiftLeft<4>(centre), sum);
        return hn::Min(hn::MulHigh(above, factor), hn::Set(d, 255));
    }
};

struct Edge
{
    static constexpr bool weighted = false;
    static constexpr const volatile std::uint16_t& factor = nine;
    static int of(int sum, int centre) { return std::clamp(255 - (9 * centre - sum), 0, 255); }
    template <class D, class V>
    static HWY_INLINE V of(D d, V sum, V centre, V factor)
    {
        return hn::SaturatedSub(hn::Set(d, 255), hn::SaturatedSub(centre * factor, sum));
    }
};

struct Laplacian
{
    static constexpr bool weighted = false;
    static constexpr const volatile std::uint16_t& factor = nine;
    static int of(int sum, int centre) { return std::clamp(sum - 9 * centre, 0, 255); }
    template <class D, class V>
    static HWY_INLINE V of(D d, V sum, V centre, V factor)
    {
        return hn::Min(hn::SaturatedSub(sum, centre * factor), hn::Set(d, 255));
    }
};

#if ORMALUX_PLAIN

template <class Filter>
void filter3x3(Source source, std::uint8_t* out, std::ptrdiff_t stride, std::size_t width, int count)
{
    constexpr int middle = Filter::weighted ? 2 : 1;
    const auto along = [&](int y, std::ptrdiff_t x) {
        return source[y][x - 1] + middle * source[y][x] + source[y][x + 1];
    };
    eachPixel(out, stride, width, count, [&](int y, std::ptrdiff_t x) {
        return Filter::of(along(y, x) + middle * along(y + 1, x) + along(y + 2, x), source[y + 1][x]);
    });
}

void gassian5x5(Source source, std::uint8_t* out, std::ptrdiff_t stride, std::size_t width, int count)
{
    eachPixel(out, stride, width, count, [&](int y, std::ptrdiff_t x) {
        const auto along = [&](int row, int outer, int inner, int centre) {
            const std::uint8_t* p = source[y + row] + x;
            return outer * (p[-2] + p[2]) + inner * (p[-1] + p[1]) + centre * p[0];
        };
        return (along(0, 0, 1, 2) + along(1, 1, 3, 4) + along(2, 2, 4, 8) + along(3, 1, 3, 4) +
                along(4, 0, 1, 2)) /
               52;
    });
}

#else

const hn::ScalableTag<std::uint8_t> d8;
const hn::RepartitionToWide<decltype(d8)> d16;
using V8 = hn::VFromD<decltype(d8)>;
using V16 = hn::VFromD<decltype(d16)>;

struct Columns
{
    V16 even;
    V16 odd;
};

HWY_INLINE Columns operator+(const Columns& a, const Columns& b)
{
    return {a.even + b.even, a.odd + b.odd};
}

// Lane i holds columns 2 i and 2 i + 1 from p on.
HWY_INLINE Columns columnsAt(const std::uint8_t* p)
{
    const V16 pairs = hn::BitCast(d16, hn::LoadU(d8, p));
    return {hn::And(pairs, hn::Set(d16, 255)), hn::ShiftRight<8>(pairs)};
}

// Both halves at most 255.
HWY_INLINE void store(const Columns& c, std::uint8_t* out)
{
    hn::StoreU(hn::BitCast(d8, hn::Or(c.even, hn::ShiftLeft<8>(c.odd))), d8, out);
}

// 1 1 1 or 1 2 1 along a row.
template <class Filter>
HWY_INLINE Columns along3(const std::uint8_t* p, Columns& centre)
{
    centre = columnsAt(p);
    const V16 left = hn::And(hn::BitCast(d16, hn::LoadU(d8, p - 1)), hn::Set(d16, 255));
    const V16 right = hn::ShiftRight<8>(hn::BitCast(d16, hn::LoadU(d8, p + 1)));
    const V16 both = centre.even + centre.odd;
    if (Filter::weighted)
        return {both + (centre.even + left), both + (centre.odd + right)};
    return {both + left, both + right};
}

template <class Filter>
HWY_INLINE void filter3x3(Source source, std::uint8_t* out, std::ptrdiff_t stride, std::size_t width,
                          int count)
{
    const V16 factor = hn::Set(d16, Filter::factor);
    const auto finished = [=](const Columns& sum, const Columns& centre) {
        return Columns{Filter::of(d16, sum.even, centre.even, factor),
                       Filter::of(d16, sum.odd, centre.odd, factor)};
    };
    eachBlock(out, stride, width, count, [=](std::size_t x, std::uint8_t* to, std::ptrdiff_t step) {
        Columns centre, next;
        Columns lead = along3<Filter>(source[0] + x, next);
        Columns row = along3<Filter>(source[1] + x, centre);
        if (Filter::weighted)
            lead = lead + row;
        // Two output rows share the sum of the rows between them.
        int y = 0;
        for (; y + 2 <= count; y += 2) {
            const Columns below = along3<Filter>(source[y + 2] + x, next);
            const Columns shared = row + below;
            store(finished(lead + shared, centre), to + y * step);
            row = along3<Filter>(source[y + 3] + x, centre);
            lead = Filter::weighted ? below + row : below;
            store(finished(shared + (Filter::weighted ? lead : row), next), to + (y + 1) * step);
        }
        if (y < count) {
            const Columns below = along3<Filter>(source[y + 2] + x, next);
            store(finished(lead + (row + below), centre), to + y * step);
        }
    });
}

// A row of the 5 x 5 kernel's three kinds.
struct Along5
{
    V16 outer;  // 0 1 2 1 0
    V16 inner;  // 1 3 4 3 1
    V16 middle; // 2 4 8 4 2
};

// From the sums of the two nearest and of the two farther neighbours.
HWY_INLINE Along5 along5(V16 centre, V16 near, V16 far)
{
    const V16 outer = near + (centre + centre);
    const V16 half = far + (outer + outer);
    return {outer, half + near, half + half};
}

HWY_INLINE void along5(const std::uint8_t* p, Along5& even, Along5& odd)
{
    const Columns left = columnsAt(p - 2), centre = columnsAt(p), right = columnsAt(p + 2);
    even = along5(centre.even, left.odd + centre.odd, left.even + right.even);
    odd = along5(centre.odd, centre.even + right.even, left.odd + right.odd);
}

// The sums of the output rows that the source rows so far belong to.
struct Down5
{
    V16 one, two, three, four;

    HWY_INLINE V16 take(const Along5& a)
    {
        const V16 done = four + a.outer;
        four = three + a.inner;
        three = two + a.middle;
        two = one + a.inner;
        one = a.outer;
        return done;
    }
};

void gassian5x5(Source source, std::uint8_t* out, std::ptrdiff_t stride, std::size_t width, int count)
{
    const V16 reciprocal = hn::Set(d16, 40330); // of 52 x 2^5, for sums up to 13260
    eachBlock(out, stride, width, count, [=](std::size_t x, std::uint8_t* to, std::ptrdiff_t step) {
        const V16 zero = hn::Zero(d16);
        Down5 even{zero, zero, zero, zero}, odd{zero, zero, zero, zero};
        for (int y = -4; y < count; ++y) {
            Along5 alongEven, alongOdd;
            along5(source[y + 4] + x, alongEven, alongOdd);
            const V16 evenSum = even.take(alongEven), oddSum = odd.take(alongOdd);
            if (y >= 0)
                store({hn::ShiftRight<5>(hn::MulHigh(evenSum, reciprocal)),
                       hn::ShiftRight<5>(hn::MulHigh(oddSum, reciprocal))},
                      to + y * step);
        }
    });
}

#endif

void sharpen(Source source, std::uint8_t* out, std::ptrdiff_t stride, std::size_t width, int count)
{
    filter3x3<Sharpen>(source, out, stride, width, count);
}

void blur(Source source, std::uint8_t* out, std::ptrdiff_t stride, std::size_t width, int count)
{
    filter3x3<Blur>(source, out, stride, width, count);
}

void soften(Source source, std::uint8_t* out, std::ptrdiff_t stride, std::size_t width, int count)
{
    filter3x3<Soften>(source, out, stride, width, count);
}

void gassian3x3(Source source, std::uint8_t* out, std::ptrdiff_t stride, std::size_t width, int count)
{
    filter3x3<Gassian3x3>(source, out, stride, width, count);
}

void edge(Source source, std::uint8_t* out, std::ptrdiff_t stride, std::size_t width, int count)
{
    filter3x3<Edge>(source, out, stride, width, count);
}

void laplacian(Source source, std::uint8_t* out, std::ptrdiff_t stride, std::size_t width, int count)
{
    filter3x3<Laplacian>(source, out, stride, width, count);
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(sharpen);
ORMALUX_SIMD_TABLE(blur);
ORMALUX_SIMD_TABLE(soften);
ORMALUX_SIMD_TABLE(gassian3x3);
ORMALUX_SIMD_TABLE(gassian5x5);
ORMALUX_SIMD_TABLE(edge);
ORMALUX_SIMD_TABLE(laplacian);

RowFilter namedFilterRows(int index)
{
    static const RowFilter* const all[] = {sharpenVariants,    blurVariants,       softenVariants,
                                           gassian3x3Variants, gassian5x5Variants, nullptr,
                                           edgeVariants,       laplacianVariants};
    return all[index][static_cast<int>(kernelTarget())];
}

} // namespace ormalux::kernels
#endif
