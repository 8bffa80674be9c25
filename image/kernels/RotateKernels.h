#pragma once

#include "image/RotationPath.h"

#include <cstddef>
#include <cstdint>

namespace ormalux::kernels {

/// The cells that a rotation moves count pixels to whose distances from the centre are dx, dx + 1, ... and
/// exact in single precision: (target row - top) * width + target column. The targets must lie in the picture
/// and their cells fit 31 bits.
void rotationCells(const RotationRow& row, double dx, int top, int width, std::int32_t* cells,
                   std::size_t count);

/// Cells hold 256 + the pixel that was moved there, or 0. Writes the pixels, 0 for empty cells, and a bit for
/// each of them, 1 where the cell is empty, the lowest bit first.
void unpackCells(const std::uint16_t* cells, std::size_t count, std::uint8_t* pixels, std::uint64_t* empty);

} // namespace ormalux::kernels
