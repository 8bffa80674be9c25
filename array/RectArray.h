#pragma once

#include "array/RecordArray.h"
#include "platform/Export.h"
#include "platform/Types.h"

/// Rectangles. Neither the order of the corners nor whether right and bottom belong to them matters here.
class ORMALUX_API CRectArray : public ormalux::RecordArray<RECT>
{
public:
    using RecordArray::RecordArray;
    CRectArray() = default;
    CRectArray(const CRectArray&) = default;
    /// Copies the records; the room grows as needed and never shrinks.
    CRectArray& operator=(const CRectArray& other);

    virtual void Add(int left, int top, int right, int bottom) { append(RECT{left, top, right, bottom}); }
    virtual void Add(const RECT& rect) { append(rect); }
    /// Deliberate: overwrites the record at index, and the one behind it then stands twice: Insert(1, r)
    /// makes [a, r, c, c] of [a, b, c]. At the last record it overwrites and shows the slot behind it; at or
    /// behind the count it stores at index and the count grows by one.
    virtual void Insert(int index, int left, int top, int right, int bottom)
    {
        insertOver(index, RECT{left, top, right, bottom});
    }
    virtual void Insert(int index, const RECT& rect) { insertOver(index, rect); }
    /// Overwrites the record at index.
    virtual void SetAt(int index, int left, int top, int right, int bottom)
    {
        setAt(index, RECT{left, top, right, bottom});
    }
    virtual void SetAt(int index, const RECT& rect) { setAt(index, rect); }

    // Stable ascending sorts; width is right - left.
    virtual void SortLeft();
    virtual void SortTop();
    virtual void SortRight();
    virtual void SortBottom();
    virtual void SortWidth();
    /// Deliberate: orders by width, as SortWidth does.
    virtual void SortHeight();

    /// Moves every rectangle; coordinates wrap at 32 bits.
    void Offset(int dx, int dy);
    /// The mean of the rectangles' centres (left + (right - left) / 2, likewise in y, in integers),
    /// truncated; 0x80000000 in both coordinates when empty.
    POINT CenterPoint();
    /// The smallest rectangle around all corners, in order; four 0 values when empty.
    RECT GetBounds();
};
