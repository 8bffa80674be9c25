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

// The number of bits set in both; words is a multiple of 8.
HWY_INLINE std::int32_t common(const std::uint64_t* a, const std::uint64_t* b, std::size_t words)
{
    const hn::ScalableTag<std::uint64_t> d;
    auto sum = hn::Zero(d);
    for (std::size_t i = 0; i < words; i += 8)
        sum = hn::Add(sum, hn::PopulationCount(hn::And(hn::LoadU(d, a + i), hn::LoadU(d, b + i))));
    return std::int32_t(hn::GetLane(hn::SumOfLanes(d, sum)));
}

#else

HWY_INLINE std::int32_t common(const std::uint64_t* a, const std::uint64_t* b, std::size_t words)
{
    std::int32_t sum = 0;
    for (std::size_t i = 0; i < words; ++i)
        sum += std::popcount(a[i] & b[i]);
    return sum;
}

#endif

HWY_INLINE std::int32_t commonOfRows(const std::uint64_t* a, std::size_t strideA, const std::uint64_t* b,
                                     std::size_t strideB, std::size_t rows)
{
    const std::size_t words = strideA < strideB ? strideA : strideB;
    std::int32_t sum = 0;
    for (std::size_t y = 0; y < rows; ++y)
        for (std::size_t i = 0; i < words; ++i)
            sum += std::popcount(a[y * strideA + i] & b[y * strideB + i]);
    return sum;
}

} // namespace

void countHits(const BitPlanes& box, const BitPlanes* templates, std::size_t count, Hits* hits)
{
    for (std::size_t i = 0; i < count; ++i) {
        const BitPlanes& t = templates[i];
        if (t.stride == box.stride) {
            const std::size_t words =
                (t.rows * t.stride + kernels::planeStep - 1) / kernels::planeStep * kernels::planeStep;
            hits[i] = {common(box.white, t.white, words), common(box.black, t.black, words)};
        } else {
            hits[i] = {commonOfRows(box.white, box.stride, t.white, t.stride, t.rows),
                       commonOfRows(box.black, box.stride, t.black, t.stride, t.rows)};
        }
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
