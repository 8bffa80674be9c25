#pragma once

#include <cstddef>
#include <cstdint>

namespace ormalux::kernels {

/// Writes the medians of 3 x 3 (reach 1) or 5 x 5 (reach 2) neighbourhoods for `count` rows, stride bytes
/// apart. Output row y sees source[y] to source[y + 2 reach]; of each row `reach` bytes before its first
/// pixel are read, and up to reach + 64 behind its last. out shares no memory with the source.
void medianRows3(const std::uint8_t* const* source, std::uint8_t* out, std::ptrdiff_t stride,
                 std::size_t width, int count);
void medianRows5(const std::uint8_t* const* source, std::uint8_t* out, std::ptrdiff_t stride,
                 std::size_t width, int count);

} // namespace ormalux::kernels
