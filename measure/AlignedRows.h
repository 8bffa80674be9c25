#pragma once

#include "image/GrayView.h"
#include "image/ScratchBytes.h"
#include "measure/Alignment.h"

#include <cstdint>

namespace ormalux {

/// The rows of a golden picture as a picture aligned to it sees them: bilinear, at places rounded to 1 / 256
/// pixel. A shift by whole pixels reads the golden picture itself.
class AlignedRows
{
public:
    /// Columns of a row of the picture that lie in the golden picture; all others are unknown.
    struct Known
    {
        int begin, end;
        bool none() const { return begin >= end; }
    };

    /// Rows up to `kept` apart may be asked for at a time.
    AlignedRows(ConstGrayView golden, const CAlignment& alignment, int width, int height, int kept);

    /// Whether the alignment leads to places that can be told.
    bool valid() const { return m_valid; }
    /// False when memory is short.
    bool prepare();
    /// Makes a row ready, which lies at most `kept` rows behind the latest one.
    void fetch(int y);

    Known known(int y) const;
    /// Levels by column of the picture; of use where they are known. Unknown ones are 255 in least and 0 in
    /// greatest, except where the golden picture itself is read (direct).
    const std::uint8_t* least(int y) const { return m_direct ? golden(y) : slot(y); }
    const std::uint8_t* greatest(int y) const { return m_direct ? golden(y) : slot(y) + m_stride; }
    /// Whether all rows know the same columns, if any.
    bool direct() const { return m_direct; }

private:
    /// A place in the golden picture in units of 2^-32 pixels.
    struct Place
    {
        std::int64_t x, y;
    };

    Place placeOf(int x, int y) const;
    bool holds(const Place& place) const;
    void sample(int y, Known known, std::uint8_t* out) const;
    const std::uint8_t* golden(int y) const
    {
        return m_golden.row(y + int(m_origin.y >> 32)) + std::ptrdiff_t(m_origin.x >> 32);
    }
    std::uint8_t* slot(int y) const { return m_bytes.get() + std::size_t(y % m_kept) * 2 * m_stride; }

    ConstGrayView m_golden;
    int m_width;
    int m_kept;
    std::size_t m_stride;
    bool m_valid = false;
    bool m_direct = false;
    Place m_origin{0, 0}, m_right{0, 0}, m_down{0, 0}; ///< of pixel (0, 0), and the steps from pixel to pixel
    ScratchBytes m_bytes;
};

} // namespace ormalux
