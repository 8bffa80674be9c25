#pragma once

#include "array/RadixSort.h"
#include "array/RecordArray.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <span>
#include <type_traits>
#include <utility>

/// Sorts whose outcome is that of a bubble sort which swaps neighbours while the first one's key is strictly
/// greater: equal keys keep their order, and a key that is not a number compares with nothing, so it stays
/// where it is and no record crosses it.
namespace ormalux {

namespace sorting {

/// An unsigned number of the key's width that orders as the key does.
template <class Key>
auto ordinal(Key key)
{
    if constexpr (std::is_floating_point_v<Key>) {
        using Bits = std::conditional_t<sizeof(Key) == 4, std::uint32_t, std::uint64_t>;
        constexpr Bits sign = Bits(1) << (8 * sizeof(Bits) - 1);
        const Bits bits = std::bit_cast<Bits>(key + Key(0)); // -0.0 equals 0.0
        return Bits(bits & sign ? ~bits : bits | sign);
    } else {
        using Bits = std::make_unsigned_t<Key>;
        return Bits(Bits(key) ^ Bits(std::numeric_limits<Key>::min()));
    }
}

struct Freer
{
    void operator()(void* memory) const { std::free(memory); }
};

/// Memory for n values of a trivial type, holding anything; null when it is short.
template <class T>
std::unique_ptr<T[], Freer> scratchFor(std::size_t n)
{
    static_assert(std::is_trivially_copyable_v<T>);
    return std::unique_ptr<T[], Freer>(static_cast<T*>(std::malloc(n * sizeof(T))));
}

template <class Record, class KeyOf>
void insertionSort(std::span<Record> records, KeyOf keyOf)
{
    for (std::size_t i = 1; i < records.size(); ++i) {
        if (!(keyOf(records[i]) < keyOf(records[i - 1])))
            continue;
        Record moving = std::move(records[i]);
        std::size_t j = i;
        for (; j > 0 && keyOf(moving) < keyOf(records[j - 1]); --j)
            records[j] = std::move(records[j - 1]);
        records[j] = std::move(moving);
    }
}

/// Counts the digits while the records are copied aside, then deals them out to where they belong.
template <int digits, class Record, class DigitOf>
bool countingSort(std::span<Record> records, DigitOf digitOf)
{
    const std::size_t n = records.size();
    const auto aside = scratchFor<Record>(n);
    if (!aside)
        return false;
    std::uint32_t places[digits] = {};
    for (std::size_t i = 0; i < n; ++i) {
        aside[i] = records[i];
        ++places[digitOf(records[i])];
    }
    std::uint32_t before = 0;
    for (std::uint32_t& place : places)
        before += std::exchange(place, before);
    for (std::size_t i = 0; i < n; ++i)
        records[places[digitOf(aside[i])]++] = aside[i];
    return true;
}

/// Sorts keys with places, then fetches the records in that order.
template <class Key, class Record, class OrdinalOf>
bool sortByPlaces(std::span<Record> records, OrdinalOf ordinalOf, int bits)
{
    const std::size_t n = records.size();
    const auto pairs = scratchFor<KeyedPlace<Key>>(n);
    const auto scratch = scratchFor<KeyedPlace<Key>>(n);
    const auto aside = scratchFor<Record>(n);
    if (!pairs || !scratch || !aside)
        return false;
    for (std::size_t i = 0; i < n; ++i)
        pairs[i] = {Key(ordinalOf(records[i])), std::uint32_t(i)};
    std::copy(records.begin(), records.end(), aside.get());
    const KeyedPlace<Key>* sorted = radixSort(pairs.get(), scratch.get(), n, bits);
    for (std::size_t i = 0; i < n; ++i)
        records[i] = aside[sorted[i].place];
    return true;
}

/// False when memory is short or comparing costs less.
template <class Record, class KeyOf>
bool distribute(std::span<Record> records, KeyOf keyOf)
{
    using Ordinal = decltype(ordinal(keyOf(records[0])));
    if constexpr (sizeof(Ordinal) == 1) {
        return countingSort<256>(records, [keyOf](const Record& r) { return ordinal(keyOf(r)); });
    } else {
        if (records.size() < 512)
            return false;
        Ordinal low = std::numeric_limits<Ordinal>::max();
        Ordinal high = 0;
        for (const Record& r : records) {
            const Ordinal o = ordinal(keyOf(r));
            low = std::min(low, o);
            high = std::max(high, o);
        }
        const auto offset = [keyOf, low](const Record& r) { return Ordinal(ordinal(keyOf(r)) - low); };
        const int bits = std::bit_width(Ordinal(high - low));
        if (bits <= 11)
            return countingSort<2048>(records, offset);
        if (bits <= 32)
            return sortByPlaces<std::uint32_t>(records, offset, bits);
        return sortByPlaces<std::uint64_t>(records, offset, bits);
    }
}

/// Sorts records whose keys all compare with each other.
template <class Record, class KeyOf>
void sortComparable(std::span<Record> records, KeyOf keyOf)
{
    const auto less = [keyOf](const Record& a, const Record& b) { return keyOf(a) < keyOf(b); };
    if (records.size() <= 24)
        return insertionSort(records, keyOf);
    if constexpr (std::is_trivially_copyable_v<Record> && std::is_arithmetic_v<decltype(keyOf(records[0]))>)
        if (distribute(records, keyOf))
            return;
    std::stable_sort(records.begin(), records.end(), less);
}

} // namespace sorting

template <class Record, class KeyOf>
void sortRecords(std::span<Record> records, KeyOf keyOf)
{
    using Key = std::remove_cvref_t<decltype(keyOf(records[0]))>;
    const auto descends = [keyOf](const Record& a, const Record& b) { return keyOf(b) < keyOf(a); };
    if (std::adjacent_find(records.begin(), records.end(), descends) == records.end())
        return;
    if constexpr (std::is_floating_point_v<Key>) {
        const auto isBarrier = [keyOf](const Record& r) { return !(keyOf(r) == keyOf(r)); };
        for (auto from = records.begin(); from != records.end();) {
            const auto barrier = std::find_if(from, records.end(), isBarrier);
            sorting::sortComparable(std::span<Record>(from, barrier), keyOf);
            from = barrier == records.end() ? barrier : barrier + 1;
        }
    } else {
        sorting::sortComparable(records, keyOf);
    }
}

template <class Record>
template <class KeyOf>
void RecordArray<Record>::sortBy(KeyOf keyOf)
{
    sortRecords(records(), keyOf);
}

} // namespace ormalux
