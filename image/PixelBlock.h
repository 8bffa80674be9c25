#pragma once

#include <cstddef>
#include <cstdint>

namespace ormalux {

/// Pixels of one or more whole bytes that somebody else owns: row y begins at byte y * stride. What the
/// geometric transforms of both image classes work on.
///
///     gray    {pixels, width * height, width, height, 1, width}
///     colour  {pixels, step * height, width, height, 3, step}, step = 3 * width rounded up to a multiple of
///     4
struct PixelBlock
{
    std::uint8_t* bytes = nullptr;
    std::size_t length = 0; ///< bytes in the buffer; nothing outside them is touched
    int width = 0;
    int height = 0;
    int bytesPerPixel = 1; ///< 1 or 3
    std::size_t stride = 0;

    std::uint8_t* row(int y) const { return bytes + std::size_t(y) * stride; }
    std::size_t rowBytes() const { return std::size_t(width) * bytesPerPixel; }
    /// Whether every pixel lies in the buffer and no row in another.
    bool whole() const
    {
        return bytes && width > 0 && height > 0 && stride >= rowBytes() &&
               std::size_t(height - 1) * stride + rowBytes() <= length;
    }
};

/// The bytes of a row of a device-independent bitmap, a multiple of 4.
inline std::size_t bitmapStride(int width, int bytesPerPixel)
{
    return (std::size_t(width) * bytesPerPixel + 3) & ~std::size_t(3);
}

} // namespace ormalux
