#pragma once

#include <cstddef>
#include <cstdint>

namespace ormalux::kernels {

/// Copies `width` bytes (at least 1) from a row of a picture and repeats the first one `before` times to the
/// left and the last one `after` times to the right. May write up to 64 bytes more on either side.
using PaddedCopy = void (*)(const std::uint8_t* from, std::uint8_t* to, std::size_t width, std::size_t before,
                            std::size_t after);

/// The copy for this machine.
PaddedCopy paddedCopy();

} // namespace ormalux::kernels
