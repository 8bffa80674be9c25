#include "array/ValueArray.h"

#include "array/RecordFind.h"
#include "array/RecordSort.h"

namespace {

/// The value itself as the key.
constexpr auto itself = [](const auto& value) { return value; };

template <class Value>
int findValue(std::span<const Value> values, Value wanted, int start)
{
    return ormalux::findFrom(values, start, [wanted](const Value& value) { return value == wanted; });
}

template <class Value>
long wrappingTotal(std::span<const Value> values)
{
    DWORD sum = 0;
    for (const Value value : values)
        sum += DWORD(value);
    return LONG(sum);
}

} // namespace

int CSizeArray::Find(int cx, int cy, int start)
{
    return ormalux::findFrom<CSize>(records(), start, [=](const CSize& s) { return s == SIZE{cx, cy}; });
}

void CSizeArray::SortWidth()
{
    sortBy([](const CSize& s) { return s.cx; });
}

void CSizeArray::SortHeight()
{
    sortBy([](const CSize& s) { return s.cy; });
}

int CLongArray::Find(long value, int start)
{
    return findValue<LONG>(records(), LONG(value), start);
}

void CLongArray::Sort()
{
    sortBy(itself);
}

long CLongArray::GetSum()
{
    return wrappingTotal<LONG>(records());
}

double CLongArray::GetAverage()
{
    return double(GetSum()) / double(GetCount());
}

int CUShortArray::Find(unsigned short value, int start)
{
    return findValue<std::uint16_t>(records(), value, start);
}

void CUShortArray::Sort()
{
    sortBy(itself);
}

long CUShortArray::GetSum()
{
    return wrappingTotal<std::uint16_t>(records());
}

double CUShortArray::GetAverage()
{
    return double(GetSum()) / double(GetCount());
}

int CSortByteArray::Find(unsigned char value, int start)
{
    return findValue<std::uint8_t>(records(), value, start);
}

void CSortByteArray::Sort()
{
    sortBy(itself);
}

long CSortByteArray::GetSum()
{
    return wrappingTotal<std::uint8_t>(records());
}

double CSortByteArray::GetAverage()
{
    return double(GetSum()) / double(GetCount());
}

CSortByteArray& CSortByteArray::operator+(const CSortByteArray& other)
{
    join(other, std::int64_t(m_capacity) + other.m_capacity);
    return *this;
}

int CDoubleArray::Find(double value, int start)
{
    return findValue<double>(records(), value, start);
}

void CDoubleArray::Sort()
{
    sortBy(itself);
}

double CDoubleArray::GetSum()
{
    double sum = 0;
    for (const double value : records())
        sum += value;
    return sum;
}

double CDoubleArray::GetAverage()
{
    return GetSum() / double(GetCount());
}
