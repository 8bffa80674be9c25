#include "image/Histogram.h"

#include "image/ImagePart.h"
#include "image/kernels/CountKernels.h"

namespace ormalux {

LevelCounts countLevels(const ConstGrayView& view)
{
    LevelCounts counts{};
    if (view.empty())
        return counts;
    forEachRun(
        view, 0, std::int64_t(view.width) * view.height,
        [&](const std::uint8_t* pixels, std::size_t n) { kernels::countValues(pixels, n, counts.data()); });
    return counts;
}

} // namespace ormalux
