#pragma once

#include "array/RecordArray.h"
#include "array/Records.h"
#include "platform/Export.h"

/// Blobs by their bounding rectangles.
class ORMALUX_API CBlobRectArray : public ormalux::RecordArray<_stBlobRect>
{
public:
    using RecordArray::RecordArray;
    CBlobRectArray() = default;
    CBlobRectArray(const CBlobRectArray&) = default;
    CBlobRectArray& operator=(const CBlobRectArray&) = default;

    /// Copies left, top, right, bottom and pixel_count; the other words are 0.
    virtual void Add(const _stBlobRect& blob)
    {
        Add(blob.left, blob.top, blob.right, blob.bottom, blob.pixel_count);
    }
    virtual void Add(int left, int top, int right, int bottom, int pixel_count, int value1, int value2)
    {
        append(_stBlobRect{left, top, right, bottom, pixel_count, value1, value2, {0, 0}, {0, 0, 0, 0}});
    }
    virtual void Add(int left, int top, int right, int bottom, int pixel_count)
    {
        append(_stBlobRect{left, top, right, bottom, pixel_count, 0, 0, {0, 0}, {0, 0, 0, 0}});
    }
    virtual void SetAt(int index, int left, int top, int right, int bottom, int pixel_count)
    {
        at(index) = _stBlobRect{left, top, right, bottom, pixel_count, 0, 0, {0, 0}, {0, 0, 0, 0}};
    }
    virtual void SetAt(int index, const _stBlobRect& blob) { at(index) = _stBlobRect(blob); }

    // Stable ascending sorts; width is right - left, height bottom - top.
    virtual void SortLeft();
    virtual void SortTop();
    virtual void SortRight();
    virtual void SortBottom();
    virtual void SortWidth();
    virtual void SortHeight();
    virtual void SortPixelCount();

    // Means of the fields as truncated integers; 0 when empty.
    int GetAverageLeft();
    int GetAverageTop();
    int GetAverageRight();
    int GetAverageBottom();
    int GetAverageCenterX();
    int GetAverageCenterY();

    /// Removes every record none of whose four edges lies in the range [left, right] or [top, bottom] of its
    /// axis. Deliberate: one edge in its range keeps the record, even if the rectangle does not meet the
    /// region. Returns the number removed.
    int ROIOverKill(int left, int top, int right, int bottom);
    /// Walks the records and removes each whose centre is further than distance from its successor's; returns
    /// the number removed.
    int DistanceOverKill(int distance);
    RECT GetBounds();
    /// The mean of the centres, truncated; also stores every record's own centre. 0x80000000 when empty.
    POINT CenterPoint();
    /// Appends the other's records to this array and returns it; the reported room becomes the count.
    CBlobRectArray& operator+(const CBlobRectArray& other);
};
