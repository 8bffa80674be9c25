#include "color/ColorRange.h"

#include "color/kernels/HueKernels.h"

#include <algorithm>
#include <cmath>

namespace ormalux {

bool isValid(const HueRange& range)
{
    const auto degrees = [](double hue) { return hue >= 0 && hue <= 360; };
    const auto levels = [](int low, int high) { return low >= 0 && low <= high && high <= 255; };
    return degrees(range.lowHue) && degrees(range.highHue) &&
           levels(range.lowSaturation, range.highSaturation) && levels(range.lowValue, range.highValue);
}

bool selectHues(ConstColorView image, const HueRange& range, std::span<std::uint8_t> gray)
{
    if (!isValid(range))
        return false;
    const auto fixed = [](double hue) { return std::int32_t(std::lround(hue * kernels::hueUnit)); };
    const kernels::HueLimits limits{fixed(range.lowHue),  fixed(range.highHue), range.lowSaturation,
                                    range.highSaturation, range.lowValue,       range.highValue};
    if (!image.empty())
        kernels::hueRange(image.pixels, gray.data(),
                          std::size_t(std::min<std::int64_t>(image.pixelCount(), std::int64_t(gray.size()))),
                          limits);
    return true;
}

} // namespace ormalux
