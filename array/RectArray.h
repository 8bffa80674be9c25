#pragma once

#include "array/RecordArray.h"
#include "platform/Export.h"
#include "platform/Types.h"

/// Rectangles.
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
    /// Overwrites the record at index; see RecordArray::insertOver for what moves.
    virtual void Insert(int index, int left, int top, int right, int bottom)
    {
        insertOver(index, RECT{left, top, right, bottom});
    }
    virtual void Insert(int index, const RECT& rect) { insertOver(index, rect); }
    virtual void SetAt(int index, int left, int top, int right, int bottom)
    {
        at(index) = RECT{left, top, right, bottom};
    }
    virtual void SetAt(int index, const RECT& rect) { at(index) = RECT(rect); }

    // Stable ascending sorts.
    virtual void SortLeft();
    virtual void SortTop();
    virtual void SortRight();
    virtual void SortBottom();
    virtual void SortWidth();
    /// Deliberate: orders by width, as SortWidth does.
    virtual void SortHeight();

    void Offset(int dx, int dy);
    /// The mean of the rectangles' centres, truncated; 0x80000000 in both coordinates when empty.
    POINT CenterPoint();
    /// The smallest rectangle around all; four 0 values when empty.
    RECT GetBounds();
};
