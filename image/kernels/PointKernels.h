#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels that change or read every byte of a run.
namespace ormalux::kernels {

void invert(std::uint8_t* pixels, std::size_t count);
/// 255 where a byte is greater than t, else 0.
void threshold(std::uint8_t* pixels, std::size_t count, std::uint8_t t);

} // namespace ormalux::kernels
