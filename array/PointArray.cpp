#include "array/PointArray.h"

#include "array/Outline.h"
#include "array/Polygon.h"
#include "array/RecordFind.h"
#include "array/RecordSort.h"
#include "array/Rectangles.h"

namespace {

template <class CoordinateOf>
int average(std::span<const POINT> points, int count, CoordinateOf coordinateOf)
{
    std::int64_t sum = 0;
    for (const POINT& p : points)
        sum += coordinateOf(p);
    return count > 0 ? int(sum / count) : 0;
}

} // namespace

int CPointArray::Find(int x, int y, int start)
{
    return ormalux::findFrom<POINT>(records(), start, [=](const POINT& p) { return p == POINT{x, y}; });
}

void CPointArray::SortX()
{
    sortBy([](const POINT& p) { return p.x; });
}

void CPointArray::SortY()
{
    sortBy([](const POINT& p) { return p.y; });
}

int CPointArray::GetAverageX()
{
    return average(records(), m_count, [](const POINT& p) { return p.x; });
}

int CPointArray::GetAverageY()
{
    return average(records(), m_count, [](const POINT& p) { return p.y; });
}

int CPointArray::IsPoint(int x, int y)
{
    return CPointArray::Find(x, y, 0);
}

void CPointArray::RemovePoint(int x, int y)
{
    const int index = IsPoint(x, y);
    if (index >= 0)
        Remove(index);
}

void CPointArray::Outline()
{
    m_count -= int(ormalux::removeRunInteriors(records()));
}

RECT CPointArray::GetBounds()
{
    ormalux::Bounds bounds;
    for (const POINT& p : records())
        bounds.include(p.x, p.y);
    return bounds.rect();
}

POINT CPointArray::CenterPoint()
{
    ormalux::MeanPoint mean;
    for (const POINT& p : records())
        mean.include(p);
    return mean.point();
}

int CPointArray::PtInPolygon(int x, int y)
{
    return ormalux::windingPolygonHolds(records(), {x, y}) ? 1 : 0;
}

void CPointArray::Offset(int dx, int dy)
{
    for (POINT& p : records())
        p = {ormalux::wrappingSum(p.x, dx), ormalux::wrappingSum(p.y, dy)};
}
