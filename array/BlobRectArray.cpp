#include "array/BlobRectArray.h"

#include "array/RecordSort.h"
#include "array/Rectangles.h"
#include "platform/Stdlib.h"

namespace {

template <class FieldOf>
int average(std::span<const _stBlobRect> blobs, int count, FieldOf fieldOf)
{
    LONG sum = 0;
    for (const _stBlobRect& blob : blobs)
        sum = ormalux::wrappingSum(sum, fieldOf(blob));
    return count > 0 ? sum / count : 0;
}

} // namespace

void CBlobRectArray::SortLeft()
{
    sortBy([](const _stBlobRect& b) { return b.left; });
}

void CBlobRectArray::SortTop()
{
    sortBy([](const _stBlobRect& b) { return b.top; });
}

void CBlobRectArray::SortRight()
{
    sortBy([](const _stBlobRect& b) { return b.right; });
}

void CBlobRectArray::SortBottom()
{
    sortBy([](const _stBlobRect& b) { return b.bottom; });
}

void CBlobRectArray::SortWidth()
{
    sortBy([](const _stBlobRect& b) { return std::int64_t(b.right) - b.left; });
}

void CBlobRectArray::SortHeight()
{
    sortBy([](const _stBlobRect& b) { return std::int64_t(b.bottom) - b.top; });
}

void CBlobRectArray::SortPixelCount()
{
    sortBy([](const _stBlobRect& b) { return b.pixel_count; });
}

int CBlobRectArray::GetAverageLeft()
{
    return average(records(), m_count, [](const _stBlobRect& b) { return b.left; });
}

int CBlobRectArray::GetAverageTop()
{
    return average(records(), m_count, [](const _stBlobRect& b) { return b.top; });
}

int CBlobRectArray::GetAverageRight()
{
    return average(records(), m_count, [](const _stBlobRect& b) { return b.right; });
}

int CBlobRectArray::GetAverageBottom()
{
    return average(records(), m_count, [](const _stBlobRect& b) { return b.bottom; });
}

int CBlobRectArray::GetAverageCenterX()
{
    return average(records(), m_count, [](const _stBlobRect& b) { return ormalux::middle(b.left, b.right); });
}

int CBlobRectArray::GetAverageCenterY()
{
    return average(records(), m_count, [](const _stBlobRect& b) { return ormalux::middle(b.top, b.bottom); });
}

int CBlobRectArray::ROIOverKill(int left, int top, int right, int bottom)
{
    return retain([=](const _stBlobRect& b, std::size_t) {
        const auto inColumns = [=](LONG x) { return left <= x && x <= right; };
        const auto inRows = [=](LONG y) { return top <= y && y <= bottom; };
        return inColumns(b.left) || inColumns(b.right) || inRows(b.top) || inRows(b.bottom);
    });
}

int CBlobRectArray::DistanceOverKill(int distance)
{
    // Records only move down, so the one behind is still where it was.
    const std::span<const _stBlobRect> all = records();
    return retain([=](const _stBlobRect& b, std::size_t index) {
        if (index + 1 >= all.size())
            return true;
        const POINT here = ormalux::centerOf(b);
        const POINT behind = ormalux::centerOf(all[index + 1]);
        return CStdlib::Distance(here.x, here.y, behind.x, behind.y) <= distance;
    });
}

RECT CBlobRectArray::GetBounds()
{
    return ormalux::boundsOf<_stBlobRect>(records());
}

POINT CBlobRectArray::CenterPoint()
{
    ormalux::MeanPoint mean;
    for (_stBlobRect& b : records()) {
        b.center = ormalux::centerOf(b);
        mean.include(b.center);
    }
    return mean.point();
}

CBlobRectArray& CBlobRectArray::operator+(const CBlobRectArray& other)
{
    join(other, std::int64_t(m_count) + other.m_count);
    return *this;
}
