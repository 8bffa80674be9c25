#include "image/GrayStatistics.h"

#include "image/ImagePart.h"
#include "image/WorkPool.h"
#include "image/kernels/CountKernels.h"

#include <algorithm>
#include <atomic>

namespace ormalux {

double grayAverage(const ConstGrayView& view)
{
    if (view.empty())
        return 0;
    const std::int64_t total = std::int64_t(view.width) * view.height;
    constexpr std::int64_t pixelsPerNanosecond = 40;
    // The sum stays far below 2^53, so it is the one that doubles give in any order.
    std::atomic<std::uint64_t> sum{0};
    runBands(Job::GraySum, total, JobCost{total / pixelsPerNanosecond}, [&](const Band& band) {
        std::uint64_t part = 0;
        forEachRun(view, band.first, band.end,
                   [&](const std::uint8_t* pixels, std::size_t n) { part += kernels::sumBytes(pixels, n); });
        sum.fetch_add(part, std::memory_order_relaxed);
    });
    return double(sum.load()) / double(total);
}

std::int64_t countInRange(const ConstGrayView& view, std::uint8_t low, std::uint8_t high)
{
    std::int64_t number = 0;
    if (!view.empty() && low <= high)
        forEachRun(view, 0, std::int64_t(view.width) * view.height,
                   [&](const std::uint8_t* pixels, std::size_t n) {
                       number += std::int64_t(kernels::countRange(pixels, n, low, high));
                   });
    return number;
}

std::optional<POINT> gravityCenter(const ConstGrayView& view, int threshold, std::uint8_t polarity)
{
    if (polarity != 0 && polarity != 255)
        return {};
    const bool bright = polarity == 255;
    if (bright ? threshold >= 255 : threshold < 0)
        return {};
    const auto low = std::uint8_t(bright ? std::max(threshold + 1, 0) : 0);
    const auto high = std::uint8_t(bright ? 255 : std::min(threshold, 255));
    std::uint64_t number = 0, sumX = 0, sumY = 0;
    for (int y = 0; y < view.height; ++y) {
        const kernels::IndexSum found = kernels::sumIndices(view.row(y), std::size_t(view.width), low, high);
        number += found.number;
        sumX += found.sum;
        sumY += found.number * std::uint64_t(y);
    }
    if (number == 0)
        return {};
    return POINT{LONG(sumX / number), LONG(sumY / number)};
}

} // namespace ormalux
