#include "image/kernels/RiseKernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/RiseKernels.cpp"
#include "platform/Simd.h"

#include <algorithm>
#include <bit>
#include <utility>

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
using kernels::EdgeSum;

// Adds the run of n pixels, spacing bytes apart, that ends at last, if it is an edge.
HWY_INLINE void addRun(const std::uint8_t* last, std::ptrdiff_t spacing, std::ptrdiff_t n, EdgeSum& edges)
{
    const std::uint8_t* first = last - (n - 1) * spacing;
    if (n < 5 || *last - *first <= 2 * n)
        return;
    int sum = 0;
    for (const std::uint8_t* p = first; p != last; p += spacing)
        sum += *p;
    edges.means += (sum + *last) / int(n);
    ++edges.number;
}

#if ORMALUX_PLAIN

HWY_INLINE EdgeSum lineEdges(const std::uint8_t* line, std::ptrdiff_t spacing, std::size_t length)
{
    EdgeSum edges;
    std::ptrdiff_t n = 1;
    for (std::size_t i = 1; i < length; ++i, line += spacing) {
        if (line[spacing] > line[0]) {
            ++n;
            continue;
        }
        addRun(line, spacing, n, edges);
        n = 1;
    }
    addRun(line, spacing, n, edges);
    return edges;
}

EdgeSum rowEdges(const std::uint8_t* row, std::size_t width)
{
    return lineEdges(row, 1, width);
}

EdgeSum columnEdges(const std::uint8_t* top, std::ptrdiff_t stride, std::size_t height, std::size_t width,
                    std::size_t spacing)
{
    EdgeSum edges;
    for (std::size_t x = 0; x < width; x += spacing)
        edges += lineEdges(top + x, stride, height);
    return edges;
}

#else

// Columns whose state is kept at once.
constexpr std::size_t stripe = 1024;

// Bit k says whether pixel k + 1 is greater than pixel k, for k = 0 .. 63.
HWY_INLINE std::uint64_t rises64(const std::uint8_t* row)
{
    const hn::CappedTag<std::uint8_t, 64> d;
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < 64; i += hn::Lanes(d)) {
        std::uint64_t part = 0;
        hn::StoreMaskBits(d, hn::LoadU(d, row + i + 1) > hn::LoadU(d, row + i),
                          reinterpret_cast<std::uint8_t*>(&part));
        bits |= part << i;
    }
    return bits;
}

// The same for the last steps < 64 rises of a row; zeroes above.
HWY_INLINE std::uint64_t lastRises(const std::uint8_t* row, std::size_t steps, bool readBefore)
{
    if (readBefore)
        return rises64(row + steps - 64) >> (64 - steps);
    std::uint64_t bits = 0;
    for (std::size_t k = 0; k < steps; ++k)
        bits |= std::uint64_t(row[k + 1] > row[k]) << k;
    return bits;
}

// Adds the runs whose rises stand in bits, bit 63 being 0; pixels is the one before bit 0.
HWY_INLINE void addRuns(const std::uint8_t* pixels, std::uint64_t bits, EdgeSum& edges)
{
    std::uint64_t fours = bits & bits >> 1 & bits >> 2 & bits >> 3;
    while (fours) {
        const int begin = std::countr_zero(fours);
        const int end = begin + std::countr_one(bits >> begin);
        addRun(pixels + end, 1, end - begin + 1, edges);
        fours &= ~std::uint64_t(0) << end;
    }
}

EdgeSum rowEdges(const std::uint8_t* row, std::size_t width)
{
    EdgeSum edges;
    if (width < 5)
        return edges;
    const std::size_t steps = width - 1;
    std::size_t open = 0; // rises right before i that the run at i continues
    std::size_t i = 0;
    for (; i < steps; i += 64) {
        std::uint64_t bits = steps - i >= 64 ? rises64(row + i) : lastRises(row + i, steps - i, steps >= 64);
        if (open) {
            const int more = std::countr_one(bits);
            open += more;
            if (more == 64)
                continue;
            addRun(row + i + more, 1, std::ptrdiff_t(open) + 1, edges);
            bits &= ~std::uint64_t(0) << more;
        }
        open = std::countl_one(bits);
        if (open)
            bits = open < 64 ? bits << open >> open : 0;
        addRuns(row + i, bits, edges);
    }
    if (open)
        addRun(row + steps, 1, std::ptrdiff_t(open) + 1, edges);
    return edges;
}

// What is known of a stripe of columns: the rises and the first pixel of the run that is open in each.
struct OpenRuns
{
    HWY_ALIGN std::uint8_t rises[stripe] = {};
    HWY_ALIGN std::uint8_t first[stripe] = {};
};

// Takes a row of one vector of columns into their open runs and adds those that end above it, in the columns
// that bits of wanted stand for. above points to those pixels in the picture, the columns spacing apart.
template <class D>
HWY_INLINE void nextRow(D d, hn::Vec<D> last, hn::Vec<D> row, std::uint8_t* rises, std::uint8_t* first,
                        std::uint64_t wanted, const std::uint8_t* above, std::ptrdiff_t stride,
                        std::size_t spacing, EdgeSum& edges)
{
    const auto up = row > last;
    const auto open = hn::Load(d, rises);
    const auto from = hn::Load(d, first);
    const auto n = hn::SaturatedAdd(open, hn::Set(d, 1));
    const auto edge = hn::And(open > hn::Set(d, 3), (last - from) > hn::SaturatedAdd(n, n));
    std::uint64_t ended = 0;
    hn::StoreMaskBits(d, hn::AndNot(up, edge), reinterpret_cast<std::uint8_t*>(&ended));
    for (ended &= wanted; ended; ended &= ended - 1) {
        const int lane = std::countr_zero(ended);
        addRun(above + lane * spacing, stride, std::ptrdiff_t(rises[lane]) + 1, edges);
    }
    hn::Store(hn::IfThenElseZero(up, n), d, rises);
    hn::Store(hn::IfThenElse(up, from, row), d, first);
}

// Every column of a stripe at least one vector wide; the last vector overlaps the one before. The columns
// that count are spacing apart.
EdgeSum denseStripe(const std::uint8_t* top, std::ptrdiff_t stride, std::size_t height, std::size_t width,
                    std::size_t spacing)
{
    const hn::CappedTag<std::uint8_t, 64> d;
    const std::size_t lanes = hn::Lanes(d);
    OpenRuns runs;
    std::uint64_t wanted[stripe / 16] = {};
    for (std::size_t c = 0; c < width; c += spacing) {
        const std::size_t slot = c / lanes;
        wanted[slot] |= std::uint64_t(1) << (c - std::min(slot * lanes, width - lanes));
    }
    for (std::size_t c = 0; c < width; c += lanes)
        hn::Store(hn::LoadU(d, top + std::min(c, width - lanes)), d, runs.first + c);
    EdgeSum edges;
    for (std::size_t y = 1; y <= height; ++y) {
        const std::uint8_t* above = top + std::ptrdiff_t(y - 1) * stride;
        const std::uint8_t* row = y < height ? above + stride : above; // the last row ends every run
        for (std::size_t c = 0; c < width; c += lanes) {
            const std::size_t x = std::min(c, width - lanes);
            nextRow(d, hn::LoadU(d, above + x), hn::LoadU(d, row + x), runs.rises + c, runs.first + c,
                    wanted[c / lanes], above + x, stride, 1, edges);
        }
    }
    return edges;
}

// Few columns, or columns far apart: each row's pixels are put side by side first.
EdgeSum sparseStripe(const std::uint8_t* top, std::ptrdiff_t stride, std::size_t height, std::size_t number,
                     std::size_t spacing)
{
    const hn::CappedTag<std::uint8_t, 64> d;
    HWY_ALIGN std::uint8_t lines[2][stripe] = {};
    std::uint8_t* above = lines[0];
    std::uint8_t* row = lines[1];
    OpenRuns runs;
    for (std::size_t c = 0; c < number; ++c)
        above[c] = runs.first[c] = top[c * spacing];
    EdgeSum edges;
    for (std::size_t y = 1; y <= height; ++y) {
        const std::uint8_t* from = top + std::ptrdiff_t(y - 1) * stride;
        if (y < height)
            for (std::size_t c = 0; c < number; ++c)
                row[c] = from[stride + std::ptrdiff_t(c * spacing)];
        else
            row = above; // the last row ends every run
        for (std::size_t c = 0; c < number; c += hn::Lanes(d))
            nextRow(d, hn::Load(d, above + c), hn::Load(d, row + c), runs.rises + c, runs.first + c,
                    ~std::uint64_t(0), from + c * spacing, stride, spacing, edges);
        std::swap(above, row);
    }
    return edges;
}

EdgeSum columnEdges(const std::uint8_t* top, std::ptrdiff_t stride, std::size_t height, std::size_t width,
                    std::size_t spacing)
{
    // With columns further apart, putting them side by side is cheaper than looking at all.
    constexpr std::size_t sparse = 16;
    EdgeSum edges;
    if (height < 5)
        return edges;
    const std::size_t most = spacing < sparse ? stripe / spacing * spacing : stripe * spacing;
    for (std::size_t x = 0; x < width; x += most) {
        const std::size_t w = std::min(most, width - x);
        const bool dense = spacing < sparse && w >= hn::Lanes(hn::CappedTag<std::uint8_t, 64>());
        edges += dense ? denseStripe(top + x, stride, height, w, spacing)
                       : sparseStripe(top + x, stride, height, (w + spacing - 1) / spacing, spacing);
    }
    return edges;
}

#endif

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(rowEdges);
ORMALUX_SIMD_TABLE(columnEdges);

EdgeSum rowEdges(const std::uint8_t* row, std::size_t width)
{
    return ORMALUX_SIMD_CALL(rowEdges)(row, width);
}

EdgeSum columnEdges(const std::uint8_t* top, std::ptrdiff_t stride, std::size_t height, std::size_t width,
                    std::size_t spacing)
{
    return ORMALUX_SIMD_CALL(columnEdges)(top, stride, height, width, spacing);
}

} // namespace ormalux::kernels
#endif
