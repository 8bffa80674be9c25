#pragma once

#include <cstddef>
#include <cstdint>

namespace ormalux::kernels {

/// own[x] = clamp(127 + above[x + 1] - below[x - 1], 0, 255) for a whole row, with below[0] for the first
/// pixel; above[width] and below[-1] may be read. kept receives what own held and its last pixel once more:
/// the row above of the next row. below may be kept if that holds the row already.
void embossRow(const std::uint8_t* above, std::uint8_t* own, const std::uint8_t* below, std::uint8_t* kept,
               std::size_t width);

} // namespace ormalux::kernels
