#include "image/Marking.h"

#include "image/kernels/EditKernels.h"

#include <algorithm>
#include <cstring>

namespace ormalux {

void markRectangle(const GrayView& image, int left, int top, int right, int bottom, std::uint8_t value)
{
    if (image.empty() || left < 0 || top < 0 || right > image.width || bottom > image.height)
        return;
    const std::int64_t length = image.stride * image.height;
    for (int y = top; y <= bottom; ++y) {
        const std::int64_t first = image.stride * y + left;
        const std::int64_t end = std::min(image.stride * y + right + 1, length);
        if (first < end)
            std::memset(image.pixels + first, value, std::size_t(end - first));
    }
}

void markDifferences(std::span<std::uint8_t> pixels, const std::uint8_t* others, std::uint8_t value,
                     int tolerance)
{
    const std::uint8_t rest = value == 0 ? 255 : 0;
    kernels::markDifferent(pixels.data(), others, pixels.size(), std::uint8_t(std::clamp(tolerance, 0, 255)),
                           value, rest);
}

void shiftBytes(std::span<std::uint8_t> bytes, std::int64_t d)
{
    shiftBytes(bytes, d, bytes.data());
}

void shiftBytes(std::span<const std::uint8_t> bytes, std::int64_t d, std::uint8_t* shifted)
{
    const std::int64_t length = std::int64_t(bytes.size());
    const std::int64_t kept =
        d >= 0 ? std::max(length - d, std::int64_t(0)) : std::max(length + d, std::int64_t(0));
    const std::size_t cleared = std::size_t(length - kept);
    if (d >= 0) {
        if (kept > 0)
            std::memmove(shifted, bytes.data() + d, std::size_t(kept));
        std::memset(shifted + kept, 0, cleared);
    } else {
        if (kept > 0)
            std::memmove(shifted - d, bytes.data(), std::size_t(kept));
        std::memset(shifted, 0, cleared);
    }
}

} // namespace ormalux
