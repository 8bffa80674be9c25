#include "image/Rotate.h"

#include "image/HoleFill.h"
#include "image/Mirror.h"
#include "image/RotationPath.h"
#include "image/WorkPool.h"
#include "image/kernels/RotateKernels.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <memory>
#include <new>

namespace ormalux {

namespace {

template <class T>
std::unique_ptr<T[]> allocate(std::int64_t count)
{
    return std::unique_ptr<T[]>(new (std::nothrow) T[std::size_t(count)]);
}

// A picture is made in tiles of whole rows whose cells stay in a core's own cache. A tile takes its pixels
// from the source rows in order, so the last writer wins whoever makes the other tiles.
constexpr std::int64_t cellsPerTile = 192 * 1024;

/// The part of a tile between its first and its last pixel that was reached, counted in the picture.
struct Reached
{
    std::int64_t first = 0;
    std::int64_t end = 0;
};

/// A cell keeps a pixel with a mark above it, or 0.
struct GrayCell
{
    using Type = std::uint16_t;
    static Type of(const std::uint8_t* pixel) { return Type(256 + *pixel); }
    static void put(Type cell, std::uint8_t* pixel) { *pixel = std::uint8_t(cell); }
    static constexpr int bytes = 1;
};

struct ColorCell
{
    using Type = std::uint32_t;
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
    static constexpr int bytes = 3;
};

void targetCells(const RotationPath& path, const RotationRow& row, int x, int count, int top, int width,
                 std::int32_t* cells)
{
    if (path.exactDistances())
        return kernels::rotationCells(row, path.dx(x), top, width, cells, std::size_t(count));
    for (int i = 0; i < count; ++i)
        cells[i] = (int(row.row(path.dx(x + i))) - top) * width + int(row.column(path.dx(x + i)));
}

/// Calls found(first, end) for every run of ones among the count bits.
template <class Found>
void forEachRun(const std::uint64_t* bits, std::int64_t count, Found found)
{
    std::int64_t i = 0;
    // The next bit from i on that differs from those that are skipped.
    const auto next = [&](std::uint64_t skipped) {
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
    while (next(0) < count) {
        const std::int64_t first = i;
        found(first, next(~std::uint64_t(0)));
    }
}

template <class Cell>
class TileMaker
{
public:
    using CellType = typename Cell::Type;

    TileMaker(const PixelBlock& source, const PixelBlock& target, const RotationPath& path, int rowsPerTile)
        : m_source(source), m_target(target), m_path(path), m_rows(rowsPerTile), m_fill(target)
    {}

    std::int64_t cellCount() const { return std::int64_t(m_rows) * m_target.width; }

    Reached make(std::int64_t tile, CellType* cells, std::uint64_t* empty) const
    {
        const int top = int(tile * m_rows);
        const int end = int(std::min<std::int64_t>(std::int64_t(top) + m_rows, m_target.height));
        const std::int64_t count = std::int64_t(end - top) * m_target.width;
        std::memset(cells, 0, std::size_t(count) * sizeof(CellType));
        const ColumnRange rows = m_path.sourceRows(top, end);
        for (int y = rows.first; y < rows.end; ++y)
            move(y, top, end, cells);
        unpack(cells, top, end, empty);
        return fillHoles(std::int64_t(top) * m_target.width, count, empty);
    }

private:
    void move(int y, int top, int end, CellType* cells) const
    {
        const RotationRow row = m_path.sourceRow(y);
        const ColumnRange columns = m_path.sourceColumns(row, top, end);
        const std::uint8_t* const pixels = m_source.row(y);
        std::int32_t targets[256];
        for (int x = columns.first; x < columns.end;) {
            const int count = std::min(256, columns.end - x);
            targetCells(m_path, row, x, count, top, m_target.width, targets);
            const std::uint8_t* const from = pixels + std::size_t(x) * Cell::bytes;
            for (int i = 0; i < count; ++i)
                cells[targets[i]] = Cell::of(from + i * Cell::bytes);
            x += count;
        }
    }

    void unpack(const CellType* cells, int top, int end, std::uint64_t* empty) const
    {
        const std::size_t width = std::size_t(m_target.width);
        const std::size_t count = std::size_t(end - top) * width;
        if constexpr (Cell::bytes == 1)
            if (m_target.stride == width)
                return kernels::unpackCells(cells, count, m_target.row(top), empty);
        std::memset(empty, 0, (count + 63) / 64 * sizeof *empty);
        std::size_t i = 0;
        for (int y = top; y < end; ++y)
            for (std::size_t x = 0; x < width; ++x, ++i) {
                Cell::put(cells[i], m_target.row(y) + x * Cell::bytes);
                empty[i / 64] |= std::uint64_t(cells[i] == 0) << (i % 64);
            }
    }

    // Holes at a tile's ends have neighbours in other tiles and are left to the caller.
    Reached fillHoles(std::int64_t base, std::int64_t count, const std::uint64_t* empty) const
    {
        Reached reached{base, base + count};
        forEachRun(empty, count, [&](std::int64_t first, std::int64_t end) {
            if (end == count)
                reached.end = base + first;
            else if (first == 0)
                reached.first = base + end;
            else
                m_fill.fill(base + first, base + end);
        });
        return reached;
    }

    PixelBlock m_source;
    PixelBlock m_target;
    const RotationPath& m_path;
    int m_rows;
    HoleFill m_fill;
};

template <class Cell>
void rotateInTiles(const PixelBlock& image, const RotationPath& path)
{
    const int rows = int(std::clamp<std::int64_t>(cellsPerTile / image.width, 1, image.height));
    const std::int64_t tiles = (std::int64_t(image.height) + rows - 1) / rows;
    const auto copy = allocate<std::uint8_t>(std::int64_t(image.length));
    PixelBlock source = image;
    source.bytes = copy.get();
    const TileMaker<Cell> maker(source, image, path, rows);
    const std::int64_t words = (maker.cellCount() + 63) / 64;
    const int bands = bandCount();
    const auto cells = allocate<typename Cell::Type>(bands * maker.cellCount());
    const auto empty = allocate<std::uint64_t>(bands * words);
    const auto reached = allocate<Reached>(tiles);
    if (!copy || !cells || !empty || !reached)
        return;
    std::memcpy(copy.get(), image.bytes, image.length);
    if (image.stride != image.rowBytes())
        std::memset(image.bytes, 0, image.length);
    runBands(Job::RotateMove, tiles, {std::int64_t(image.width) * image.height * 2}, [&](const Band& band) {
        for (std::int64_t tile = band.first; tile < band.end; ++tile)
            reached[tile] = maker.make(tile, cells.get() + band.index * maker.cellCount(),
                                       empty.get() + band.index * words);
    });
    const HoleFill fill(image);
    std::int64_t next = 0;
    for (std::int64_t tile = 0; tile < tiles; ++tile)
        if (reached[tile].first < reached[tile].end) {
            fill.fill(next, reached[tile].first);
            next = reached[tile].end;
        }
    fill.fill(next, std::int64_t(image.width) * image.height);
}

} // namespace

void rotate(const PixelBlock& image, int cx, int cy, double angle)
{
    if (!image.whole() || !std::isfinite(angle))
        return;
    if (angle == -180.0)
        return halfTurn(image);
    const RotationPath path(image.width, image.height, cx, cy, angle);
    if (image.bytesPerPixel == 1)
        rotateInTiles<GrayCell>(image, path);
    else
        rotateInTiles<ColorCell>(image, path);
}

} // namespace ormalux
