#include "color/ColorPlane.h"

#include "color/ColorFormulas.h"
#include "color/HueTable.h"
#include "color/kernels/PlaneKernels.h"
#include "image/kernels/ConvertKernels.h"

#include <algorithm>

namespace ormalux {

namespace {

std::size_t pixelsThatFit(const ConstColorView& image, std::span<std::uint8_t> gray)
{
    return image.empty() ? 0
                         : std::size_t(std::min<std::int64_t>(image.pixelCount(), std::int64_t(gray.size())));
}

} // namespace

void extractPlane(ConstColorView image, Plane plane, std::span<std::uint8_t> gray)
{
    const std::size_t count = pixelsThatFit(image, gray);
    switch (plane) {
    case Plane::Blue:
        return kernels::blueOf(image.pixels, count, gray.data());
    case Plane::Green:
        return kernels::greenOf(image.pixels, count, gray.data());
    case Plane::Red:
        return kernels::redOf(image.pixels, count, gray.data());
    case Plane::Mean:
        return kernels::meanOf(image.pixels, count, gray.data());
    case Plane::Hue:
        return hues(image.pixels, gray.data(), count);
    default:
        return kernels::plane(plane, image.pixels, gray.data(), count);
    }
}

void selectColors(ConstColorView image, std::uint32_t low, std::uint32_t high, std::span<std::uint8_t> gray)
{
    const std::uint8_t from[3] = {std::uint8_t(low >> 16), std::uint8_t(low >> 8), std::uint8_t(low)};
    const std::uint8_t to[3] = {std::uint8_t(high >> 16), std::uint8_t(high >> 8), std::uint8_t(high)};
    kernels::colorRange(image.pixels, gray.data(), pixelsThatFit(image, gray), from, to);
}

bool planeOfLetter(char letter, Plane& plane)
{
    switch (letter) {
    case 'R':
        plane = Plane::Red;
        return true;
    case 'G':
        plane = Plane::Green;
        return true;
    case 'B':
        plane = Plane::Blue;
        return true;
    case 'A':
        plane = Plane::Mean;
        return true;
    default:
        return false;
    }
}

} // namespace ormalux
