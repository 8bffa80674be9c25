#pragma once

#include "array/RecordArray.h"
#include "array/Records.h"
#include "platform/Export.h"

/// Sampled gray pixels.
///
/// Insert is that of every record array. Deliberate: it overwrites the record at index, and the one behind it
/// then stands twice: Insert(1, p) makes [a, p, c, c] of [a, b, c]. At the last record it overwrites and
/// shows the slot behind it; at or behind the count it stores at index and the count grows by one.
class ORMALUX_API CPixelArray : public ormalux::RecordArray<_stPixel>
{
public:
    using RecordArray::RecordArray;

    virtual void Add(int x, int y, unsigned char gray_level, double parameter)
    {
        append(_stPixel{x, y, gray_level, parameter});
    }
    virtual void Add(const _stPixel& pixel) { append(pixel); }
    virtual void Insert(int index, int x, int y, unsigned char gray_level, double parameter)
    {
        insertOver(index, _stPixel{x, y, gray_level, parameter});
    }
    virtual void Insert(int index, const _stPixel& pixel) { insertOver(index, pixel); }
    virtual void SetAt(int index, int x, int y, unsigned char gray_level, double parameter)
    {
        setAt(index, _stPixel{x, y, gray_level, parameter});
    }
    virtual void SetAt(int index, const _stPixel& pixel) { setAt(index, pixel); }
    // Stable ascending sorts.
    virtual void SortX();
    /// Deliberate: orders by x, as SortX does.
    virtual void SortY();
    virtual void SortGrayLevel();
    /// Records whose parameter is not a number stay where they are, and no record crosses them.
    virtual void SortParameter();
};

/// Sampled colour pixels; their parameter is 0.0 unless a whole record was given.
class ORMALUX_API CColorPixelArray : public ormalux::RecordArray<_stColorPixel>
{
public:
    using RecordArray::RecordArray;

    virtual void Add(int x, int y, unsigned char r, unsigned char g, unsigned char b)
    {
        append(_stColorPixel{x, y, RGB(r, g, b), 0.0});
    }
    virtual void Add(int x, int y, unsigned long color) { append(_stColorPixel{x, y, COLORREF(color), 0.0}); }
    virtual void Add(const _stColorPixel& pixel) { append(pixel); }
    virtual void Insert(int index, int x, int y, unsigned char r, unsigned char g, unsigned char b)
    {
        insertOver(index, _stColorPixel{x, y, RGB(r, g, b), 0.0});
    }
    virtual void Insert(int index, int x, int y, unsigned long color)
    {
        insertOver(index, _stColorPixel{x, y, COLORREF(color), 0.0});
    }
    virtual void Insert(int index, const _stColorPixel& pixel) { insertOver(index, pixel); }
    virtual void SetAt(int index, int x, int y, unsigned char r, unsigned char g, unsigned char b)
    {
        setAt(index, _stColorPixel{x, y, RGB(r, g, b), 0.0});
    }
    virtual void SetAt(int index, int x, int y, unsigned long color)
    {
        setAt(index, _stColorPixel{x, y, COLORREF(color), 0.0});
    }
    virtual void SetAt(int index, const _stColorPixel& pixel) { setAt(index, pixel); }
    // Stable ascending sorts.
    virtual void SortX();
    /// Deliberate: orders by x, as SortX does.
    virtual void SortY();
};

/// Sampled colour pixels with their colour taken apart and converted to C, M, Y, K by full black generation:
/// K = min(255 - R, 255 - G, 255 - B), C = 255 - R - K, M = 255 - G - K, Y = 255 - B - K.
class ORMALUX_API CColorPixelExArray : public ormalux::RecordArray<_stColorPixelEx>
{
public:
    using RecordArray::RecordArray;

    virtual void Add(int x, int y, unsigned char r, unsigned char g, unsigned char b);
    virtual void Add(int x, int y, unsigned long color);
    /// The converted colour is made anew from the record's red, green and blue; likewise below.
    virtual void Add(const _stColorPixelEx& pixel);
    virtual void Insert(int index, int x, int y, unsigned char r, unsigned char g, unsigned char b);
    virtual void Insert(int index, int x, int y, unsigned long color);
    virtual void Insert(int index, const _stColorPixelEx& pixel);
    virtual void SetAt(int index, int x, int y, unsigned char r, unsigned char g, unsigned char b);
    virtual void SetAt(int index, int x, int y, unsigned long color);
    virtual void SetAt(int index, const _stColorPixelEx& pixel);
    // Stable ascending sorts.
    virtual void SortX();
    /// Deliberate: orders by x, as SortX does.
    virtual void SortY();
};

/// Gray levels with their number and share.
class ORMALUX_API CPixelBunchArray : public ormalux::RecordArray<_stPixelBunch>
{
public:
    using RecordArray::RecordArray;

    virtual void Add(unsigned char gray_level, long total_count, float percent)
    {
        append(_stPixelBunch{gray_level, LONG(total_count), percent});
    }
    virtual void Add(const _stPixelBunch& bunch) { append(bunch); }
    virtual void Insert(int index, unsigned char gray_level, long total_count, float percent)
    {
        insertOver(index, _stPixelBunch{gray_level, LONG(total_count), percent});
    }
    virtual void Insert(int index, const _stPixelBunch& bunch) { insertOver(index, bunch); }
    virtual void SetAt(int index, unsigned char gray_level, long total_count, float percent)
    {
        setAt(index, _stPixelBunch{gray_level, LONG(total_count), percent});
    }
    virtual void SetAt(int index, const _stPixelBunch& bunch) { setAt(index, bunch); }
    /// The first index at or behind start (below 0 counts as 0) that is equal in every field, or -1. A share
    /// that is not a number equals none.
    virtual int Find(unsigned char gray_level, long total_count, float percent, int start);
    virtual int Find(const _stPixelBunch& bunch, int start)
    {
        return Find(bunch.gray_level, bunch.total_count, bunch.percent, start);
    }
    // Stable ascending sorts.
    virtual void SortTotalCount();
    virtual void SortGrayLevel();
    /// Records whose share is not a number stay where they are, and no record crosses them.
    virtual void SortPercent();
};
