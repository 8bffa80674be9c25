#include "image/Filter.h"

#include "image/ConvolutionPlan.h"
#include "image/RowWindow.h"

namespace ormalux {

bool filter(GrayView image, const Convolution& convolution, bool threaded)
{
    if (image.empty() || !convolution.entries || convolution.size < 1 ||
        convolution.size > maxConvolutionSize)
        return false;
    const int size = int(convolution.size), before = size / 2;
    RowWindow window(image, before, size - 1 - before);
    ConvolutionPlan plan;
    if (!plan.make(convolution) || !window.prepare(threaded))
        return false;
    const auto filterBand = [&](const Band& band) {
        window.run(band, [&](const std::uint8_t* const* source, std::uint8_t* out, int count) {
            plan.run(source, out, image.stride, std::size_t(image.width), count);
        });
    };
    if (threaded)
        runBands(Job::Convolution, image.height,
                 JobCost{plan.nanoseconds(std::int64_t(image.width) * image.height)}, filterBand);
    else
        filterBand(Band{0, 0, image.height});
    return true;
}

} // namespace ormalux
