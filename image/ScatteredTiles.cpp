#include "image/RotationTile.h"

#include "image/kernels/RotateKernels.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace ormalux {

namespace {

/// A cell keeps a pixel with a mark above it, or 0.
struct GrayCell
{
    using Type = std::uint16_t;
    static constexpr int bytes = 1;
    static Type of(const std::uint8_t* pixel) { return Type(256 + *pixel); }
    static void put(Type cell, std::uint8_t* pixel) { *pixel = std::uint8_t(cell); }
};

struct ColorCell
{
    using Type = std::uint32_t;
    static constexpr int bytes = 3;
    static Type of(const std::uint8_t* pixel)
    {
        return Type(1) << 24 | Type(pixel[2]) << 16 | Type(pixel[1]) << 8 | pixel[0];
    }
    static void put(Type cell, std::uint8_t* pixel)
    {
        pixel[0] = std::uint8_t(cell);
        pixel[1] = std::uint8_t(cell >> 8);
        pixel[2] = std::uint8_t(cell >> 16);
    }
};

/// A tile in the making: a cell for every pixel between two that stay empty, and a bit for every hole.
template <class Cell>
struct Cells
{
    using Type = typename Cell::Type;

    std::size_t count;
    Type* cells;
    std::uint64_t* holes;

    static std::size_t holeWords(std::size_t count) { return (count + 63) / 64; }
    static std::size_t bytesFor(std::size_t count)
    {
        return holeWords(count) * sizeof(std::uint64_t) + (count + 2) * sizeof(Type);
    }
    Cells(std::size_t n, std::byte* scratch)
        : count(n), cells(reinterpret_cast<Type*>(scratch + holeWords(n) * sizeof(std::uint64_t)) + 1),
          holes(reinterpret_cast<std::uint64_t*>(scratch))
    {
        std::memset(cells - 1, 0, (count + 2) * sizeof(Type));
    }
};

void targetCells(const RotationPath& path, const RotationRow& row, int x, int count, int top, int width,
                 std::int32_t* targets)
{
    if (path.exactDistances())
        return kernels::rotationCells(row, path.dx(x), top, width, targets, std::size_t(count));
    for (int i = 0; i < count; ++i) {
        const double dx = path.dx(x + i);
        targets[i] = (int(row.row(dx)) - top) * width + int(row.column(dx));
    }
}

template <class Cell>
void moveRow(const PixelBlock& source, const RotationPath& path, int y, TileRows rows,
             typename Cell::Type* cells)
{
    const RotationRow row = path.sourceRow(y);
    const ColumnRange columns = path.sourceColumns(row, rows.top, rows.end);
    const std::uint8_t* from = source.row(y) + std::size_t(columns.first) * Cell::bytes;
    std::int32_t targets[256];
    for (int x = columns.first; x < columns.end;) {
        const int count = std::min(256, columns.end - x);
        targetCells(path, row, x, count, rows.top, source.width, targets);
        for (int i = 0; i < count; ++i, from += Cell::bytes)
            cells[targets[i]] = Cell::of(from);
        x += count;
    }
}

template <class Cell>
void unpack(const Cells<Cell>& tile, const PixelBlock& target, TileRows rows)
{
    if constexpr (Cell::bytes == 1)
        if (target.stride == target.rowBytes())
            return kernels::unpackCells(tile.cells, tile.count, target.row(rows.top), tile.holes);
    std::memset(tile.holes, 0, tile.holeWords(tile.count) * sizeof(std::uint64_t));
    std::size_t i = 0;
    for (int y = rows.top; y < rows.end; ++y)
        for (int x = 0; x < target.width; ++x, ++i) {
            Cell::put(tile.cells[i], target.row(y) + std::size_t(x) * Cell::bytes);
            tile.holes[i / 64] |= std::uint64_t(tile.cells[i] == 0) << (i % 64);
        }
}

/// Calls found(first, end) for every run of ones among the count bits.
template <class Found>
void forEachRun(const std::uint64_t* bits, std::int64_t count, Found found)
{
    std::int64_t i = 0;
    const auto skip = [&](std::uint64_t skipped) {
        while (i < count) {
            const std::uint64_t rest = (bits[i / 64] ^ skipped) >> (i % 64);
            if (rest != 0) {
                i += std::countr_zero(rest);
                break;
            }
            i += 64 - i % 64;
        }
        return i = std::min(i, count);
    };
    while (skip(0) < count) {
        const std::int64_t first = i;
        found(first, skip(~std::uint64_t(0)));
    }
}

template <class Cell>
Reached makeTile(const PixelBlock& source, const PixelBlock& target, const RotationPath& path,
                 const HoleFill& fill, TileRows rows, std::byte* scratch)
{
    const std::int64_t base = std::int64_t(rows.top) * target.width;
    const std::int64_t count = std::int64_t(rows.end - rows.top) * target.width;
    const Cells<Cell> tile(std::size_t(count), scratch);
    const ColumnRange sourceRows = path.sourceRows(rows.top, rows.end);
    for (int y = sourceRows.first; y < sourceRows.end; ++y)
        moveRow<Cell>(source, path, y, rows, tile.cells);
    unpack(tile, target, rows);
    Reached reached{base, base + count};
    forEachRun(tile.holes, count, [&](std::int64_t first, std::int64_t end) {
        if (end == count)
            reached.end = base + first;
        else if (first == 0)
            reached.first = base + end;
        else
            fill.fill(base + first, base + end);
    });
    return reached;
}

} // namespace

std::size_t ScatteredTiles::scratchBytes(int rows) const
{
    const std::size_t count = std::size_t(rows) * std::size_t(m_target.width);
    const std::size_t bytes =
        m_target.bytesPerPixel == 1 ? Cells<GrayCell>::bytesFor(count) : Cells<ColorCell>::bytesFor(count);
    return (bytes + 7) & ~std::size_t(7);
}

Reached ScatteredTiles::make(TileRows rows, std::byte* scratch) const
{
    if (m_target.bytesPerPixel == 1)
        return makeTile<GrayCell>(m_source, m_target, m_path, m_fill, rows, scratch);
    return makeTile<ColorCell>(m_source, m_target, m_path, m_fill, rows, scratch);
}

} // namespace ormalux
