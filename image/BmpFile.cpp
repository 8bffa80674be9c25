#include "image/BmpFile.h"

#include "image/PixelBlock.h"

namespace ormalux {

namespace {

// Where the fields lie, counted from the file's beginning.
enum Field : std::size_t
{
    Type = 0,
    FileSize = 2,
    PixelOffset = 10,
    InfoSize = 14,
    Width = 18,
    Height = 22,
    Planes = 26,
    BitCount = 28,
    ImageSize = 34,
    ColorsUsed = 46
};

std::uint32_t get16(std::span<const std::uint8_t> file, Field field)
{
    return file[field] | std::uint32_t(file[field + 1]) << 8;
}

std::uint32_t get32(std::span<const std::uint8_t> file, Field field)
{
    return get16(file, field) | get16(file, Field(field + 2)) << 16;
}

void put16(std::span<std::uint8_t> file, Field field, std::uint32_t value)
{
    file[field] = std::uint8_t(value);
    file[field + 1] = std::uint8_t(value >> 8);
}

void put32(std::span<std::uint8_t> file, Field field, std::uint32_t value)
{
    put16(file, field, value);
    put16(file, Field(field + 2), value >> 16);
}

constexpr std::uint32_t typeBM = 0x4D42;

std::size_t headersOf(int bitsPerPixel)
{
    return bmpHeaderSize + (bitsPerPixel == 8 ? bmpPaletteSize : 0);
}

} // namespace

std::optional<BmpHeader> parseBmpHeader(std::span<const std::uint8_t> file, int bitsPerPixel)
{
    if (file.size() < headersOf(bitsPerPixel) || get16(file, Type) != typeBM ||
        get16(file, BitCount) != std::uint32_t(bitsPerPixel))
        return std::nullopt;
    const int width = int(get32(file, Width)), height = int(get32(file, Height));
    if (width < 1 || height < 1)
        return std::nullopt;
    const std::uint32_t offset = get32(file, PixelOffset);
    return BmpHeader{width, height, offset > 0 ? offset : headersOf(bitsPerPixel)};
}

std::span<const std::uint8_t> bmpPixels(std::span<const std::uint8_t> file, const BmpHeader& header,
                                        std::uint64_t count)
{
    if (header.pixelsAt > file.size() || count > file.size() - header.pixelsAt)
        return {};
    return file.subspan(std::size_t(header.pixelsAt), std::size_t(count));
}

BmpHeaderBytes::BmpHeaderBytes(int width, int height, int bitsPerPixel) : m_size(headersOf(bitsPerPixel))
{
    const std::uint64_t imageSize = bitmapStride(width, bitsPerPixel / 8) * std::uint64_t(height);
    put16(m_bytes, Type, typeBM);
    put32(m_bytes, FileSize, 14);
    put32(m_bytes, PixelOffset, std::uint32_t(m_size));
    put32(m_bytes, InfoSize, 40);
    put32(m_bytes, Width, std::uint32_t(width));
    put32(m_bytes, Height, std::uint32_t(height));
    put16(m_bytes, Planes, 1);
    put16(m_bytes, BitCount, std::uint32_t(bitsPerPixel));
    put32(m_bytes, ImageSize, std::uint32_t(imageSize));
    if (bitsPerPixel != 8)
        return;
    put32(m_bytes, ColorsUsed, 256);
    for (std::size_t level = 0; level < 256; ++level)
        for (std::size_t channel = 0; channel < 3; ++channel)
            m_bytes[bmpHeaderSize + 4 * level + channel] = std::uint8_t(level);
}

} // namespace ormalux
