#pragma once

#include "image/GrayView.h"
#include "measure/BlobFinder.h"
#include "platform/Types.h"

#include <algorithm>
#include <vector>

/// The blob search as a walk over single pixels with parent links: slow, short and plainly right.
namespace testing_support {

struct WalkedBlob
{
    int left, top, right, bottom, pixels;
    std::vector<POINT> points;

    bool operator==(const WalkedBlob&) const = default;
};

inline std::vector<WalkedBlob> walkBlobs(const ormalux::ConstGrayView& image, const ormalux::BlobRegion& area,
                                         ormalux::ObjectLevels levels, const ormalux::BlobSizes& sizes)
{
    struct Cell
    {
        bool visited;
        POINT parent;
    };
    std::vector<Cell> map(std::size_t(image.width) * image.height);
    const auto cell = [&](int x, int y) -> Cell& { return map[std::size_t(y) * image.width + x]; };
    const auto object = [&](int x, int y) {
        return image.row(y)[x] >= levels.low && image.row(y)[x] <= levels.high;
    };
    std::vector<WalkedBlob> found;
    for (int seedY = area.top; seedY < area.bottom; ++seedY)
        for (int seedX = area.left; seedX < area.right; ++seedX) {
            if (!object(seedX, seedY))
                continue;
            WalkedBlob blob{seedX, seedY, seedX, seedY, 1, {{seedX, seedY}}};
            cell(seedX, seedY) = {true, {seedX, seedY}};
            int x = seedX, y = seedY;
            const auto step = [&](bool allowed, int nextX, int nextY) {
                if (!allowed || !object(nextX, nextY) || cell(nextX, nextY).visited)
                    return false;
                cell(nextX, nextY) = {true, {x, y}};
                ++blob.pixels;
                blob.points.push_back({nextX, nextY});
                x = std::clamp(nextX, area.left, area.right - 1);
                y = std::clamp(nextY, area.top, area.bottom - 1);
                blob.left = std::min(blob.left, x);
                blob.right = std::max(blob.right, x);
                blob.top = std::min(blob.top, y);
                blob.bottom = std::max(blob.bottom, y);
                return true;
            };
            for (;;) {
                if (step(x > 0, x - 1, y) || step(x < area.right - 1, x + 1, y) || step(y > 0, x, y - 1) ||
                    step(y < area.bottom - 1, x, y + 1))
                    continue;
                const POINT parent = cell(x, y).parent;
                if (parent == POINT{x, y})
                    break;
                x = parent.x;
                y = parent.y;
            }
            if (sizes.admit(blob.right - blob.left + 1, blob.bottom - blob.top + 1))
                found.push_back(blob);
        }
    return found;
}

} // namespace testing_support
