#include "image/Convert.h"

#include "image/PixelBuffer.h"
#include "image/kernels/ConvertKernels.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace ormalux {

namespace {

struct Formula
{
    std::string_view channels;
    void (*convert)(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray);
};

constexpr Formula formulas[] = {
    {"R", kernels::redOf},
    {"G", kernels::greenOf},
    {"B", kernels::blueOf},
    {"RGB", kernels::meanOf},
    {"RG", kernels::halfRedGreenOf},
    {"RB", kernels::halfRedBlueOf},
    {"GB", kernels::halfGreenBlueOf},
};

} // namespace

std::uint8_t* convert24To8(int width, int height, const std::uint8_t* pixels, const char* channels)
{
    const std::size_t count = std::size_t(width) * height;
    std::uint8_t* gray = newPixels(count);
    if (!gray)
        return nullptr;
    const auto* formula = std::find_if(std::begin(formulas), std::end(formulas),
                                       [=](const Formula& f) { return channels && f.channels == channels; });
    if (formula == std::end(formulas))
        std::memset(gray, 0, count);
    else
        formula->convert(pixels, count, gray);
    return gray;
}

std::uint8_t* convert32To8(int width, int height, const std::uint8_t* pixels)
{
    const std::size_t count = std::size_t(width) * height;
    std::uint8_t* gray = newPixels(count);
    if (!gray)
        return nullptr;
    std::memset(gray, 0, count);
    if (count == 0)
        return gray;
    // The last index read, height * width + width + 2 at most, lies inside the 4 * width * height bytes.
    for (std::int64_t y = 0; y <= height; ++y)
        for (std::int64_t x = 0; x <= width; x += 4) {
            const std::uint8_t* s = pixels + y * width + x;
            gray[(y * width + x) / 4] = std::uint8_t((s[0] + s[1] + s[2]) / 3);
        }
    return gray;
}

} // namespace ormalux
