#include "image/BmpReader.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>

namespace ormalux {

namespace {

constexpr std::size_t fileHeader = 14;
constexpr std::size_t infoHeader = 40;

std::uint32_t word(std::span<const std::uint8_t> file, std::size_t at, int bytes)
{
    std::uint32_t value = 0;
    for (int i = 0; i < bytes; ++i)
        value |= std::uint32_t(file[at + std::size_t(i)]) << (8 * i);
    return value;
}

struct Header
{
    std::int64_t pixelsAt;
    std::int64_t headerSize;
    std::int64_t width;
    std::int64_t height; ///< without its sign
    bool topDown;
    int bitCount;
    std::int64_t colors;

    std::int64_t stride() const { return paddedRow(int(width), bitCount); }
};

/// Of an uncompressed bitmap of any depth.
bool readHeader(std::span<const std::uint8_t> file, Header& header)
{
    if (file.size() < fileHeader + infoHeader || file[0] != 'B' || file[1] != 'M')
        return false;
    header.pixelsAt = word(file, 10, 4);
    header.headerSize = word(file, 14, 4);
    header.width = std::int32_t(word(file, 18, 4));
    const std::int64_t height = std::int32_t(word(file, 22, 4));
    header.topDown = height < 0;
    header.height = height < 0 ? -height : height;
    header.bitCount = int(word(file, 28, 2));
    const std::uint32_t compression = word(file, 30, 4);
    header.colors = word(file, 46, 4);
    if (header.colors == 0 || header.colors > 256)
        header.colors = 256;
    if (header.pixelsAt == 0)
        header.pixelsAt =
            std::int64_t(fileHeader) + header.headerSize + (header.bitCount == 8 ? 4 * header.colors : 0);
    return header.headerSize >= std::int64_t(infoHeader) && compression == 0 && header.width > 0 &&
           header.height > 0;
}

/// The colour image's own files carry their pixels twice: unpadded rows with a gap behind each, then the
/// whole padded buffer, bottom row first. They are told by the stored file size of 14 and their exact length;
/// the second copy is the one that every other reader's rules fit.
std::int64_t startOfPixels(std::span<const std::uint8_t> file, const Header& header)
{
    const std::int64_t stride = header.stride();
    if (header.bitCount != 24 || header.topDown || header.pixelsAt != 54 || word(file, 2, 4) != fileHeader)
        return header.pixelsAt;
    const std::int64_t firstCopy =
        header.height * (3 * header.width + std::max<std::int64_t>(stride - header.width, 0));
    const bool twice = std::int64_t(file.size()) == 54 + firstCopy + header.height * stride;
    return twice ? 54 + firstCopy : header.pixelsAt;
}

/// The last row may lack its padding.
bool isTruncated(std::span<const std::uint8_t> file, const Header& header, std::int64_t start)
{
    const std::int64_t room = std::int64_t(file.size()) - start - header.width * (header.bitCount / 8);
    return room < 0 || header.height - 1 > room / header.stride();
}

using Palette = std::array<std::array<std::uint8_t, 3>, 256>;

Palette readPalette(std::span<const std::uint8_t> file, const Header& header)
{
    Palette palette{};
    std::int64_t at = std::int64_t(fileHeader) + header.headerSize;
    for (std::int64_t i = 0; i < header.colors && at + 4 <= std::int64_t(file.size()); ++i, at += 4)
        std::copy_n(file.data() + at, 3, palette[std::size_t(i)].begin());
    return palette;
}

bool isGray(const Palette& palette)
{
    return std::ranges::all_of(palette, [](const auto& c) { return c[0] == c[1] && c[1] == c[2]; });
}

void applyPalette(const Palette& palette, int bitCount, const std::uint8_t* in, int width, std::uint8_t* out)
{
    for (int x = 0; x < width; ++x) {
        const auto& color = palette[in[x]];
        if (bitCount == 8)
            out[x] = color[0];
        else
            std::copy_n(color.begin(), 3, out + std::ptrdiff_t(3) * x);
    }
}

/// Hands every row of the file with its place in the picture to the function.
template <class Row>
BmpOutcome readRows(const std::uint8_t* pixels, const Header& header, int bitCount, Picture& picture,
                    const Row& readRow)
{
    Picture read;
    read.width = int(header.width);
    read.height = int(header.height);
    read.bitCount = bitCount;
    const std::size_t outRow = std::size_t(header.width) * std::size_t(bitCount / 8);
    try {
        read.pixels.resize(outRow * std::size_t(header.height));
    } catch (const std::bad_alloc&) {
        return BmpOutcome::NoMemory;
    }
    for (std::int64_t y = 0; y < header.height; ++y)
        readRow(pixels + header.stride() * (header.topDown ? y : header.height - 1 - y),
                read.pixels.data() + outRow * std::size_t(y));
    picture = std::move(read);
    return BmpOutcome::Read;
}

} // namespace

BmpOutcome readBmp(std::span<const std::uint8_t> file, bool indicesAreGray, Picture& picture)
{
    Header header{};
    if (!readHeader(file, header) || (header.bitCount != 8 && header.bitCount != 24))
        return BmpOutcome::NotOurs;
    if (header.width * header.height > largestPicture)
        return BmpOutcome::TooLarge;
    const std::int64_t start = startOfPixels(file, header);
    if (isTruncated(file, header, start))
        return BmpOutcome::Truncated;

    const std::size_t row = std::size_t(header.width) * std::size_t(header.bitCount / 8);
    const bool indexed = header.bitCount == 8 && !indicesAreGray;
    const Palette palette = indexed ? readPalette(file, header) : Palette{};
    const int bitCount = indexed && !isGray(palette) ? 24 : header.bitCount;
    return readRows(file.data() + start, header, bitCount, picture,
                    [&](const std::uint8_t* in, std::uint8_t* out) {
                        if (indexed)
                            applyPalette(palette, bitCount, in, int(header.width), out);
                        else
                            std::memcpy(out, in, row);
                    });
}

BmpOutcome readWideBmp(std::span<const std::uint8_t> file, Picture& picture)
{
    Header header{};
    // Longer headers may name a channel of transparency.
    if (!readHeader(file, header) || header.bitCount != 32 || header.headerSize != std::int64_t(infoHeader) ||
        word(file, 10, 4) < fileHeader + infoHeader || word(file, 26, 2) != 1)
        return BmpOutcome::NotOurs;
    if (isTruncated(file, header, header.pixelsAt))
        return BmpOutcome::Truncated;
    if (header.width * header.height > largestPicture)
        return BmpOutcome::TooLarge;
    return readRows(file.data() + header.pixelsAt, header, 24, picture,
                    [&](const std::uint8_t* in, std::uint8_t* out) {
                        for (std::int64_t x = 0; x < header.width; ++x)
                            std::copy_n(in + 4 * x, 3, out + 3 * x);
                    });
}

} // namespace ormalux
