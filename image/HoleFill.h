#pragma once

#include "image/PixelBlock.h"

namespace ormalux {

/// Fills the places that a rotation did not reach. Pixels are counted row by row without the bytes between
/// rows.
class HoleFill
{
public:
    explicit HoleFill(const PixelBlock& image);

    /// Gives the unreached pixels from first up to, excluding, end their values, the pixels around them being
    /// as they stay. They must be 0 before.
    void fill(std::int64_t first, std::int64_t end) const
    {
        if (first < end)
            fillSome(first, end);
    }

private:
    void fillSome(std::int64_t first, std::int64_t end) const;
    std::uint8_t* at(std::int64_t pixel) const;

    PixelBlock m_image;
    std::int64_t m_count;
    bool m_packed;
};

} // namespace ormalux
