#include "array/RectArray.h"

#include "array/RecordSort.h"
#include "array/Rectangles.h"

CRectArray& CRectArray::operator=(const CRectArray& other)
{
    if (this == &other)
        return *this;
    const int before = m_count;
    RemoveAll();
    if (!makeRoomForMore(std::size_t(other.m_count))) {
        m_count = before;
        return *this;
    }
    const std::span<const RECT> from = other.records();
    const std::span<RECT> to = appendForOverwrite(std::size_t(other.m_count));
    const std::size_t copied = std::min(from.size(), to.size());
    std::copy_n(from.begin(), copied, to.begin());
    std::fill(to.begin() + std::ptrdiff_t(copied), to.end(), RECT{});
    return *this;
}

void CRectArray::SortLeft()
{
    sortBy([](const RECT& r) { return r.left; });
}

void CRectArray::SortTop()
{
    sortBy([](const RECT& r) { return r.top; });
}

void CRectArray::SortRight()
{
    sortBy([](const RECT& r) { return r.right; });
}

void CRectArray::SortBottom()
{
    sortBy([](const RECT& r) { return r.bottom; });
}

void CRectArray::SortWidth()
{
    sortBy([](const RECT& r) { return std::int64_t(r.right) - r.left; });
}

void CRectArray::SortHeight()
{
    CRectArray::SortWidth(); // Deliberate: callers know both as one ordering.
}

void CRectArray::Offset(int dx, int dy)
{
    for (RECT& r : records())
        r = {ormalux::wrappingSum(r.left, dx), ormalux::wrappingSum(r.top, dy),
             ormalux::wrappingSum(r.right, dx), ormalux::wrappingSum(r.bottom, dy)};
}

POINT CRectArray::CenterPoint()
{
    ormalux::MeanPoint mean;
    for (const RECT& r : records())
        mean.include(ormalux::centerOf(r));
    return mean.point();
}

RECT CRectArray::GetBounds()
{
    return ormalux::boundsOf<RECT>(records());
}
