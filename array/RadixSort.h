#pragma once

#include <cstddef>
#include <cstdint>

namespace ormalux {

/// A sort key with the place of the record that it stands for.
template <class Key>
struct KeyedPlace
{
    Key key;
    std::uint32_t place;
};

/// Orders n pairs by the lowest `bits` bits of their keys, equal ones in their order. Returns where they are
/// then: pairs or scratch, each of n.
KeyedPlace<std::uint32_t>* radixSort(KeyedPlace<std::uint32_t>* pairs, KeyedPlace<std::uint32_t>* scratch,
                                     std::size_t n, int bits);
KeyedPlace<std::uint64_t>* radixSort(KeyedPlace<std::uint64_t>* pairs, KeyedPlace<std::uint64_t>* scratch,
                                     std::size_t n, int bits);

} // namespace ormalux
