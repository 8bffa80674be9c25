#include "image/Histogram.h"

#include "image/ImagePart.h"
#include "image/WorkPool.h"
#include "image/kernels/CountKernels.h"

#include <atomic>

namespace ormalux {

LevelCounts countLevels(const ConstGrayView& view)
{
    LevelCounts counts{};
    if (view.empty())
        return counts;
    const std::int64_t total = std::int64_t(view.width) * view.height;
    constexpr std::int64_t pixelsPerNanosecond = 3;
    std::array<std::atomic<std::int64_t>, 256> shared{};
    runBands(Job::HistogramCount, total, JobCost{total / pixelsPerNanosecond}, [&](const Band& band) {
        LevelCounts part{};
        forEachRun(view, band.first, band.end, [&](const std::uint8_t* pixels, std::size_t n) {
            kernels::countValues(pixels, n, part.data());
        });
        for (std::size_t level = 0; level < part.size(); ++level)
            shared[level].fetch_add(part[level], std::memory_order_relaxed);
    });
    for (std::size_t level = 0; level < counts.size(); ++level)
        counts[level] = shared[level].load(std::memory_order_relaxed);
    return counts;
}

} // namespace ormalux
