#include "color/ColorFilter.h"

#include "image/Morphology.h"

#include <cstring>

namespace ormalux {

namespace {

GrayView firstBytes(const ColorView& image)
{
    return image.empty() ? GrayView{} : GrayView{image.pixels, image.width, image.height, image.width};
}

void clearBehind(const ColorView& image)
{
    std::memset(image.pixels + image.pixelCount(), 0, std::size_t(image.length - image.pixelCount()));
}

InterleavedView channels(const ColorView& image)
{
    return {image.pixels, image.width, image.height, std::ptrdiff_t(3) * image.width, 3};
}

} // namespace

void filter(const ColorView& image, const Convolution& convolution, bool threaded)
{
    if (filter(firstBytes(image), convolution, threaded))
        clearBehind(image);
}

void filter(const ColorView& image, NamedFilter name)
{
    if (filter(firstBytes(image), name))
        clearBehind(image);
}

void erode(const ColorView& image)
{
    if (!image.empty())
        erode(channels(image));
}

void dilate(const ColorView& image)
{
    if (!image.empty())
        dilate(channels(image));
}

} // namespace ormalux
