#include "image/Rotate.h"

#include "image/Mirror.h"
#include "image/RotationTile.h"
#include "image/WorkPool.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <new>

namespace ormalux {

namespace {

constexpr std::int64_t pixelsPerTile = 192 * 1024;
// Runs are copied by whole pieces, so that the source is read beyond its end.
constexpr std::size_t slackBytes = 64;

template <class T>
std::unique_ptr<T[]> allocate(std::size_t count)
{
    return std::unique_ptr<T[]>(new (std::nothrow) T[count]);
}

// The holes between what was reached in one tile and in the next.
void fillBetween(const PixelBlock& image, const Reached* reached, std::int64_t tiles)
{
    const HoleFill fill(image);
    std::int64_t next = 0;
    for (std::int64_t tile = 0; tile < tiles; ++tile)
        if (reached[tile].first < reached[tile].end) {
            fill.fill(next, reached[tile].first);
            next = reached[tile].end;
        }
    fill.fill(next, std::int64_t(image.width) * image.height);
}

template <class Tiles>
void rotateInTiles(const PixelBlock& image, const RotationPath& path, std::int64_t picosecondsPerPixel)
{
    const int rows = int(std::clamp<std::int64_t>(pixelsPerTile / image.width, 1, image.height));
    const std::int64_t tiles = (std::int64_t(image.height) + rows - 1) / rows;
    const auto copy = allocate<std::uint8_t>(image.length + slackBytes);
    PixelBlock source = image;
    source.bytes = copy.get();
    const Tiles maker(source, image, path);
    const std::size_t scratchSize = maker.scratchBytes(rows);
    const auto scratch = allocate<std::byte>(scratchSize * std::size_t(bandCount()));
    const auto reached = allocate<Reached>(std::size_t(tiles));
    if (!copy || !scratch || !reached)
        return;
    std::memcpy(copy.get(), image.bytes, image.length);
    if (image.stride != image.rowBytes())
        std::memset(image.bytes, 0, image.length);
    const std::int64_t pixels = std::int64_t(image.width) * image.height;
    runBands(Job::RotateMove, tiles, {pixels * picosecondsPerPixel / 1000}, [&](const Band& band) {
        for (std::int64_t tile = band.first; tile < band.end; ++tile) {
            const std::int64_t top = tile * rows;
            const int end = int(std::min<std::int64_t>(top + rows, image.height));
            reached[tile] =
                maker.make({int(top), end}, scratch.get() + scratchSize * std::size_t(band.index));
        }
    });
    fillBetween(image, reached.get(), tiles);
}

} // namespace

void rotate(const PixelBlock& image, int cx, int cy, double angle)
{
    if (!image.whole() || !std::isfinite(angle))
        return;
    if (angle == -180.0)
        return halfTurn(image);
    const RotationPath path(image.width, image.height, cx, cy, angle);
    if (RunTiles::suit(image, path))
        rotateInTiles<RunTiles>(image, path, 500);
    else
        rotateInTiles<ScatteredTiles>(image, path, 1500);
}

} // namespace ormalux
