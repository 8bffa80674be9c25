#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels of the whole-image edits.
namespace ormalux::kernels {

/// Bytes from low to high, inclusive, become value.
void markRange(std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high,
               std::uint8_t value);
/// value where the bytes differ by more than tolerance, else rest.
void markDifferent(std::uint8_t* pixels, const std::uint8_t* others, std::size_t count,
                   std::uint8_t tolerance, std::uint8_t value, std::uint8_t rest);
/// (a + b) modulo 256. The runs may be the same.
void addBytes(std::uint8_t* pixels, const std::uint8_t* others, std::size_t count);
/// a - b, but not below 0. The runs may be the same.
void subtractBytes(std::uint8_t* pixels, const std::uint8_t* others, std::size_t count);

} // namespace ormalux::kernels
