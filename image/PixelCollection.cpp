#include "image/PixelCollection.h"

#include "image/GrayStatistics.h"
#include "image/WorkPool.h"
#include "image/kernels/CollectKernels.h"

#include <cstddef>
#include <memory>
#include <new>

namespace ormalux {

namespace {

/// The rows of a band.
ConstGrayView rowsOf(const ConstGrayView& view, const Band& band)
{
    return {view.row(int(band.first)), view.width, int(band.size()), view.stride};
}

} // namespace

void collectPixels(const ImagePart& part, std::uint8_t low, std::uint8_t high, CPixelArray& pixels)
{
    const ConstGrayView& view = part.view;
    if (view.empty() || low > high)
        return;
    const int bands = bandCount();
    const std::unique_ptr<std::int64_t[]> begins(new (std::nothrow) std::int64_t[std::size_t(bands) + 1]());
    if (!begins)
        return;
    // Counting first lets every band write straight to where its records belong.
    const std::int64_t area = std::int64_t(view.width) * view.height;
    runBands(Job::PixelCollection, view.height, JobCost{area / 20},
             [&](const Band& band) { begins[band.index + 1] = countInRange(rowsOf(view, band), low, high); });
    for (int i = 0; i < bands; ++i)
        begins[i + 1] += begins[i];
    const std::span<_stPixel> records = pixels.appendForOverwrite(std::size_t(begins[bands]));
    if (records.empty())
        return;
    runBands(Job::PixelCollection, view.height, JobCost{area / 20 + begins[bands]}, [&](const Band& band) {
        _stPixel* record = records.data() + begins[band.index];
        for (std::int64_t y = band.first; y < band.end; ++y)
            record += kernels::collectRange(view.row(int(y)), std::size_t(view.width), low, high, part.x,
                                            part.y + int(y), record);
    });
}

} // namespace ormalux
