#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels that change every byte of a run from its own value.
namespace ormalux::kernels {

void invert(std::uint8_t* pixels, std::size_t count);
/// 255 where a byte is greater than t, else 0.
void threshold(std::uint8_t* pixels, std::size_t count, std::uint8_t t);
/// inside where low <= byte <= high, else outside.
void splitRange(std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high,
                std::uint8_t inside, std::uint8_t outside);
/// table[byte], for 256 entries.
void lookUp(std::uint8_t* pixels, std::size_t count, const std::uint8_t* table);

} // namespace ormalux::kernels
