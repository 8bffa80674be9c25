#pragma once

#include "bench/Bench.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace bench {

/// Reads the bytes as fast as one core can: what no operation that looks at all of them can beat.
#if defined(__x86_64__)
[[gnu::target("avx2")]]
#endif
inline void
readAll(const std::uint8_t* bytes, std::size_t count)
{
    using Wide [[gnu::vector_size(32)]] = std::uint64_t;
    Wide sums[4] = {};
    for (std::size_t i = (0 - reinterpret_cast<std::uintptr_t>(bytes)) % sizeof(Wide);
         i + sizeof sums <= count; i += sizeof sums)
        for (int k = 0; k < 4; ++k) {
            Wide next;
            std::memcpy(&next, bytes + i + k * sizeof next, sizeof next);
            sums[k] ^= next;
        }
    keep(sums);
}

} // namespace bench
