#pragma once

#include "array/RecordArray.h"
#include "platform/Export.h"
#include "platform/Types.h"

/// Points: a polyline, an outline, a blob's pixels.
class ORMALUX_API CPointArray : public ormalux::RecordArray<POINT>
{
public:
    using RecordArray::RecordArray;

    virtual void Add(int x, int y) { append(POINT{x, y}); }
    virtual void Add(const POINT& point) { append(point); }
    /// Deliberate: overwrites the record at index, and the one behind it then stands twice: Insert(1, p)
    /// makes [a, p, c, c] of [a, b, c]. At the last record it overwrites and shows the slot behind it; at or
    /// behind the count it stores at index and the count grows by one.
    virtual void Insert(int index, int x, int y) { insertOver(index, POINT{x, y}); }
    virtual void Insert(int index, const CPoint& point) { insertOver(index, point); }
    /// Overwrites the record at index.
    virtual void SetAt(int index, int x, int y) { setAt(index, POINT{x, y}); }
    virtual void SetAt(int index, const POINT& point) { setAt(index, point); }
    /// The first index at or behind start (below 0 counts as 0) that holds the point, or -1.
    virtual int Find(int x, int y, int start);
    virtual int Find(const POINT& point, int start) { return Find(point.x, point.y, start); }

    // Stable ascending sorts.
    virtual void SortX();
    virtual void SortY();

    /// The sum over the count, truncated toward 0; 0 when empty.
    int GetAverageX();
    int GetAverageY();
    /// The index of the first equal point, or -1.
    int IsPoint(int x, int y);
    /// Removes the first equal point, if there is one.
    void RemovePoint(int x, int y);
    /// Keeps of every horizontal run of points its two ends. Where a point stands several times, only its
    /// first entries go: each run takes one away, and what is left of a run may make a shorter one.
    void Outline();
    /// (min x, min y, max x, max y); four 0 values when empty.
    RECT GetBounds();
    /// The mean of the points, truncated; 0x80000000 in both coordinates when empty.
    POINT CenterPoint();
    /// 1 when the point lies in the polygon by the winding rule, else 0. Exact for all coordinates. Left and
    /// top borders are inside, right and bottom borders outside; fewer than three points hold nothing.
    int PtInPolygon(int x, int y);
    /// Moves every point; coordinates wrap at 32 bits.
    void Offset(int dx, int dy);
};

/// Polylines or outlines, each a CPointArray of its own; records are deep copies.
class ORMALUX_API CPointArrayArray : public ormalux::RecordArray<CPointArray>
{
public:
    using RecordArray::RecordArray;

    virtual void Add(const CPointArray& points) { append(points); }
    /// Deliberate: overwrites the member at index, and the one behind it then stands twice, as with
    /// CPointArray.
    virtual void Insert(int index, const CPointArray& points) { insertOver(index, points); }
    virtual void SetAt(int index, const CPointArray& points) { setAt(index, points); }
    /// Stable and ascending.
    virtual void SortPointCount();

    /// The bounds of all points of all members; four 0 values when there are none.
    RECT GetBounds();
    /// The mean of the members' centres, truncated; members without points do not count. 0x80000000 in both
    /// coordinates when there are none.
    POINT CenterPoint();
    /// The index of the first member whose polygon holds the point, or -1. Deliberate: 0 when empty.
    int PtInPolygon(int x, int y);
    /// Moves every point of every member.
    void Offset(int dx, int dy);
};
