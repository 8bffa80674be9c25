#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels that read a run of bytes and return what they counted.
namespace ormalux::kernels {

std::uint64_t sumBytes(const std::uint8_t* pixels, std::size_t count);

/// The number of bytes with low <= byte <= high.
std::uint64_t countRange(const std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high);

/// The indices of the bytes with low <= byte <= high: their number and their sum.
struct IndexSum
{
    std::uint64_t number = 0;
    std::uint64_t sum = 0;
};
IndexSum sumIndices(const std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high);

/// Adds the number of bytes of each value to 256 counters; count below 2^32.
void countValues(const std::uint8_t* pixels, std::size_t count, std::int64_t* counters);

} // namespace ormalux::kernels
