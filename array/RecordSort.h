#pragma once

#include "array/RadixSort.h"
#include "array/RecordArray.h"
#include "platform/LargeMemory.h"

#include <algorithm>
#include <bit>
#include <cstdint>
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

struct BlockFreer
{
    std::size_t bytes = 0;
    void operator()(void* block) const { freeBlock(block, bytes); }
};

template <class T>
using Scratch = std::unique_ptr<T[], BlockFreer>;

/// Memory for n values of a trivial type, holding anything; null when it is short or n is 0.
template <class T>
Scratch<T> scratchFor(std::size_t n)
{
    static_assert(std::is_trivially_copyable_v<T>);
    const std::size_t bytes = n * sizeof(T);
    return Scratch<T>(static_cast<T*>(bytes > 0 ? allocateBlock(bytes) : nullptr), BlockFreer{bytes});
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

/// Has the cache lines fetched that the next records of a stream are written to.
template <class Record>
void prefetchBehind(const Record* written)
{
    __builtin_prefetch(reinterpret_cast<const char*>(written) + 128, 1);
}

constexpr int widestCount = 13;

/// Counts the digits, below 2^bits, while the records are copied aside, then deals the records out to where
/// they belong. The streams of writes are too many for the processor to foresee, hence the prefetch.
template <class Record, class DigitOf>
bool countingSort(std::span<Record> records, DigitOf digitOf, int bits)
{
    const std::size_t n = records.size();
    const auto aside = scratchFor<Record>(n);
    if (!aside)
        return false;
    std::uint32_t places[1 << widestCount];
    std::fill_n(places, std::size_t(1) << bits, 0u);
    for (std::size_t i = 0; i < n; ++i) {
        aside[i] = records[i];
        ++places[digitOf(records[i])];
    }
    std::uint32_t before = 0;
    for (std::size_t digit = 0; digit < std::size_t(1) << bits; ++digit)
        before += std::exchange(places[digit], before);
    for (std::size_t i = 0; i < n; ++i) {
        Record* to = &records[places[digitOf(aside[i])]++];
        *to = aside[i];
        prefetchBehind(to);
    }
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
    constexpr std::size_t ahead = 16; // records lie anywhere: fetch some before they are needed
    for (std::size_t i = 0; i < n; ++i) {
        __builtin_prefetch(&aside[sorted[std::min(i + ahead, n - 1)].place]);
        records[i] = aside[sorted[i].place];
    }
    return true;
}

/// False when memory is short or comparing costs less.
template <class Record, class KeyOf>
bool distribute(std::span<Record> records, KeyOf keyOf)
{
    using Ordinal = decltype(ordinal(keyOf(records[0])));
    if constexpr (sizeof(Ordinal) == 1) {
        return countingSort(
            records, [keyOf](const Record& r) { return ordinal(keyOf(r)); }, 8);
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
        if (bits <= widestCount && records.size() >= std::size_t(1) << bits >> 2)
            return countingSort(records, offset, bits);
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
    sortRecords(std::span<Record>(records()), keyOf);
}

} // namespace ormalux
