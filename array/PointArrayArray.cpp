#include "array/PointArray.h"

#include "array/Polygon.h"
#include "array/RecordSort.h"
#include "array/Rectangles.h"

void CPointArrayArray::SortPointCount()
{
    sortBy([](const CPointArray& member) { return member.records().size(); });
}

RECT CPointArrayArray::GetBounds()
{
    ormalux::Bounds bounds;
    for (CPointArray& member : records())
        for (const POINT& p : member.records())
            bounds.include(p.x, p.y);
    return bounds.rect();
}

POINT CPointArrayArray::CenterPoint()
{
    ormalux::MeanPoint mean;
    for (CPointArray& member : records())
        if (!member.records().empty())
            mean.include(member.CenterPoint());
    return mean.point();
}

int CPointArrayArray::PtInPolygon(int x, int y)
{
    if (m_count == 0)
        return 0; // Deliberate: not -1; callers take it as they find it.
    const std::span<CPointArray> members = records();
    for (std::size_t i = 0; i < members.size(); ++i)
        if (ormalux::windingPolygonHolds(members[i].records(), {x, y}))
            return int(i);
    return -1;
}

void CPointArrayArray::Offset(int dx, int dy)
{
    for (CPointArray& member : records())
        member.Offset(dx, dy);
}
