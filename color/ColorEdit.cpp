#include "color/ColorEdit.h"

#include "platform/Types.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>

namespace ormalux {

namespace {

/// Calls run(first, end) with the box's runs of pixels of the unpadded rows as indices, cut to the buffer;
/// the last pixel may be cut short by the buffer's end.
template <class Run>
void eachRun(const ColorView& image, const PixelBox& box, Run run)
{
    if (image.empty() || box.x1 >= box.x2 || box.y1 >= box.y2)
        return;
    const std::int64_t width = image.width, end = (image.length + 2) / 3;
    const auto cut = [&](std::int64_t first, std::int64_t last) {
        first = std::max<std::int64_t>(first, 0);
        last = std::min(last, end);
        if (first < last)
            run(first, last);
    };
    if (std::int64_t(box.x2) - box.x1 >= width) { // the rows' runs touch and make one
        cut(width * box.y1 + box.x1, width * (std::int64_t(box.y2) - 1) + box.x2);
        return;
    }
    const std::int64_t firstRow = std::max<std::int64_t>(box.y1, -std::int64_t(box.x2) / width - 1);
    const std::int64_t endRow = std::min<std::int64_t>(box.y2, (end - box.x1) / width + 1);
    for (std::int64_t y = firstRow; y < endRow; ++y)
        cut(width * y + box.x1, width * y + box.x2);
}

using ByteMap = std::array<std::uint8_t, 256>;

/// One multiplication: in single precision, truncated, limited from above only.
ByteMap gainMap(float gain)
{
    ByteMap map;
    for (int v = 0; v < 256; ++v)
        map[std::size_t(v)] = std::uint8_t(int(std::clamp(float(v) * gain, -2147483648.0f, 255.0f)));
    return map;
}

ByteMap after(const ByteMap& first, const ByteMap& second)
{
    ByteMap both;
    for (std::size_t v = 0; v < 256; ++v)
        both[v] = second[first[v]];
    return both;
}

/// The map applied n times.
ByteMap power(ByteMap map, int n)
{
    ByteMap result;
    for (std::size_t v = 0; v < 256; ++v)
        result[v] = std::uint8_t(v);
    for (; n > 0; n >>= 1) {
        if (n & 1)
            result = after(result, map);
        map = after(map, map);
    }
    return result;
}

} // namespace

std::uint32_t colorAt(const ConstColorView& image, int x, int y)
{
    if (image.empty())
        return 0;
    const std::int64_t place = std::int64_t(image.width) * y + std::int64_t(3) * x;
    const auto byteAt = [&](std::int64_t i) { return i >= 0 && i < image.length ? image.pixels[i] : 0; };
    return RGB(byteAt(place + 2), byteAt(place + 1), byteAt(place));
}

void setColorAt(const ColorView& image, int x, int y, std::uint32_t color)
{
    if (image.empty())
        return;
    const std::int64_t place = std::int64_t(image.width) * y + std::int64_t(3) * x;
    const std::uint8_t bytes[3] = {GetBValue(color), GetGValue(color), GetRValue(color)};
    for (std::int64_t i = 0; i < 3; ++i)
        if (place + i >= 0 && place + i < image.length)
            image.pixels[place + i] = bytes[i];
}

void paintBox(const ColorView& image, const PixelBox& box, std::uint32_t color)
{
    const std::uint8_t bytes[3] = {GetBValue(color), GetGValue(color), GetRValue(color)};
    eachRun(image, box, [&](std::int64_t first, std::int64_t end) {
        const std::int64_t endByte = std::min(3 * end, image.length);
        for (std::int64_t i = 3 * first, c = 0; i < endByte; ++i, c = c == 2 ? 0 : c + 1)
            image.pixels[i] = bytes[c];
    });
}

void paintChannel(const ColorView& image, const PixelBox& box, int channel, std::uint8_t value)
{
    eachRun(image, box, [&](std::int64_t first, std::int64_t end) {
        const std::int64_t endByte = std::min(3 * end, image.length);
        for (std::int64_t i = 3 * first + channel; i < endByte; i += 3)
            image.pixels[i] = value;
    });
}

void repeatGain(const ColorView& image, int channel, float gain)
{
    if (image.empty() || !std::isfinite(gain))
        return;
    const ByteMap map = power(gainMap(gain), image.width);
    for (int y = 0; y < image.height; ++y) {
        std::uint8_t& byte = image.pixels[std::int64_t(3) * image.width * y + channel];
        byte = map[byte];
    }
}

} // namespace ormalux
