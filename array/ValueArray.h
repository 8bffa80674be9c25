#pragma once

#include "array/RecordArray.h"
#include "platform/Export.h"
#include "platform/Types.h"

// Insert is that of every record array. Deliberate: it overwrites the record at index, and the one behind it
// then stands twice: Insert(1, v) makes [a, v, c, c] of [a, b, c]. At the last record it overwrites and shows
// the slot behind it; at or behind the count it stores at index and the count grows by one. Sorts are stable
// and ascending.

/// Sizes.
class ORMALUX_API CSizeArray : public ormalux::RecordArray<CSize>
{
public:
    using RecordArray::RecordArray;

    virtual void Add(int cx, int cy) { append(CSize(cx, cy)); }
    virtual void Add(const SIZE& size) { append(CSize(size)); }
    virtual void Insert(int index, int cx, int cy) { insertOver(index, CSize(cx, cy)); }
    virtual void Insert(int index, const SIZE& size) { insertOver(index, CSize(size)); }
    virtual void SetAt(int index, int cx, int cy) { setAt(index, CSize(cx, cy)); }
    virtual void SetAt(int index, const SIZE& size) { setAt(index, CSize(size)); }
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

    virtual void Add(long value) { append(LONG(value)); }
    virtual void Insert(int index, long value) { insertOver(index, LONG(value)); }
    virtual void SetAt(int index, long value) { setAt(index, LONG(value)); }
    /// The first index at or behind start (below 0 counts as 0) that holds the value, or -1.
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

    virtual void Add(unsigned short value) { append(value); }
    virtual void Insert(int index, unsigned short value) { insertOver(index, value); }
    virtual void SetAt(int index, unsigned short value) { setAt(index, value); }
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

    virtual void Add(unsigned char value) { append(value); }
    virtual void Insert(int index, unsigned char value) { insertOver(index, value); }
    /// The room in records.
    virtual int GetCapacity() { return m_capacity; }
    virtual void SetAt(int index, unsigned char value) { setAt(index, value); }
    virtual int Find(unsigned char value, int start);
    virtual void Sort();
    virtual long GetSum();
    virtual double GetAverage();
    /// Appends the other's bytes to this very array and returns it; the other may be this one. The reported
    /// room becomes the sum of both rooms, so that GetCapacity() may exceed what growth alone would report.
    CSortByteArray& operator+(const CSortByteArray& other);
};

/// Doubles.
class ORMALUX_API CDoubleArray : public ormalux::RecordArray<double>
{
public:
    using RecordArray::RecordArray;

    virtual void Add(double value) { append(value); }
    virtual void Insert(int index, double value) { insertOver(index, value); }
    /// The value at index; operator[] gives a reference to it.
    virtual double GetAt(int index) { return at(index); }
    virtual void SetAt(int index, double value) { setAt(index, value); }
    /// As CLongArray::Find; not-a-number equals nothing.
    virtual int Find(double value, int start);
    /// Values that are not numbers stay where they are, and no value crosses them.
    virtual void Sort();
    /// Added up in the order of the records.
    virtual double GetSum();
    virtual double GetAverage();
};

/// Texts in UTF-8.
class ORMALUX_API CSortStringArray : public ormalux::RecordArray<CString>
{
public:
    using RecordArray::RecordArray;

    /// A null text counts as empty.
    virtual void Add(const char* text);
    virtual void Add(const CString& text) { append(text); }
    virtual void Insert(int index, const char* text);
    virtual void Insert(int index, const CString& text) { insertOver(index, text); }
    virtual void SetAt(int index, const char* text);
    virtual void SetAt(int index, const CString& text) { setAt(index, text); }
    /// Case-sensitive, a null text counts as empty; the first index at or behind start (below 0 counts as 0),
    /// or -1.
    virtual int Find(const char* text, int start);
    virtual int Find(const CString& text, int start);
    /// By bytes, ASCII letters folded to lower case.
    virtual void Sort();
};
