#pragma once

#include "image/GrayView.h"
#include "measure/BlobFinder.h"
#include "measure/Growable.h"
#include "platform/Types.h"

#include <span>

namespace ormalux {

/// Lists the pixels of blobs in the order of a depth-first walk. Every pixel remembers the step that led to
/// it, so the walk needs no stack.
class BlobWalk
{
public:
    /// Forgets all visits. False when memory is short.
    bool prepare(const ConstGrayView& image, const BlobRegion& region, ObjectLevels levels);

    /// Walks from the seed, which must be an object pixel of the region, over every object pixel not yet
    /// visited, and writes them in order, as many as points has room for.
    void list(POINT seed, std::span<POINT> points);

private:
    enum Step : std::uint8_t
    {
        NotVisited,
        Seed,
        Left,
        Right,
        Up,
        Down
    };

    /// The visit of a pixel; one column left of and one row above the region belong to the map.
    std::uint8_t& visit(int x, int y)
    {
        return m_visits[std::size_t(y - m_region.top + 1) * m_stride + std::size_t(x - m_region.left + 1)];
    }
    bool enter(int x, int y, Step step);
    bool advance(POINT& at, POINT& entered);

    ConstGrayView m_image;
    BlobRegion m_region{0, 0, 0, 0};
    ObjectLevels m_levels{1, 0};
    Growable<std::uint8_t> m_visits;
    std::size_t m_stride = 0;
};

} // namespace ormalux
