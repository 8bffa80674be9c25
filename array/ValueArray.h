#pragma once

#include "array/RecordArray.h"
#include "platform/Export.h"
#include "platform/Types.h"

/// Sizes.
class ORMALUX_API CSizeArray : public ormalux::RecordArray<CSize>
{
public:
    using RecordArray::RecordArray;
    CSizeArray() = default;
    CSizeArray(const CSizeArray&) = default;
    CSizeArray& operator=(const CSizeArray&) = default;

    virtual void Add(int cx, int cy) { append(CSize(cx, cy)); }
    virtual void Add(const SIZE& size) { append(CSize(size)); }
    virtual void Insert(int index, int cx, int cy) { insertOver(index, CSize(cx, cy)); }
    virtual void Insert(int index, const SIZE& size) { insertOver(index, CSize(size)); }
    virtual void SetAt(int index, int cx, int cy) { at(index) = CSize(cx, cy); }
    virtual void SetAt(int index, const SIZE& size) { at(index) = CSize(size); }
    /// The first index at or behind start (below 0 counts as 0) of an equal size, or -1.
    virtual int Find(int cx, int cy, int start);
    virtual int Find(const SIZE& size, int start) { return Find(size.cx, size.cy, start); }
    virtual void SortWidth();
    virtual void SortHeight();
};

/// Signed 32-bit numbers.
class ORMALUX_API CLongArray : public ormalux::RecordArray<LONG>
{
public:
    using RecordArray::RecordArray;
    CLongArray() = default;
    CLongArray(const CLongArray&) = default;
    CLongArray& operator=(const CLongArray&) = default;

    virtual void Add(long value) { append(LONG(value)); }
    virtual void Insert(int index, long value) { insertOver(index, LONG(value)); }
    virtual void SetAt(int index, long value) { at(index) = LONG(value); }
    virtual int Find(long value, int start);
    virtual void Sort();
    /// The sum, wrapping at 32 bits.
    virtual long GetSum();
    /// GetSum over the count; not-a-number when empty.
    virtual double GetAverage();
};

/// Unsigned 16-bit numbers.
class ORMALUX_API CUShortArray : public ormalux::RecordArray<std::uint16_t>
{
public:
    using RecordArray::RecordArray;
    CUShortArray() = default;
    CUShortArray(const CUShortArray&) = default;
    CUShortArray& operator=(const CUShortArray&) = default;

    virtual void Add(unsigned short value) { append(value); }
    virtual void Insert(int index, unsigned short value) { insertOver(index, value); }
    virtual void SetAt(int index, unsigned short value) { at(index) = value; }
    virtual int Find(unsigned short value, int start);
    virtual void Sort();
    virtual long GetSum();
    virtual double GetAverage();
};

/// Bytes.
class ORMALUX_API CSortByteArray : public ormalux::RecordArray<std::uint8_t>
{
public:
    using RecordArray::RecordArray;
    CSortByteArray() = default;
    CSortByteArray(const CSortByteArray&) = default;
    CSortByteArray& operator=(const CSortByteArray&) = default;

    virtual void Add(unsigned char value) { append(value); }
    virtual void Insert(int index, unsigned char value) { insertOver(index, value); }
    virtual int GetCapacity() { return m_capacity; }
    virtual void SetAt(int index, unsigned char value) { at(index) = value; }
    virtual int Find(unsigned char value, int start);
    virtual void Sort();
    virtual long GetSum();
    virtual double GetAverage();
    /// Appends the other's bytes to this array and returns it. The reported room becomes the sum of both.
    CSortByteArray& operator+(const CSortByteArray& other);
};

/// Doubles.
class ORMALUX_API CDoubleArray : public ormalux::RecordArray<double>
{
public:
    using RecordArray::RecordArray;
    CDoubleArray() = default;
    CDoubleArray(const CDoubleArray&) = default;
    CDoubleArray& operator=(const CDoubleArray&) = default;

    virtual void Add(double value) { append(value); }
    virtual void Insert(int index, double value) { insertOver(index, value); }
    virtual double GetAt(int index) { return at(index); }
    virtual void SetAt(int index, double value) { at(index) = value; }
    virtual int Find(double value, int start);
    virtual void Sort();
    virtual double GetSum();
    virtual double GetAverage();
};

/// Texts in UTF-8.
class ORMALUX_API CSortStringArray : public ormalux::RecordArray<CString>
{
public:
    using RecordArray::RecordArray;
    CSortStringArray() = default;
    CSortStringArray(const CSortStringArray&) = default;
    CSortStringArray& operator=(const CSortStringArray&) = default;

    /// A null text counts as empty.
    virtual void Add(const char* text) { append(text ? CString(text) : CString()); }
    virtual void Add(const CString& text) { append(text); }
    virtual void Insert(int index, const char* text) { insertOver(index, text ? CString(text) : CString()); }
    virtual void Insert(int index, const CString& text) { insertOver(index, text); }
    virtual void SetAt(int index, const char* text) { at(index) = text ? CString(text) : CString(); }
    virtual void SetAt(int index, const CString& text) { at(index) = CString(text); }
    /// Case-sensitive; the first index at or behind start (below 0 counts as 0), or -1.
    virtual int Find(const char* text, int start);
    virtual int Find(const CString& text, int start) { return Find(text.c_str(), start); }
    /// By bytes, ASCII letters folded to lower case.
    virtual void Sort();
};
