#include "view/ViewTracker.h"

#include <algorithm>
#include <climits>

namespace ormalux {

namespace {

/// Which sides a handle moves.
struct Sides
{
    bool left;
    bool top;
    bool right;
    bool bottom;
};
constexpr Sides sides[] = {
    {true, true, true, true},    {true, true, false, false},  {false, true, false, false},
    {false, true, true, false},  {false, false, true, false}, {false, false, true, true},
    {false, false, false, true}, {true, false, false, true},  {true, false, false, false}};

bool contains(const RECT& rect, QPointF point)
{
    return point.x() >= rect.left && point.x() < rect.right && point.y() >= rect.top &&
           point.y() < rect.bottom;
}

int middle(int first, int last)
{
    return int(first + (std::int64_t(last) - first) / 2);
}

} // namespace

CRect ordered(const RECT& rect)
{
    return {std::min(rect.left, rect.right), std::min(rect.top, rect.bottom), std::max(rect.left, rect.right),
            std::max(rect.top, rect.bottom)};
}

CPoint handlePoint(const RECT& rect, int handle)
{
    const Sides& moved = sides[std::clamp(handle, 0, trackerHandles)];
    const int x = moved.left == moved.right ? middle(rect.left, rect.right)
                  : moved.left              ? rect.left
                                            : rect.right;
    const int y = moved.top == moved.bottom ? middle(rect.top, rect.bottom)
                  : moved.top               ? rect.top
                                            : rect.bottom;
    return {x, y};
}

CRect handleSquare(const RECT& device, int handle)
{
    const CPoint point = handlePoint(device, handle);
    return {shifted(point.x, -5), shifted(point.y, -5), shifted(point.x, 5), shifted(point.y, 5)};
}

int hitTracker(const RECT& device, QPointF point)
{
    const CRect frame = ordered(device);
    if (contains(frame, point))
        return trackerMove;
    for (int handle = 1; handle <= trackerHandles; ++handle)
        if (contains(handleSquare(frame, handle), point))
            return handle;
    return trackerMiss;
}

CRect draggedTracker(const RECT& tracker, int handle, int dx, int dy)
{
    if (handle < 0 || handle > trackerHandles)
        return tracker;
    const Sides& moved = sides[handle];
    return {moved.left ? shifted(tracker.left, dx) : tracker.left,
            moved.top ? shifted(tracker.top, dy) : tracker.top,
            moved.right ? shifted(tracker.right, dx) : tracker.right,
            moved.bottom ? shifted(tracker.bottom, dy) : tracker.bottom};
}

int shifted(int value, int offset)
{
    return int(std::clamp<std::int64_t>(std::int64_t(value) + offset, INT_MIN, INT_MAX));
}

} // namespace ormalux
