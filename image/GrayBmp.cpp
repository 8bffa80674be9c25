#include "image/GrayBmp.h"

#include "image/Mirror.h"
#include "image/PixelBuffer.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>

namespace ormalux {

namespace {

// What passes through a core's own cache between the file and the picture.
constexpr std::size_t blockBytes = 128 * 1024;

int rowsPerBlock(std::size_t rowBytes)
{
    return int(std::max<std::size_t>(blockBytes / rowBytes, 1));
}

} // namespace

bool readGrayRows(FileReader& file, const BmpHeader& header, std::uint8_t* pixels)
{
    const std::size_t width = std::size_t(header.width);
    const std::size_t count = width * std::size_t(header.height);
    if (bitmapStride(header.width, 1) != width) {
        if (!file.read(header.pixelsAt, {pixels, count}))
            return false;
        mirrorTopBottom({pixels, count, header.width, header.height, 1, bitmapStride(header.width, 1)});
        return true;
    }
    // Each block is read to where it ends up and turned round there while it is in the cache.
    const int rows = rowsPerBlock(width);
    std::uint64_t position = header.pixelsAt;
    for (int bottom = header.height; bottom > 0; bottom -= rows) {
        const int top = std::max(bottom - rows, 0);
        const std::span<std::uint8_t> block(pixels + std::size_t(top) * width,
                                            std::size_t(bottom - top) * width);
        if (!file.read(position, block))
            return false;
        position += block.size();
        mirrorTopBottom({block.data(), block.size(), header.width, bottom - top, 1, width});
    }
    return true;
}

bool writeGrayBmp(const char* path, const ConstGrayView& image, int width, int height)
{
    const BmpHeaderBytes header(width, height, 8);
    const std::size_t stride = bitmapStride(width, 1);
    const int rows = image.empty() ? 0 : std::min(rowsPerBlock(stride), height);
    const std::unique_ptr<std::uint8_t[]> block(newPixels(stride * std::size_t(rows)));
    if (!block)
        return false;
    std::memset(block.get(), 0, stride * std::size_t(rows)); // the padding stays 0
    int bottom = height;
    bool headerDone = false;
    const auto nextPart = [&]() -> std::span<const std::uint8_t> {
        if (!headerDone) {
            headerDone = true;
            return header.bytes();
        }
        std::size_t filled = 0;
        for (int row = 0; row < rows && bottom > 0; ++row, filled += stride)
            std::memcpy(block.get() + filled, image.row(--bottom), std::size_t(width));
        return {block.get(), filled};
    };
    return writeFileInParts(path, std::cref(nextPart)); // by reference: a copy of it would take memory
}

} // namespace ormalux
