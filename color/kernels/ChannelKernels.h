#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels that take pixels of blue, green, red bytes apart and put them together again.
namespace ormalux::kernels {

void splitChannels(const std::uint8_t* bgr, std::size_t count, std::uint8_t* blue, std::uint8_t* green,
                   std::uint8_t* red);
void joinChannels(const std::uint8_t* blue, const std::uint8_t* green, const std::uint8_t* red,
                  std::size_t count, std::uint8_t* bgr);

} // namespace ormalux::kernels
