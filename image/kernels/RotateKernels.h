#pragma once

#include "image/RotationPath.h"

#include <cstddef>
#include <cstdint>

namespace ormalux {

/// For every source row, the run of its pixels that goes to one target row: count of them, none when count is
/// not above 0, from the byte `from` of an unpadded gray picture on. They go to the columns target to last:
/// the first `together` one by one, the next to the same column as the last of these, the rest mostly one by
/// one again.
struct RunTable
{
    std::int32_t* from;
    std::int32_t* count;
    std::int32_t* together;
    std::int32_t* target;
    std::int32_t* last;

    static std::size_t capacity(std::size_t rows) { return (rows + 15) & ~std::size_t(15); }
    static std::size_t bytesFor(std::size_t rows) { return 5 * capacity(rows) * sizeof(std::int32_t); }
    RunTable(std::size_t rows, std::byte* scratch)
        : from(reinterpret_cast<std::int32_t*>(scratch)), count(from + capacity(rows)),
          together(count + capacity(rows)), target(together + capacity(rows)), last(target + capacity(rows))
    {}
};

namespace kernels {

/// The cells that a rotation moves count pixels to whose distances from the centre are dx, dx + 1, ... and
/// exact in single precision: (target row - top) * width + target column. The targets must lie in the picture
/// and their cells fit 31 bits.
void rotationCells(const RotationRow& row, double dx, int top, int width, std::int32_t* cells,
                   std::size_t count);

/// Cells hold 256 + the pixel that was moved there, or 0; the ones before the first and after the last are 0.
/// Writes the pixels and a bit for each of them, the lowest bit first: 1 where the cell is empty and the
/// pixel 0. Empty cells between two full ones are filled at once, with half the sum of these, and count as
/// full.
void unpackCells(const std::uint16_t* cells, std::size_t count, std::uint8_t* pixels, std::uint64_t* empty);

/// The runs of the given source rows that go to a target row, ordered from left to right: with a negative
/// sine by rising source rows, with a positive one by falling ones. Needs exact distances, a cosine that is
/// not near 0 and a sine that is not too small. Writes up to the table's capacity.
void rotationRuns(const RotationPath& path, ColumnRange sourceRows, int targetRow, const RunTable& runs);

} // namespace kernels

} // namespace ormalux
