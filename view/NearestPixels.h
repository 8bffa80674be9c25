#pragma once

#include "image/PixelSource.h"

#include <cstdint>
#include <span>

namespace ormalux {

/// What a device column or row shows when it lies beside the picture.
inline constexpr int noPixel = -1;

/// Fills 32-bit device pixels (0xffRRGGBB, rows outStride pixels apart) from a picture: device pixel (x, y)
/// shows picture pixel (columns[x], rows[y]), and keeps what it held where either is noPixel. Every other
/// entry lies in the picture and they rise or fall; noPixel stands only before and behind the others.
void copyNearest(const PixelSource& source, std::span<const int> columns, std::span<const int> rows,
                 std::uint32_t* out, std::ptrdiff_t outStride);

} // namespace ormalux
