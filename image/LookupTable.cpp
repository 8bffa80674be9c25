#include "image/LookupTable.h"

#include "image/kernels/PointKernels.h"

#include <algorithm>
#include <cmath>

namespace ormalux {

std::optional<LookupTable> buildLightTable(long brightness, long contrast)
{
    if (brightness < -255 || brightness > 255 || contrast < -100 || contrast > 100)
        return {};
    LookupTable table;
    for (int i = 0; i < 256; ++i) {
        const double level = (i - 128) * (contrast + 100) / 100.0 + (brightness + 128) + 0.5;
        table[i] = std::uint8_t(std::clamp(int(level), 0, 255));
    }
    return table;
}

std::optional<LookupTable> buildGammaTable(float gamma)
{
    if (!(gamma > 0) || std::isinf(gamma))
        return {};
    const double e = 1.0 / gamma;
    const double k = std::pow(255.0, e) / 255.0;
    LookupTable table;
    table[0] = 0;
    for (int i = 1; i < 255; ++i) {
        // Below a gamma of 1/128 the powers leave the range of doubles; the same curve, scaled first, does
        // not.
        const double level = std::isfinite(k) ? std::pow(double(i), e) / k : 255.0 * std::pow(i / 255.0, e);
        table[i] = std::uint8_t(std::clamp(int(level), 0, 255));
    }
    table[255] = 255;
    return table;
}

void applyTable(std::span<std::uint8_t> pixels, const LookupTable& table)
{
    kernels::lookUp(pixels.data(), pixels.size(), table.data());
}

} // namespace ormalux
