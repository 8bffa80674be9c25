#include "image/kernels/RiseKernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/RiseKernels.cpp"
#include "platform/Simd.h"

#include <hwy/cache_control.h>

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
using kernels::EdgeSum;

// quotients[n] is 2^24 / n, rounded up: multiplying by it and dropping 24 bits divides sums below 2^16
// exactly for every n that an edge can have. A division would be a quarter of the time.
inline constexpr auto quotients = [] {
    std::array<std::uint32_t, 257> table{};
    for (std::uint32_t n = 1; n < table.size(); ++n)
        table[n] = ((1u << 24) + n - 1) / n;
    return table;
}();

// Adds the run of n >= 5 pixels, spacing bytes apart, that ends at last, if it is an edge. Lengths and edges
// are as good as random to the branch predictor, so up to eight pixels are summed without asking.
HWY_INLINE void addRun(const std::uint8_t* last, std::ptrdiff_t spacing, int n, EdgeSum& edges)
{
    int sum = last[0] + last[-spacing] + last[-2 * spacing] + last[-3 * spacing] + last[-4 * spacing];
    for (int k = 5; k < 8; ++k) {
        const int in = -int(k < n);
        sum += last[-(k & in) * spacing] & in;
    }
    for (int k = 8; k < n; ++k)
        sum += last[-k * spacing];
    const int edge = last[0] - last[-(n - 1) * spacing] > 2 * n;
    edges.means += std::int64_t(std::uint64_t(sum) * quotients[std::size_t(n)] >> 24) & -edge;
    edges.number += edge;
}

#if ORMALUX_PLAIN

HWY_INLINE EdgeSum lineEdges(const std::uint8_t* line, std::ptrdiff_t spacing, std::size_t length)
{
    EdgeSum edges;
    int n = 1;
    for (std::size_t i = 1; i <= length; ++i, line += spacing) {
        if (i < length && line[spacing] > line[0]) {
            ++n;
            continue;
        }
        if (n >= 5)
            addRun(line, spacing, n, edges);
        n = 1;
    }
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

// Bit k says whether below[k] is greater than above[k], for k = 0 .. 63.
HWY_INLINE std::uint64_t rises64(const std::uint8_t* above, const std::uint8_t* below)
{
    const hn::CappedTag<std::uint8_t, 64> d;
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < 64; i += hn::Lanes(d)) {
        std::uint64_t part = 0;
        hn::StoreMaskBits(d, hn::LoadU(d, below + i) > hn::LoadU(d, above + i),
                          reinterpret_cast<std::uint8_t*>(&part));
        bits |= part << i;
    }
    return bits;
}

// Writes first plus the place of each set bit, and returns how many. Two are written always, whether there
// are so many or not: their number is as good as random, and a wrong guess costs more.
HWY_INLINE std::size_t listBits(std::uint64_t bits, std::size_t first, std::uint16_t* list)
{
    const auto number = std::size_t(hwy::PopCount(bits));
    const auto write = [&] {
        // The top bit only gives the search an end: it is the lowest of none, or of itself.
        *list++ = std::uint16_t(first + hwy::Num0BitsBelowLS1Bit_Nonzero64(bits | std::uint64_t(1) << 63));
        bits &= bits - 1;
    };
    write();
    write();
    while (bits)
        [[unlikely]] write();
    return number;
}

// Bit k says whether row[k + 1] is greater than row[k], for the last steps < 64 of a row; zeroes above.
HWY_INLINE std::uint64_t lastRises(const std::uint8_t* row, std::size_t steps, bool readBefore)
{
    if (readBefore)
        return rises64(row + steps - 64, row + steps - 63) >> (64 - steps);
    std::uint64_t bits = 0;
    for (std::size_t k = 0; k < steps; ++k)
        bits |= std::uint64_t(row[k + 1] > row[k]) << k;
    return bits;
}

// Where runs of at least 5 pixels begin in a piece of a row, bit k of word w standing for pixel 64 x w + k.
// Words that follow the piece say how its last runs go on: a run has at most 255 rises.
struct RowPiece
{
    static constexpr std::size_t words = 64;
    static constexpr std::size_t ahead = 6;
    static constexpr std::size_t mostInWord = 64 / 5 + 1;

    std::uint64_t rises[words + ahead];
    std::uint16_t begins[words * mostInWord + 2];
    std::size_t runs;
};

// Sets the rises of the piece at row; steps are left in the row, and pixels may be read that many bytes
// before.
HWY_INLINE void findRises(const std::uint8_t* row, std::size_t steps, bool readBefore, RowPiece& piece)
{
    std::size_t w = 0;
    for (; w < RowPiece::words + RowPiece::ahead && steps >= 64; ++w, row += 64, steps -= 64)
        piece.rises[w] = rises64(row, row + 1);
    if (w < RowPiece::words + RowPiece::ahead && steps > 0)
        piece.rises[w++] = lastRises(row, steps, readBefore);
    for (; w < RowPiece::words + RowPiece::ahead; ++w)
        piece.rises[w] = 0;
}

HWY_INLINE void findBegins(std::uint64_t before, std::size_t words, RowPiece& piece)
{
    piece.runs = 0;
    for (std::size_t w = 0; w < words; ++w) {
        const std::uint64_t bits = piece.rises[w], next = piece.rises[w + 1];
        const std::uint64_t fours =
            bits & (bits >> 1 | next << 63) & (bits >> 2 | next << 62) & (bits >> 3 | next << 61);
        piece.runs += listBits(fours & ~(bits << 1 | before >> 63), 64 * w, piece.begins + piece.runs);
        before = bits;
    }
}

// The rises in a row from bit begin on.
HWY_INLINE int risesFrom(const std::uint64_t* rises, std::size_t begin)
{
    const std::size_t shift = begin % 64;
    for (int found = 0;; found += 64) {
        const std::uint64_t* word = rises + (begin + std::size_t(found)) / 64;
        const int more = std::countr_one(word[0] >> shift | word[1] << 1 << (63 - shift));
        if (more < 64) [[likely]]
            return found + more;
    }
}

EdgeSum rowEdges(const std::uint8_t* row, std::size_t width)
{
    EdgeSum edges;
    if (width < 5)
        return edges;
    const std::size_t steps = width - 1;
    RowPiece piece;
    std::uint64_t before = 0;
    for (std::size_t x = 0; x < steps; x += 64 * RowPiece::words) {
        findRises(row + x, steps - x, steps >= 64, piece);
        findBegins(before, std::min(RowPiece::words, (steps - x + 63) / 64), piece);
        before = piece.rises[RowPiece::words - 1];
        for (std::size_t i = 0; i < piece.runs; ++i) {
            const int n = risesFrom(piece.rises, piece.begins[i]) + 1;
            addRun(row + x + piece.begins[i] + n - 1, 1, n, edges);
        }
    }
    return edges;
}

// Columns side by side, at most 4096 of them, in blocks of 64; the last block may overlap the one before.
struct Stripe
{
    static constexpr std::size_t columns = 4096;
    static constexpr std::size_t blocks = columns / 64;
    static constexpr std::size_t rows = 9;

    const std::uint8_t* top; // in the picture
    std::ptrdiff_t stride;
    std::size_t height;
    std::size_t width;   // columns side by side
    std::size_t spacing; // of those columns in the picture

    std::uint64_t wanted[blocks] = {};      // the columns of each block that count
    std::uint64_t rises[rows][blocks] = {}; // of the last rows, row y in y % rows
    std::uint16_t begins[columns + 2];

    std::size_t blockAt(std::size_t b) const
    {
        return std::min(64 * b, std::max<std::size_t>(width, 64) - 64);
    }
};

// Adds the listed runs, whose fifth pixels stand in row y.
HWY_INLINE void addListed(const Stripe& s, std::size_t runs, std::size_t y, EdgeSum& edges)
{
    // The fifth pixel and the four that follow it, where the last row stands for what would be below it.
    const std::uint8_t* lines[5];
    for (std::size_t k = 0; k < 5; ++k)
        lines[k] = s.top + std::ptrdiff_t(std::min(y + k, s.height - 1)) * s.stride;
    for (std::size_t i = 0; i < runs; ++i) {
        const std::size_t x = s.begins[i] * s.spacing;
        int n = 5, more = 1;
        for (int k = 1; k < 5; ++k) {
            more &= lines[k][x] > lines[k - 1][x];
            n += more;
        }
        const std::uint8_t* last = lines[0] + std::ptrdiff_t(x) + (n - 5) * s.stride;
        if (more) [[unlikely]]
            for (; y - 4 + std::size_t(n) < s.height && last[s.stride] > last[0]; last += s.stride)
                ++n;
        addRun(last, s.stride, n, edges);
    }
}

// Takes row y into the stripe, whose pixels stand at row and those of the row before at above, and adds the
// runs whose fifth pixels stand four rows higher: by then all the rows that they need have been read in
// order. Rows from the height on have no pixels and no rises.
HWY_INLINE void nextRow(Stripe& s, std::size_t y, const std::uint8_t* above, const std::uint8_t* row,
                        EdgeSum& edges)
{
    const auto of = [&](std::size_t back) { return s.rises[(y + Stripe::rows - back) % Stripe::rows]; };
    std::uint64_t* now = of(0);
    const std::uint64_t *r0 = of(4), *r1 = of(5), *r2 = of(6), *r3 = of(7), *before = of(8);
    std::size_t runs = 0;
    for (std::size_t b = 0; 64 * b < s.width; ++b) {
        const std::size_t x = s.blockAt(b);
        now[b] = y < s.height ? rises64(above + x, row + x) : 0;
        runs += listBits(r0[b] & r1[b] & r2[b] & r3[b] & ~before[b] & s.wanted[b], x, s.begins + runs);
    }
    if (runs > 0)
        addListed(s, runs, y - 4, edges);
}

// Every column of a stripe at least one block wide, of which those count that are step apart.
EdgeSum denseStripe(Stripe& s, std::size_t step)
{
    EdgeSum edges;
    for (std::size_t c = 0; c < s.width; c += step)
        s.wanted[c / 64] |= std::uint64_t(1) << (c - s.blockAt(c / 64));
    for (std::size_t y = 1; y < s.height + 4; ++y) {
        const std::uint8_t* row = s.top + std::ptrdiff_t(std::min(y, s.height - 1)) * s.stride;
        // Short pieces of far rows are no stream that the processor would see by itself.
        if (y + 4 < s.height)
            for (std::size_t x = 0; x < s.width + 63; x += 64)
                hwy::Prefetch(row + 4 * s.stride + x);
        nextRow(s, y, row - s.stride, row, edges);
    }
    return edges;
}

// Few columns, or columns far apart: each row's pixels are put side by side first.
EdgeSum sparseStripe(Stripe& s)
{
    EdgeSum edges;
    std::uint8_t lines[2][Stripe::columns] = {};
    std::fill_n(s.wanted, Stripe::blocks, ~std::uint64_t(0));
    const std::size_t width = std::exchange(s.width, (s.width + 63) / 64 * 64);
    for (std::size_t y = 0; y < s.height + 4; ++y) {
        const std::uint8_t* from = s.top + std::ptrdiff_t(std::min(y, s.height - 1)) * s.stride;
        std::uint8_t* row = lines[y % 2];
        for (std::size_t c = 0; c < width; ++c)
            row[c] = from[c * s.spacing];
        if (y > 0)
            nextRow(s, y, lines[(y + 1) % 2], row, edges);
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
    const std::size_t most =
        spacing < sparse ? Stripe::columns / spacing * spacing : Stripe::columns * spacing;
    for (std::size_t x = 0; x < width; x += most) {
        const std::size_t w = std::min(most, width - x);
        if (spacing < sparse && w >= 64) {
            Stripe stripe{top + x, stride, height, w, 1};
            edges += denseStripe(stripe, spacing);
        } else {
            Stripe stripe{top + x, stride, height, (w + spacing - 1) / spacing, spacing};
            edges += sparseStripe(stripe);
        }
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
