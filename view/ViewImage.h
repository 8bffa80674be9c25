#pragma once

#include "color/ColorRows.h"
#include "view/PictureImage.h"
#include "image/PixelSource.h"

#include <cstdint>
#include <functional>
#include <optional>

class CKestImage;
class CKestImage24;

namespace ormalux {

/// How the rows of a displayed buffer run.
enum class RowOrder
{
    BottomUp,
    TopDown
};

/// The buffer that a view shows: rows padded to 4 bytes, in either order; owned, or borrowed from a caller.
/// All coordinates are those of the picture as seen: (0, 0) is its top left pixel. Sizes and bit counts that
/// make no picture are kept as given, without a buffer. Nothing throws.
class ViewImage
{
public:
    ViewImage() = default;
    ~ViewImage() { release(); }
    ViewImage(const ViewImage&) = delete;
    ViewImage& operator=(const ViewImage&) = delete;

    /// A black picture in an own buffer.
    void create(int width, int height, int bitCount, RowOrder order);
    /// A copy of padded rows; null leaves no picture, and so do rows that begin in the own buffer and end
    /// behind it.
    void copy(int width, int height, int bitCount, const std::uint8_t* bits, RowOrder order);
    /// Shows the caller's padded rows, which are never freed. Rows of the own buffer stay owned.
    void link(int width, int height, int bitCount, std::uint8_t* bits, RowOrder order);
    /// A copy of a picture as seen, stored in the given order. False, with the old picture kept, when memory
    /// is short or there is nothing to copy.
    bool assign(const PixelSource& picture, RowOrder order);
    void setRowOrder(RowOrder order) { m_order = order; }

    bool hasPicture() const { return !source().empty(); }
    bool hasBuffer() const { return m_bits != nullptr; } ///< also of a depth that makes no picture
    int width() const { return m_width; }
    int height() const { return m_height; }
    int bitCount() const { return m_bitCount; }
    RowOrder rowOrder() const { return m_order; }
    std::int64_t stride() const { return paddedRow(m_width, m_bitCount); }
    std::uint8_t* bits() { return m_bits; }
    /// Whether bytes of somebody's begin in the buffer that is owned here and end behind it.
    bool outgrows(const std::uint8_t* bits, std::int64_t length) const;
    /// The byte at an offset of the buffer; null outside.
    std::uint8_t* byteAt(std::int64_t offset, std::int64_t count = 1);
    /// The picture as seen; empty without one.
    PixelSource source() const;

    /// The gray level, or 0xRRGGBB, of a pixel as seen; nothing outside the picture.
    std::optional<std::uint32_t> valueAt(int x, int y) const;
    /// The part of a rectangle that lies inside the picture: gray as it is, colour as it is or as (R + G + B)
    /// / 3. Empty when nothing does.
    Picture part(int x, int y, int width, int height, bool gray) const;

    /// Runs an operation on the gray picture as a top-down image without padding: in place where the buffer
    /// is one, else on a copy that is written back. A result of another size replaces the picture. False,
    /// with nothing run, unless the picture is gray.
    bool edit(const std::function<void(CKestImage&)>& operation);
    /// The same for a colour picture; rows says which row step the operation uses.
    bool edit(const std::function<void(CKestImage24&)>& operation, ColorRows rows);

private:
    bool owns(const std::uint8_t* bits) const;
    void adopt(std::uint8_t* bits, bool owned, int width, int height, int bitCount, RowOrder order);
    /// A buffer to write a picture to: the own one where it has this length and is not what is read, else a
    /// fresh one. Null when memory is short.
    std::uint8_t* roomFor(std::int64_t length, const std::uint8_t* from);
    void release();
    void writeBack(const PixelSource& result);

    std::uint8_t* m_bits = nullptr;
    bool m_owned = true;
    int m_width = 0;
    int m_height = 0;
    int m_bitCount = 8;
    RowOrder m_order = RowOrder::BottomUp;
};

} // namespace ormalux
