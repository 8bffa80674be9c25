#include "measure/kernels/OutlineKernels.h"

#include <algorithm>
#include <bit>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "measure/kernels/OutlineKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
using kernels::BlobRun;
using kernels::DiagonalRow;
using kernels::OutlineRow;

namespace {

// The row one pixel further right, or left: bit x holds what stands left, or right, of pixel x.
HWY_INLINE std::uint64_t leftOf(const std::uint64_t* row, std::size_t w)
{
    return row[w] << 1 | (w > 0 ? row[w - 1] >> 63 : 0);
}
HWY_INLINE std::uint64_t rightOf(const std::uint64_t* row, std::size_t w, std::size_t words)
{
    return row[w] >> 1 | (w + 1 < words ? row[w + 1] << 63 : 0);
}

/// Finds the blobs of pixels of a row that are asked for from left to right.
class BlobCursor
{
public:
    explicit BlobCursor(const BlobRun* runs) : m_run(runs) {}
    HWY_INLINE std::uint32_t at(std::int32_t x)
    {
        while (m_run->end <= x)
            ++m_run;
        return m_run->blob;
    }

private:
    const BlobRun* m_run;
};

// The pairs of touching pixels without those of two blobs.
template <int Step>
HWY_INLINE std::uint64_t ofOneBlob(std::uint64_t pairs, std::int32_t column, BlobCursor& upper,
                                   BlobCursor& lower)
{
    std::uint64_t kept = 0;
    for (; pairs != 0; pairs &= pairs - 1) {
        const std::int32_t x = column + std::countr_zero(pairs);
        if (upper.at(x) == lower.at(x + Step))
            kept |= pairs & (0 - pairs);
    }
    return kept;
}

/// How many of four bits are set, bit by bit in binary digits.
struct Four
{
    std::uint64_t ones, twos, fours;

    HWY_INLINE Four(std::uint64_t a, std::uint64_t b, std::uint64_t c, std::uint64_t d)
    {
        const std::uint64_t ab = a ^ b, cd = c ^ d, carryAb = a & b, carryCd = c & d, carry = ab & cd;
        ones = ab ^ cd;
        twos = carryAb ^ carryCd ^ carry;
        fours = carryAb & carryCd;
    }
};

HWY_INLINE std::uint32_t countBits(const std::uint64_t* row, std::size_t first, std::size_t last,
                                   std::uint64_t firstMask, std::uint64_t lastMask)
{
    if (first == last)
        return std::uint32_t(std::popcount(row[first] & firstMask & lastMask));
    int bits = std::popcount(row[first] & firstMask) + std::popcount(row[last] & lastMask);
    for (std::size_t w = first + 1; w < last; ++w)
        bits += std::popcount(row[w]);
    return std::uint32_t(bits);
}

HWY_INLINE std::uint64_t sumOf(const std::uint8_t* pixels, std::size_t count)
{
    std::uint64_t sum = 0;
    std::size_t x = 0;
#if !ORMALUX_PLAIN
    const hn::ScalableTag<std::uint8_t> d;
    const hn::Repartition<std::uint64_t, decltype(d)> d64;
    if (count >= hn::Lanes(d)) {
        auto sums = hn::Zero(d64);
        for (; x + hn::Lanes(d) <= count; x += hn::Lanes(d))
            sums = hn::Add(sums, hn::SumsOf8(hn::LoadU(d, pixels + x)));
        sum = hn::GetLane(hn::SumOfLanes(d64, sums));
    }
#endif
    for (; x < count; ++x)
        sum += pixels[x];
    return sum;
}

} // namespace

void contourRow(const std::uint64_t* above, const std::uint64_t* row, const std::uint64_t* below,
                std::uint64_t* contour, std::size_t words)
{
    for (std::size_t w = 0; w < words; ++w)
        contour[w] = row[w] & ~(leftOf(row, w) & rightOf(row, w, words) & above[w] & below[w]);
}

void diagonalRow(const std::uint64_t* objects, const std::uint64_t* objectsBelow,
                 const std::uint64_t* contour, const std::uint64_t* contourBelow, const BlobRun* runs,
                 const BlobRun* runsBelow, bool sharedCorners, const DiagonalRow& out, std::size_t words)
{
    // Both kinds of pair are asked for in turn, word by word, so each has cursors of its own.
    BlobCursor fallUpper(runs), fallLower(runsBelow), riseUpper(runs), riseLower(runsBelow);
    for (std::size_t w = 0; w < words; ++w) {
        out.falling[w] = out.rising[w] = 0;
        if (contour[w] == 0)
            continue;
        const std::uint64_t falling = contour[w] & rightOf(contourBelow, w, words);
        const std::uint64_t rising = contour[w] & leftOf(contourBelow, w);
        out.falling[w] = falling;
        out.rising[w] = rising;
        if (sharedCorners || (falling | rising) == 0)
            continue;
        const std::uint64_t fallAlone = falling & ~(rightOf(objects, w, words) | objectsBelow[w]);
        const std::uint64_t riseAlone = rising & ~(leftOf(objects, w) | objectsBelow[w]);
        const std::int32_t column = std::int32_t(w * 64);
        out.falling[w] ^= fallAlone ^ ofOneBlob<1>(fallAlone, column, fallUpper, fallLower);
        out.rising[w] ^= riseAlone ^ ofOneBlob<-1>(riseAlone, column, riseUpper, riseLower);
    }
}

void outlineRow(const std::uint64_t* contourAbove, const std::uint64_t* contour,
                const std::uint64_t* contourBelow, const DiagonalRow& above, const DiagonalRow& own,
                const OutlineRow& out, std::size_t words)
{
    for (std::size_t w = 0; w < words; ++w) {
        const std::uint64_t row = contour[w];
        if (row == 0) {
            out.straight[w] = out.diagonal[w] = out.mixed[w] = 0;
            continue;
        }
        const Four beside(leftOf(contour, w), rightOf(contour, w, words), contourAbove[w], contourBelow[w]);
        const Four corners(own.falling[w], own.rising[w], leftOf(above.falling, w),
                           rightOf(above.rising, w, words));
        const std::uint64_t atMostOne = row & ~(beside.twos | beside.fours);
        const std::uint64_t three = corners.twos & corners.ones;
        out.straight[w] = row & beside.twos & ~(corners.fours | three);
        out.diagonal[w] = atMostOne & ((~beside.ones & corners.twos & ~corners.ones) | (beside.ones & three));
        out.mixed[w] = atMostOne & beside.ones & (corners.ones ^ corners.twos);
    }
}

void measureRuns(const std::uint8_t* pixels, const OutlineRow& outline, const BlobRun* runs,
                 std::size_t count, kernels::RunMeasure* measures)
{
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t begin = std::size_t(runs[i].begin), end = std::size_t(runs[i].end);
        const std::size_t first = begin / 64, last = (end - 1) / 64;
        const std::uint64_t firstMask = ~std::uint64_t(0) << begin % 64;
        const std::uint64_t lastMask = ~std::uint64_t(0) >> (63 - (end - 1) % 64);
        measures[i] = {sumOf(pixels + begin, end - begin),
                       countBits(outline.straight, first, last, firstMask, lastMask),
                       countBits(outline.diagonal, first, last, firstMask, lastMask),
                       countBits(outline.mixed, first, last, firstMask, lastMask)};
    }
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(contourRow);
ORMALUX_SIMD_TABLE(diagonalRow);
ORMALUX_SIMD_TABLE(outlineRow);
ORMALUX_SIMD_TABLE(measureRuns);

void contourRow(const std::uint64_t* above, const std::uint64_t* row, const std::uint64_t* below,
                std::uint64_t* contour, std::size_t words)
{
    ORMALUX_SIMD_CALL(contourRow)(above, row, below, contour, words);
}

void diagonalRow(const std::uint64_t* objects, const std::uint64_t* objectsBelow,
                 const std::uint64_t* contour, const std::uint64_t* contourBelow, const BlobRun* runs,
                 const BlobRun* runsBelow, bool sharedCorners, const DiagonalRow& out, std::size_t words)
{
    ORMALUX_SIMD_CALL(diagonalRow)
    (objects, objectsBelow, contour, contourBelow, runs, runsBelow, sharedCorners, out, words);
}

void outlineRow(const std::uint64_t* contourAbove, const std::uint64_t* contour,
                const std::uint64_t* contourBelow, const DiagonalRow& above, const DiagonalRow& own,
                const OutlineRow& out, std::size_t words)
{
    ORMALUX_SIMD_CALL(outlineRow)(contourAbove, contour, contourBelow, above, own, out, words);
}

void measureRuns(const std::uint8_t* pixels, const OutlineRow& outline, const BlobRun* runs,
                 std::size_t count, RunMeasure* measures)
{
    ORMALUX_SIMD_CALL(measureRuns)(pixels, outline, runs, count, measures);
}

} // namespace ormalux::kernels
#endif
