#include "image/Morphology.h"

#include "image/kernels/MorphologyKernels.h"

namespace ormalux {

namespace {

using GrayScan = void (*)(std::uint8_t*, std::size_t, std::size_t, std::ptrdiff_t);
using InterleavedScan = void (*)(std::uint8_t*, std::size_t, std::size_t, std::ptrdiff_t, std::size_t);

void scan(const InterleavedView& image, GrayScan gray, InterleavedScan interleaved)
{
    if (!image.pixels || image.width < 1 || image.height < 1 || image.bytesPerPixel < 1 ||
        image.bytesPerPixel > 4)
        return;
    const std::size_t width = std::size_t(image.width), height = std::size_t(image.height);
    if (image.bytesPerPixel == 1)
        gray(image.pixels, width, height, image.stride);
    else
        interleaved(image.pixels, width, height, image.stride, std::size_t(image.bytesPerPixel));
}

} // namespace

void erode(const InterleavedView& image)
{
    scan(image, kernels::erode, kernels::erodeInterleaved);
}

void dilate(const InterleavedView& image)
{
    scan(image, kernels::dilate, kernels::dilateInterleaved);
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
