#include "image/Threshold.h"

#include "image/WorkPool.h"
#include "image/kernels/PointKernels.h"
#include "image/kernels/RiseKernels.h"

#include <algorithm>
#include <cstring>

namespace ormalux {

namespace {

// Pixels that one core takes a nanosecond for.
constexpr std::int64_t streamed = 25;
constexpr std::int64_t searched = 8;

} // namespace

void threshold(std::span<std::uint8_t> pixels, int t)
{
    const auto total = std::int64_t(pixels.size());
    runBands(Job::Threshold, total, JobCost{total / streamed}, [=](const Band& band) {
        std::uint8_t* first = pixels.data() + band.first;
        if (t < 0)
            std::fill_n(first, band.size(), std::uint8_t(255));
        else
            kernels::threshold(first, std::size_t(band.size()), std::uint8_t(std::min(t, 255)));
    });
}

void doubleThreshold(std::span<std::uint8_t> pixels, int upper, int lower, std::uint8_t value)
{
    const std::uint8_t other = value == 255 ? 0 : 255;
    const auto total = std::int64_t(pixels.size());
    const bool none = lower > upper || lower > 255 || upper < 0;
    const auto low = std::uint8_t(std::clamp(lower, 0, 255));
    const auto high = std::uint8_t(std::clamp(upper, 0, 255));
    runBands(Job::DoubleThreshold, total, JobCost{total / streamed}, [=](const Band& band) {
        std::uint8_t* first = pixels.data() + band.first;
        if (none)
            std::fill_n(first, band.size(), other);
        else
            kernels::splitRange(first, std::size_t(band.size()), low, high, value, other);
    });
}

void adaptiveThreshold(const GrayView& view, std::uint8_t fill)
{
    if (view.empty())
        return;
    const std::int64_t pixels = std::int64_t(view.width) * view.height;
    const auto width = std::size_t(view.width);
    runBands(Job::AdaptiveThreshold, view.height, JobCost{pixels / searched}, [=](const Band& band) {
        for (std::int64_t y = band.first; y < band.end; ++y) {
            std::uint8_t* row = view.row(int(y));
            const kernels::EdgeSum edges = kernels::rowEdges(row, width);
            if (edges.number > 0)
                kernels::threshold(row, width, std::uint8_t(edges.means / edges.number));
            else
                std::memset(row, fill, width);
        }
    });
}

} // namespace ormalux
