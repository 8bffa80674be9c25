#pragma once

#include "image/HoleFill.h"
#include "image/PixelBlock.h"
#include "image/RotationPath.h"

#include <cstddef>
#include <cstdint>

namespace ormalux {

// A rotated picture is made in tiles of whole rows, which stay in a core's own cache. Every tile takes its
// pixels from the source rows in order, so the last writer wins whoever makes the other tiles.

/// Target rows, end exclusive.
struct TileRows
{
    int top;
    int end;
};

/// The part of a tile between its first and its last pixel that was reached, counted in the picture's pixels;
/// nothing was reached when it is empty.
struct Reached
{
    std::int64_t first = 0;
    std::int64_t end = 0;
};

/// Makes tiles by moving each source pixel to its target, for any angle. The holes at a tile's ends have
/// neighbours in other tiles: they are left 0 for the caller to fill.
class ScatteredTiles
{
public:
    /// source is a copy of target, and path outlives the maker.
    ScatteredTiles(const PixelBlock& source, const PixelBlock& target, const RotationPath& path)
        : m_source(source), m_target(target), m_path(path), m_fill(target)
    {}
    /// What make needs as scratch for tiles of so many rows, aligned to 8 bytes.
    std::size_t scratchBytes(int rows) const;
    Reached make(TileRows rows, std::byte* scratch) const;

private:
    PixelBlock m_source;
    PixelBlock m_target;
    const RotationPath& m_path;
    HoleFill m_fill;
};

/// Makes tiles row by row from the runs of source pixels that stay together in a row; for small angles and
/// gray pixels. Otherwise as ScatteredTiles.
class RunTiles
{
public:
    /// The source buffer must be readable 64 bytes beyond its end.
    RunTiles(const PixelBlock& source, const PixelBlock& target, const RotationPath& path)
        : m_source(source), m_target(target), m_path(path), m_fill(target)
    {}
    /// Whether the runs are right for the rotation and long enough to be worth while.
    static bool suit(const PixelBlock& image, const RotationPath& path);

    std::size_t scratchBytes(int rows) const;
    Reached make(TileRows rows, std::byte* scratch) const;

private:
    PixelBlock m_source;
    PixelBlock m_target;
    const RotationPath& m_path;
    HoleFill m_fill;
};

} // namespace ormalux
