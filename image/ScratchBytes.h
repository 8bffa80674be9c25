#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

namespace ormalux {

struct ScratchFree
{
    void operator()(std::uint8_t* bytes) const { ::operator delete(bytes, std::align_val_t(64)); }
};

/// Uncleared bytes that start on a cache line.
using ScratchBytes = std::unique_ptr<std::uint8_t, ScratchFree>;

/// Null when there is too little memory.
inline ScratchBytes scratchBytes(std::size_t count)
{
    return ScratchBytes(
        static_cast<std::uint8_t*>(::operator new(count, std::align_val_t(64), std::nothrow)));
}

/// The next multiple of a cache line.
constexpr std::ptrdiff_t wholeLines(std::ptrdiff_t count)
{
    return (count + 63) & ~std::ptrdiff_t(63);
}

} // namespace ormalux
