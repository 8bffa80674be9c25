#include "match/kernels/ScoreKernels.h"

#include <bit>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "match/kernels/ScoreKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
using kernels::BitPlanes;
using kernels::Hits;

namespace {

#if HWY_TARGET == HWY_AVX3_DL

// Planes of the same stride; words is a multiple of 8.
HWY_INLINE Hits commonBits(const BitPlanes& a, const BitPlanes& b, std::size_t words)
{
    const hn::ScalableTag<std::uint64_t> d;
    auto white = hn::Zero(d);
    auto black = hn::Zero(d);
    for (std::size_t i = 0; i < words; i += 8) {
        white = hn::Add(white,
                        hn::PopulationCount(hn::And(hn::LoadU(d, a.white + i), hn::LoadU(d, b.white + i))));
        black = hn::Add(black,
                        hn::PopulationCount(hn::And(hn::LoadU(d, a.black + i), hn::LoadU(d, b.black + i))));
    }
    // Both counts in one lane. The library's sum of all lanes is spread over all lanes again, which takes as
    // long as counting.
    const hn::Half<decltype(d)> d4;
    const hn::Half<decltype(d4)> d2;
    const auto eight = hn::Add(white, hn::ShiftLeft<32>(black));
    const auto four = hn::Add(hn::LowerHalf(d4, eight), hn::UpperHalf(d4, eight));
    const auto two = hn::Add(hn::LowerHalf(d2, four), hn::UpperHalf(d2, four));
    const std::uint64_t both = hn::GetLane(hn::Add(two, hn::Shuffle01(two)));
    return {std::int32_t(both), std::int32_t(both >> 32)};
}

#else

HWY_INLINE Hits commonBits(const BitPlanes& a, const BitPlanes& b, std::size_t words)
{
    Hits hits{0, 0};
    for (std::size_t i = 0; i < words; ++i) {
        hits.white += std::popcount(a.white[i] & b.white[i]);
        hits.black += std::popcount(a.black[i] & b.black[i]);
    }
    return hits;
}

#endif

HWY_INLINE std::int32_t commonOfRows(const std::uint64_t* a, std::size_t strideA, const std::uint64_t* b,
                                     std::size_t strideB, std::size_t rows)
{
    const std::size_t wordsA = strideA / 8, wordsB = strideB / 8, words = wordsA < wordsB ? wordsA : wordsB;
    std::int32_t sum = 0;
    for (std::size_t y = 0; y < rows; ++y)
        for (std::size_t i = 0; i < words; ++i)
            sum += std::popcount(a[y * wordsA + i] & b[y * wordsB + i]);
    return sum;
}

} // namespace

void countHits(const BitPlanes& box, const BitPlanes* templates, std::size_t count, Hits* hits)
{
    for (std::size_t i = 0; i < count; ++i) {
        const BitPlanes& t = templates[i];
        if (t.stride == box.stride)
            hits[i] = commonBits(box, t, t.words);
        else
            hits[i] = {commonOfRows(box.white, box.stride, t.white, t.stride, t.rows),
                       commonOfRows(box.black, box.stride, t.black, t.stride, t.rows)};
    }
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(countHits);

void countHits(const BitPlanes& box, const BitPlanes* templates, std::size_t count, Hits* hits)
{
    ORMALUX_SIMD_CALL(countHits)(box, templates, count, hits);
}

} // namespace ormalux::kernels
#endif
