#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

namespace ormalux {

/// What both image classes read from a BMP file's headers: a 14-byte file header, a 40-byte info header and,
/// at 8 bits, 256 palette entries of 4 bytes. All numbers are little-endian.
struct BmpHeader
{
    int width;              ///< at least 1
    int height;             ///< at least 1
    std::uint64_t pixelsAt; ///< where the pixels begin in the file
};

/// The bytes of all headers together; of which files of other depths than 8 bits have no palette.
inline constexpr std::size_t bmpHeaderSize = 14 + 40;
inline constexpr std::size_t bmpPaletteSize = 256 * 4;

/// Reads the headers from the beginning of a file, which may be cut off behind them. Nothing when they are
/// not there in full, the file is no bitmap, has another depth (8 or 24) or a size of 0 or less. Deliberate:
/// no other field is looked at, the palette included; a pixel offset of 0 means right behind the headers.
std::optional<BmpHeader> parseBmpHeader(std::span<const std::uint8_t> file, int bitsPerPixel);

/// The count pixel bytes of a whole file in memory; empty when it does not hold them all.
std::span<const std::uint8_t> bmpPixels(std::span<const std::uint8_t> file, const BmpHeader& header,
                                        std::uint64_t count);

/// Headers to be written, palette included.
class BmpHeaderBytes
{
public:
    /// A bottom-up picture of 8 bits with a gray palette, or of 24 bits. Deliberate: the file size field
    /// holds 14, the size of the file header itself; readers know it so.
    BmpHeaderBytes(int width, int height, int bitsPerPixel);

    std::span<const std::uint8_t> bytes() const { return {m_bytes.data(), m_size}; }

private:
    std::array<std::uint8_t, bmpHeaderSize + bmpPaletteSize> m_bytes{};
    std::size_t m_size;
};

} // namespace ormalux
