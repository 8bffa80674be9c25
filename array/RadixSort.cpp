#include "array/RadixSort.h"

#include <algorithm>
#include <utility>

namespace ormalux {

namespace {

// 2,048 places of 4 bytes and their write streams stay in the second-level cache.
constexpr int widestDigit = 11;

template <class Key>
void sortByDigit(const KeyedPlace<Key>* from, KeyedPlace<Key>* to, std::size_t n, int shift, int width)
{
    std::uint32_t places[1 << widestDigit] = {};
    const Key mask = (Key(1) << width) - 1;
    for (std::size_t i = 0; i < n; ++i)
        ++places[(from[i].key >> shift) & mask];
    std::uint32_t before = 0;
    for (std::uint32_t& place : places)
        before += std::exchange(place, before);
    for (std::size_t i = 0; i < n; ++i)
        to[places[(from[i].key >> shift) & mask]++] = from[i];
}

template <class Key>
KeyedPlace<Key>* sortByDigits(KeyedPlace<Key>* pairs, KeyedPlace<Key>* scratch, std::size_t n, int bits)
{
    const int passes = (bits + widestDigit - 1) / widestDigit;
    for (int pass = 0; pass < passes; ++pass) {
        const int first = bits * pass / passes;
        const int end = bits * (pass + 1) / passes;
        sortByDigit(pairs, scratch, n, first, end - first);
        std::swap(pairs, scratch);
    }
    return pairs;
}

} // namespace

KeyedPlace<std::uint32_t>* radixSort(KeyedPlace<std::uint32_t>* pairs, KeyedPlace<std::uint32_t>* scratch,
                                     std::size_t n, int bits)
{
    return sortByDigits(pairs, scratch, n, bits);
}

KeyedPlace<std::uint64_t>* radixSort(KeyedPlace<std::uint64_t>* pairs, KeyedPlace<std::uint64_t>* scratch,
                                     std::size_t n, int bits)
{
    return sortByDigits(pairs, scratch, n, bits);
}

} // namespace ormalux
