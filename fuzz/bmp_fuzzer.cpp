#include "image/BmpFile.h"
#include "image/PixelBlock.h"

#include <cstdlib>
#include <cstring>

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

void parse(std::span<const std::uint8_t> file, int bitsPerPixel)
{
    const auto header = ormalux::parseBmpHeader(file, bitsPerPixel);
    const std::size_t headers =
        ormalux::bmpHeaderSize + (bitsPerPixel == 8 ? ormalux::bmpPaletteSize : std::size_t(0));
    if (file.size() < headers) {
        require(!header);
        return;
    }
    if (!header)
        return;
    require(header->width > 0 && header->height > 0);
    const std::uint64_t stride =
        bitsPerPixel == 8 ? std::uint64_t(header->width) : ormalux::bitmapStride(header->width, 3);
    const std::uint64_t count = stride * std::uint64_t(header->height);
    const auto pixels = ormalux::bmpPixels(file, *header, count);
    require(pixels.empty() || pixels.size() == count);
    std::uint8_t sum = 0;
    for (const std::uint8_t pixel : pixels) // every pixel can be read
        sum = std::uint8_t(sum + pixel);
    static volatile std::uint8_t seen;
    seen = sum;
    // What is written for the size is read back as it.
    const ormalux::BmpHeaderBytes written(header->width, header->height, bitsPerPixel);
    const auto again = ormalux::parseBmpHeader(written.bytes(), bitsPerPixel);
    require(again && again->width == header->width && again->height == header->height &&
            again->pixelsAt == headers);
}

} // namespace

/// Any bytes as a bitmap file of either depth.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    parse({data, size}, 8);
    parse({data, size}, 24);
    return 0;
}
