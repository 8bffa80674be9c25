#include "steps/Frame.h"

#include "steps/Work.h"

#include <algorithm>
#include <cstring>

namespace ormalux {

namespace {

constexpr std::int64_t largestFrame = std::int64_t(512) << 20;

[[noreturn]] void refuse(const std::string& why)
{
    throw PictureError(why);
}

int bytesPerPixel(PixelFormat format)
{
    switch (format) {
    case PixelFormat::Gray8:
        return 1;
    case PixelFormat::Gray16:
        return 2;
    case PixelFormat::Bgr24:
    case PixelFormat::Rgb24:
        return 3;
    case PixelFormat::Bgra32:
        return 4;
    }
    refuse("unknown pixel format");
}

const std::uint8_t* rowOf(const FrameSource& source, int y)
{
    return static_cast<const std::uint8_t*>(source.pixels) + source.stride * y;
}

/// Levels v >> (bits - 8), larger ones 255.
std::string takeDeep(const FrameSource& source, int recipeBits, Work& work)
{
    // 8, which callers give for all other formats, stands behind what the recipe says.
    const int given = source.bits == 8 && recipeBits > 0 && !source.overridesRecipe ? 0 : source.bits;
    const bool said = given > 0 || recipeBits > 0;
    const int bits = given > 0 ? given : recipeBits > 0 ? recipeBits : 16;
    if (source.bits < 0 || bits < 8 || bits > 16)
        refuse("bits: " + std::to_string(source.bits < 0 ? source.bits : bits) + ": expected 8 to 16");
    work.scratch.resize(std::size_t(source.width) * std::size_t(source.height));
    unsigned highest = 0;
    for (int y = 0; y < source.height; ++y) {
        const std::uint8_t* const row = rowOf(source, y);
        std::uint8_t* const out = work.scratch.data() + std::size_t(y) * std::size_t(source.width);
        for (int x = 0; x < source.width; ++x) {
            std::uint16_t level;
            std::memcpy(&level, row + 2 * std::ptrdiff_t(x), 2);
            highest = std::max(highest, unsigned(level));
            out[x] = std::uint8_t(std::min(level >> (bits - 8), 255));
        }
    }
    work.takeGray({work.scratch.data(), source.width, source.height, source.width});
    if (!said && highest < 16384)
        return "no level reaches a quarter of 16 bits: name the significant bits with \"bits\" or --bits";
    return {};
}

void takeColor(const FrameSource& source, Work& work)
{
    const int step = bytesPerPixel(source.format);
    const bool reversed = source.format == PixelFormat::Rgb24;
    // The colour image counts padded rows: there must be room for them.
    work.scratch.resize(std::size_t(paddedStride(source.width)) * std::size_t(source.height));
    for (int y = 0; y < source.height; ++y) {
        const std::uint8_t* from = rowOf(source, y);
        std::uint8_t* to = work.scratch.data() + 3 * std::size_t(y) * std::size_t(source.width);
        if (step == 3 && !reversed) {
            std::memcpy(to, from, 3 * std::size_t(source.width));
            continue;
        }
        for (int x = 0; x < source.width; ++x, from += step, to += 3) {
            to[0] = from[reversed ? 2 : 0];
            to[1] = from[1];
            to[2] = from[reversed ? 0 : 2];
        }
    }
    work.takeColor({work.scratch.data(), source.width, source.height, std::int64_t(work.scratch.size())});
}

} // namespace

std::string takeFrame(const FrameSource& source, int recipeBits, Work& work)
{
    if (!source.pixels)
        refuse("no pixels are given");
    if (source.width < 1 || source.height < 1 || std::int64_t(source.width) * source.height > largestFrame)
        refuse("a picture of " + sizeText(source.width, source.height) + " cannot be inspected");
    const std::int64_t row = std::int64_t(source.width) * bytesPerPixel(source.format);
    const std::int64_t stride = source.stride < 0 ? -std::int64_t(source.stride) : source.stride;
    if (stride < row && source.height > 1)
        refuse("a stride of " + std::to_string(source.stride) + " bytes is shorter than a row of " +
               std::to_string(row));
    if (source.format == PixelFormat::Gray8)
        work.takeGray({rowOf(source, 0), source.width, source.height,
                       source.height == 1 ? source.width : source.stride});
    else if (source.format == PixelFormat::Gray16)
        return takeDeep(source, recipeBits, work);
    else
        takeColor(source, work);
    return {};
}

} // namespace ormalux
