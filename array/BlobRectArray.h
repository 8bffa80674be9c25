#pragma once

#include "array/RecordArray.h"
#include "array/Records.h"
#include "platform/Export.h"

/// Blobs by their bounding rectangles; right and bottom are a blob's last column and row. There is no Insert.
class ORMALUX_API CBlobRectArray : public ormalux::RecordArray<_stBlobRect>
{
public:
    using RecordArray::RecordArray;

    /// Copies left, top, right, bottom and pixel_count; the other words are 0.
    virtual void Add(const _stBlobRect& blob)
    {
        append(_stBlobRect{blob.left, blob.top, blob.right, blob.bottom, blob.pixel_count, 0, 0, {}, {}});
    }
    virtual void Add(int left, int top, int right, int bottom, int pixel_count, int value1, int value2)
    {
        append(_stBlobRect{left, top, right, bottom, pixel_count, value1, value2, {}, {}});
    }
    virtual void Add(int left, int top, int right, int bottom, int pixel_count)
    {
        append(_stBlobRect{left, top, right, bottom, pixel_count, 0, 0, {}, {}});
    }
    /// Overwrites the record at index; the words that are not given are 0.
    virtual void SetAt(int index, int left, int top, int right, int bottom, int pixel_count)
    {
        setAt(index, _stBlobRect{left, top, right, bottom, pixel_count, 0, 0, {}, {}});
    }
    virtual void SetAt(int index, int left, int top, int right, int bottom, int pixel_count, int value1,
                       int value2)
    {
        setAt(index, _stBlobRect{left, top, right, bottom, pixel_count, value1, value2, {}, {}});
    }
    /// Copies the whole record.
    virtual void SetAt(int index, const _stBlobRect& blob) { setAt(index, blob); }

    // Stable ascending sorts; width is right - left, height bottom - top.
    virtual void SortLeft();
    virtual void SortTop();
    virtual void SortRight();
    virtual void SortBottom();
    virtual void SortWidth();
    virtual void SortHeight();
    virtual void SortPixelCount();

    // The sum of the field, wrapping at 32 bits, over the count, truncated; 0 when empty. A record's centre
    // is left + (right - left) / 2, likewise in y, in integers.
    int GetAverageLeft();
    int GetAverageTop();
    int GetAverageRight();
    int GetAverageBottom();
    int GetAverageCenterX();
    int GetAverageCenterY();

    /// Removes every record whose left and right lie outside left .. right and whose top and bottom lie
    /// outside top .. bottom, ends included. Deliberate: a single edge in its range keeps the record, even if
    /// the rectangle does not meet the region. Returns the number removed.
    int ROIOverKill(int left, int top, int right, int bottom);
    /// Walks the records and removes each whose centre is further than distance, by CStdlib::Distance, from
    /// the centre of the one behind it; the last record stays. Returns the number removed.
    int DistanceOverKill(int distance);
    /// The smallest rectangle around all corners, in order; four 0 values when empty.
    RECT GetBounds();
    /// The mean of the centres, truncated; also stores every record's own centre in it. 0x80000000 in both
    /// coordinates when empty.
    POINT CenterPoint();
    /// Appends the other's records to this very array and returns it; the other may be this one. The room
    /// becomes the count.
    CBlobRectArray& operator+(const CBlobRectArray& other);
};
