#pragma once

#include "array/RecordArray.h"
#include "array/Records.h"
#include "platform/Export.h"

/// Sampled gray pixels.
class ORMALUX_API CPixelArray : public ormalux::RecordArray<_stPixel>
{
public:
    using RecordArray::RecordArray;
    CPixelArray() = default;
    CPixelArray(const CPixelArray&) = default;
    CPixelArray& operator=(const CPixelArray&) = default;

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
        at(index) = _stPixel{x, y, gray_level, parameter};
    }
    virtual void SetAt(int index, const _stPixel& pixel) { at(index) = _stPixel(pixel); }
    virtual void SortX();
    /// Deliberate: orders by x, as SortX does.
    virtual void SortY();
    virtual void SortGrayLevel();
    virtual void SortParameter();
};

/// Sampled colour pixels.
class ORMALUX_API CColorPixelArray : public ormalux::RecordArray<_stColorPixel>
{
public:
    using RecordArray::RecordArray;
    CColorPixelArray() = default;
    CColorPixelArray(const CColorPixelArray&) = default;
    CColorPixelArray& operator=(const CColorPixelArray&) = default;

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
        at(index) = _stColorPixel{x, y, RGB(r, g, b), 0.0};
    }
    virtual void SetAt(int index, int x, int y, unsigned long color)
    {
        at(index) = _stColorPixel{x, y, COLORREF(color), 0.0};
    }
    virtual void SetAt(int index, const _stColorPixel& pixel) { at(index) = _stColorPixel(pixel); }
    virtual void SortX();
    /// Deliberate: orders by x, as SortX does.
    virtual void SortY();
};

/// Sampled colour pixels with their colour taken apart and converted to C, M, Y, K.
class ORMALUX_API CColorPixelExArray : public ormalux::RecordArray<_stColorPixelEx>
{
public:
    using RecordArray::RecordArray;
    CColorPixelExArray() = default;
    CColorPixelExArray(const CColorPixelExArray&) = default;
    CColorPixelExArray& operator=(const CColorPixelExArray&) = default;

    virtual void Add(int x, int y, unsigned char r, unsigned char g, unsigned char b);
    virtual void Add(int x, int y, unsigned long color);
    /// The converted colour is made anew from the record's red, green and blue.
    virtual void Add(const _stColorPixelEx& pixel);
    virtual void Insert(int index, int x, int y, unsigned char r, unsigned char g, unsigned char b);
    virtual void Insert(int index, int x, int y, unsigned long color);
    virtual void Insert(int index, const _stColorPixelEx& pixel);
    virtual void SetAt(int index, int x, int y, unsigned char r, unsigned char g, unsigned char b);
    virtual void SetAt(int index, int x, int y, unsigned long color);
    virtual void SetAt(int index, const _stColorPixelEx& pixel);
    virtual void SortX();
    /// Deliberate: orders by x, as SortX does.
    virtual void SortY();
};

/// Gray levels with their number and share.
class ORMALUX_API CPixelBunchArray : public ormalux::RecordArray<_stPixelBunch>
{
public:
    using RecordArray::RecordArray;
    CPixelBunchArray() = default;
    CPixelBunchArray(const CPixelBunchArray&) = default;
    CPixelBunchArray& operator=(const CPixelBunchArray&) = default;

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
        at(index) = _stPixelBunch{gray_level, LONG(total_count), percent};
    }
    virtual void SetAt(int index, const _stPixelBunch& bunch) { at(index) = _stPixelBunch(bunch); }
    /// The first index at or behind start (below 0 counts as 0) that is equal in every field, or -1.
    virtual int Find(unsigned char gray_level, long total_count, float percent, int start);
    virtual int Find(const _stPixelBunch& bunch, int start)
    {
        return Find(bunch.gray_level, bunch.total_count, bunch.percent, start);
    }
    virtual void SortTotalCount();
    virtual void SortGrayLevel();
    virtual void SortPercent();
};
