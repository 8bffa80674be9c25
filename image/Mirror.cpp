#include "image/Mirror.h"

#include "image/WorkPool.h"
#include "image/kernels/MirrorKernels.h"

#include <algorithm>

namespace ormalux {

namespace {

JobCost movingCost(const PixelBlock& image)
{
    return {std::int64_t(image.length / 25)};
}

} // namespace

void halfTurn(const PixelBlock& image)
{
    if (!image.whole())
        return;
    const auto turn = image.bytesPerPixel == 1 ? kernels::swapReversed : kernels::swapReversedTriples;
    const auto reverse = image.bytesPerPixel == 1 ? kernels::reverse : kernels::reverseTriples;
    const int last = image.height - 1;
    // A row and the one it changes places with belong to one band.
    runBands(Job::HalfTurn, (std::int64_t(image.height) + 1) / 2, movingCost(image), [&](const Band& band) {
        for (int y = int(band.first); y < int(band.end); ++y) {
            if (y == last - y)
                reverse(image.row(y), std::size_t(image.width));
            else
                turn(image.row(y), image.row(last - y), std::size_t(image.width));
        }
    });
}

void mirrorLeftRight(const PixelBlock& image)
{
    if (!image.whole())
        return;
    const auto reverse = image.bytesPerPixel == 1 ? kernels::reverse : kernels::reverseTriples;
    runBands(Job::MirrorHorizontal, image.height, movingCost(image), [&](const Band& band) {
        for (int y = int(band.first); y < int(band.end); ++y)
            reverse(image.row(y), std::size_t(image.width));
    });
}

void mirrorTopBottom(const PixelBlock& image)
{
    if (!image.bytes || image.height < 2 || image.stride == 0)
        return;
    const int last = image.height - 1;
    runBands(Job::MirrorVertical, image.height / 2, movingCost(image), [&](const Band& band) {
        for (int y = int(band.first); y < int(band.end); ++y) {
            const std::size_t lower = std::size_t(last - y) * image.stride;
            if (lower < image.length)
                kernels::swapBytes(image.row(y), image.bytes + lower,
                                   std::min(image.stride, image.length - lower));
        }
    });
}

} // namespace ormalux
