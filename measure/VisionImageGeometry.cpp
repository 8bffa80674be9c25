#include "image/VisionImage.h"

#include "array/Polygon.h"
#include "array/WholeAppend.h"
#include "measure/Geometry.h"
#include "measure/Tracing.h"
#include "platform/Stdlib.h"

#include <algorithm>
#include <array>

using namespace ormalux;

namespace {

/// Appends the traced pixels that 32-bit coordinates hold.
auto appendTo(WholeAppend<CPointArray>& whole)
{
    return [&whole](std::int64_t x, std::int64_t y) {
        if (fit32(x, y))
            whole.add(int(x), int(y));
    };
}

} // namespace

long CKestImage::Distance(int x1, int y1, int x2, int y2)
{
    return CStdlib::Distance(x1, y1, x2, y2);
}

double CKestImage::GetAngle(int x1, int y1, int x2, int y2)
{
    return directionDegrees(std::int64_t(x2) - x1, std::int64_t(y2) - y1);
}

void CKestImage::RotatePoint(int x, int y, double angle, int cx, int cy, int* ox, int* oy)
{
    const POINT turned = rotated(x, y, angle, cx, cy);
    if (ox)
        *ox = turned.x;
    if (oy)
        *oy = turned.y;
}

int CKestImage::PtInRectangle(int x1, int y1, int x2, int y2, int px, int py)
{
    // Deliberate: both edges are compared from the same side and the bottom is ignored; callers get 1 at or
    // left of the left edge, at or above the top one.
    return px <= std::min(x1, x2) && px <= std::max(x1, x2) && py <= std::min(y1, y2);
}

int CKestImage::PtInPolygon(const POINT* points, unsigned int n, const POINT& p)
{
    return points && insideByCrossings({points, n}, p);
}

int CKestImage::PtInCycle(int cx, int cy, int r, int px, int py)
{
    std::array<POINT, 2 * 359> outline;
    std::size_t count = 0;
    visitArc({cx, cy, r}, 0, 359, [&](std::int64_t x, std::int64_t y) {
        if (fit32(x, y))
            outline[count++] = {LONG(x), LONG(y)};
    });
    return windingPolygonHolds({outline.data(), count}, {px, py});
}

int CKestImage::GetLineSegment(int x1, int y1, int x2, int y2, CPointArray& ar)
{
    WholeAppend whole(ar);
    const LineWalk walk({x1, y1}, {x2, y2});
    if (walk.count() <= maxTracedPoints)
        walk.visit({0, walk.count()}, appendTo(whole));
    return whole.finish();
}

int CKestImage::GetCycleSegment(int cx, int cy, int r, CPointArray& ar)
{
    WholeAppend whole(ar);
    if (r <= maxTracedRadius)
        visitCircle({cx, cy, r}, {0, std::int64_t(r) + 1}, appendTo(whole));
    return whole.finish();
}

int CKestImage::GetEllipseSegment(int cx, int cy, int a, int b, CPointArray& ar)
{
    WholeAppend whole(ar);
    visitEllipse(cx, cy, a, b, appendTo(whole));
    return whole.finish();
}

int CKestImage::GetArcSegment(int cx, int cy, int r, int start, int end, CPointArray& ar)
{
    WholeAppend whole(ar);
    visitArc({cx, cy, r}, start, end, appendTo(whole));
    return whole.finish();
}

int CKestImage::IntersectLine(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4)
{
    return segmentsCross({x1, y1}, {x2, y2}, {x3, y3}, {x4, y4});
}

int CKestImage::GetCrossPoint(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, int& x, int& y)
{
    x = y = -1;
    POINT crossing;
    if (!segmentsCross({x1, y1}, {x2, y2}, {x3, y3}, {x4, y4}) ||
        !crossingPixel({x1, y1}, {x2, y2}, {x3, y3}, {x4, y4}, crossing))
        return 0;
    x = crossing.x;
    y = crossing.y;
    return 1;
}
