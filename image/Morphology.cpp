#include "image/Morphology.h"

#include <algorithm>

namespace ormalux {

namespace {

template <class Better>
void scan(const InterleavedView& image, Better better)
{
    if (!image.pixels || image.width < 1 || image.height < 1 || image.bytesPerPixel < 1)
        return;
    const int step = image.bytesPerPixel;
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x)
            for (int channel = 0; channel < step; ++channel) {
                std::uint8_t* own = image.pixels + y * image.stride + std::ptrdiff_t(x) * step + channel;
                std::uint8_t best = *own;
                for (int dy = y > 0 ? -1 : 0; dy <= (y < image.height - 1 ? 1 : 0); ++dy)
                    for (int dx = x > 0 ? -1 : 0; dx <= (x < image.width - 1 ? 1 : 0); ++dx)
                        best = better(best, own[dy * image.stride + dx * step]);
                *own = best;
            }
}

} // namespace

void erode(const InterleavedView& image)
{
    scan(image, [](std::uint8_t a, std::uint8_t b) { return std::min(a, b); });
}

void dilate(const InterleavedView& image)
{
    scan(image, [](std::uint8_t a, std::uint8_t b) { return std::max(a, b); });
}

void erode(GrayView image)
{
    erode(InterleavedView{image.pixels, image.width, image.height, image.stride, 1});
}

void dilate(GrayView image)
{
    dilate(InterleavedView{image.pixels, image.width, image.height, image.stride, 1});
}

} // namespace ormalux
