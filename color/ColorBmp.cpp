#include "color/ColorBmp.h"

#include "image/Mirror.h"
#include "image/PixelBuffer.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace ormalux {

namespace {

// What passes through a core's own cache between the file and the picture.
constexpr std::size_t blockBytes = 128 * 1024;

int rowsPerBlock(std::size_t rowBytes)
{
    return int(std::max<std::size_t>(blockBytes / rowBytes, 1));
}

/// The file's parts one after the other: headers, rows, the padded buffer with its rows reversed.
class FileParts
{
public:
    FileParts(const ConstColorView& image, int width, int height)
        : m_header(width, height, 24), m_image(image), m_stride(bitmapStride(width, 3)),
          m_rowBytes(std::size_t(3) * std::size_t(width)),
          m_fileRow(m_rowBytes + m_stride - std::size_t(width)), m_rowsLeft(image.empty() ? 0 : height),
          m_paddedLeft(m_rowsLeft)
    {
        if (m_rowsLeft > 0)
            m_rowsPerBlock = std::min(rowsPerBlock(m_fileRow), height);
        m_block.reset(newPixels(m_fileRow * std::size_t(m_rowsPerBlock)));
        if (m_block)
            std::memset(m_block.get(), 0, m_fileRow * std::size_t(m_rowsPerBlock)); // the padding stays 0
    }

    bool hasMemory() const { return m_block != nullptr; }

    std::span<const std::uint8_t> next()
    {
        if (!m_headerDone) {
            m_headerDone = true;
            return m_header.bytes();
        }
        // A row of the file is never shorter than a padded one, so the block holds as many of these.
        if (m_rowsLeft > 0)
            return fill(m_rowsLeft, m_rowBytes, m_rowBytes, m_fileRow);
        return fill(m_paddedLeft, m_stride, m_stride, m_stride);
    }

private:
    /// Copies rows from the last one left upward, from and to buffers with the row steps.
    std::span<const std::uint8_t> fill(int& left, std::size_t bytes, std::size_t fromStep, std::size_t toStep)
    {
        std::size_t filled = 0;
        for (int row = 0; row < m_rowsPerBlock && left > 0; ++row, filled += toStep)
            std::memcpy(m_block.get() + filled, m_image.pixels + std::size_t(--left) * fromStep, bytes);
        return {m_block.get(), filled};
    }

    BmpHeaderBytes m_header;
    ConstColorView m_image;
    std::size_t m_stride;   // of the padded buffer
    std::size_t m_rowBytes; // of the unpadded buffer
    std::size_t m_fileRow;
    int m_rowsLeft;
    int m_paddedLeft;
    int m_rowsPerBlock = 0;
    bool m_headerDone = false;
    std::unique_ptr<std::uint8_t[]> m_block;
};

} // namespace

bool readColorRows(FileReader& file, const BmpHeader& header, std::uint8_t* pixels)
{
    const std::size_t stride = bitmapStride(header.width, 3);
    const int rows = rowsPerBlock(stride);
    std::uint64_t position = header.pixelsAt;
    // Each block is read to where it ends up and turned round there while it is in the cache.
    for (int bottom = header.height; bottom > 0; bottom -= rows) {
        const int top = std::max(bottom - rows, 0);
        const std::span<std::uint8_t> block(pixels + std::size_t(top) * stride,
                                            std::size_t(bottom - top) * stride);
        if (!file.read(position, block))
            return false;
        position += block.size();
        mirrorTopBottom({block.data(), block.size(), header.width, bottom - top, 3, stride});
    }
    return true;
}

bool writeColorBmp(const char* path, const ConstColorView& image, int width, int height)
{
    FileParts parts(image, width, height);
    return parts.hasMemory() && writeFileInParts(path, [&] { return parts.next(); });
}

} // namespace ormalux
