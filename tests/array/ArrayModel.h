#pragma once

#include "array/Array.h"

#include <climits>
#include <tuple>
#include <vector>

/// The record arrays in plain words, for comparison.
namespace testing_support {

inline bool same(const RECT& a, const RECT& b)
{
    return a == b;
}
inline bool same(const POINT& a, const POINT& b)
{
    return a == b;
}
inline bool same(LONG a, LONG b)
{
    return a == b;
}
inline bool same(std::uint8_t a, std::uint8_t b)
{
    return a == b;
}
inline bool same(const CString& a, const CString& b)
{
    return a == b;
}
inline bool same(const _stPixel& a, const _stPixel& b)
{
    return std::tie(a.x, a.y, a.gray_level, a.parameter) == std::tie(b.x, b.y, b.gray_level, b.parameter);
}
inline bool same(const CPointArray& a, const CPointArray& b)
{
    return std::ranges::equal(a.records(), b.records());
}

/// Every slot of the storage written out; what would lie outside it does not happen.
template <class Record>
struct ArrayModel
{
    std::vector<Record> slots = std::vector<Record>(100);
    int count = 0;

    int capacity() const { return int(slots.size()); }
    bool holds(std::int64_t index) const { return index >= 0 && index < capacity(); }
    Record get(std::int64_t index) const { return holds(index) ? slots[std::size_t(index)] : Record(); }
    void put(std::int64_t index, const Record& record)
    {
        if (holds(index))
            slots[std::size_t(index)] = record;
    }
    void move(std::int64_t from, std::int64_t to)
    {
        if (holds(from))
            put(to, get(from));
    }
    void grow()
    {
        while (capacity() < count + 1)
            slots.resize(slots.size() + 100);
    }
    void add(const Record& record)
    {
        grow();
        put(count++, record);
    }
    void insert(int index, const Record& record)
    {
        if (index < 0)
            return;
        grow();
        for (std::int64_t j = count - 1; index < count - 1 && j > index; --j)
            move(j, j + 1);
        put(index, record);
        ++count;
    }
    void remove(int index)
    {
        if (count == 0)
            return;
        for (std::int64_t j = std::max(index, 0); j + 1 < count; ++j)
            move(j + 1, j);
        --count;
    }
    void setCount(int n)
    {
        if (n > 0 && n < 1000000)
            slots.resize(std::size_t(n));
    }
};

/// The sort that every Sort operation must be indistinguishable from.
template <class Record, class Greater>
void bubbleSort(std::vector<Record>& records, Greater greater)
{
    for (bool swapped = true; swapped;) {
        swapped = false;
        for (std::size_t j = 0; j + 1 < records.size(); ++j)
            if (greater(records[j], records[j + 1])) {
                std::swap(records[j], records[j + 1]);
                swapped = true;
            }
    }
}

} // namespace testing_support
