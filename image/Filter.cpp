#include "image/Filter.h"

#include "image/WorkPool.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

namespace ormalux {

namespace {

std::uint8_t finished(std::uint32_t sum, std::int32_t divisor, std::uint32_t offset)
{
    std::uint32_t value = sum;
    if (divisor == -1)
        value = 0u - sum;
    else if (divisor != 0)
        value = std::uint32_t(std::int32_t(sum) / divisor);
    return std::uint8_t(std::clamp(std::int32_t(offset + value), 0, 255));
}

} // namespace

bool filter(GrayView image, const Convolution& c, bool threaded)
{
    if (image.empty() || !c.entries || c.size < 1 || c.size > maxConvolutionSize)
        return false;
    const std::size_t width = std::size_t(image.width);
    std::unique_ptr<std::uint8_t[]> out(new (std::nothrow) std::uint8_t[width * image.height]);
    if (!out)
        return false;
    const int size = int(c.size), half = size / 2;
    const auto rows = [&](const Band& band) {
        for (int y = int(band.first); y < int(band.end); ++y)
            for (int x = 0; x < image.width; ++x) {
                std::uint32_t sum = 0;
                for (int r = 0; r < size; ++r) {
                    const std::uint8_t* row = image.row(std::clamp(y + r - half, 0, image.height - 1));
                    for (int k = 0; k < size; ++k)
                        sum += std::uint32_t(c.entries[r * size + k]) *
                               row[std::clamp(x + k - half, 0, image.width - 1)];
                }
                out[y * width + x] = finished(sum, std::int32_t(c.divisor), std::uint32_t(c.offset));
            }
    };
    if (threaded)
        runBands(Job::Convolution, image.height, JobCost{std::int64_t(width) * image.height * size * size},
                 rows);
    else
        rows(Band{0, 0, image.height});
    for (int y = 0; y < image.height; ++y)
        std::memcpy(image.row(y), out.get() + y * width, width);
    return true;
}

} // namespace ormalux
