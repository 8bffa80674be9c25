#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>
#include <new>

namespace ormalux {

/// width x height as an image counts its bytes; 0 when the product does not fit its 32 bits.
inline int pixelCount(int width, int height)
{
    const std::int64_t count = std::int64_t(width) * height;
    return count >= INT_MIN && count <= INT_MAX ? int(count) : 0;
}

/// Whether an image can hold a buffer of the size; a size of 0 is a buffer without bytes.
inline bool canHold(int width, int height)
{
    return width >= 0 && height >= 0 && std::int64_t(width) * height <= INT_MAX;
}

/// A buffer for an image to adopt, to be freed with delete[]: not set, null when memory is short.
inline std::uint8_t* newPixels(std::size_t count)
{
    return new (std::nothrow) std::uint8_t[count];
}

} // namespace ormalux
