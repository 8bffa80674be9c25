#pragma once

#include "array/Records.h"

#include <cstddef>
#include <cstdint>

namespace ormalux::kernels {

/// Writes a record (x, y, value, 0.0) for every byte of a row with low <= byte <= high, from left to right, x
/// counted from the row's first byte on, whose x is given; returns how many. Writes nothing behind them.
std::size_t collectRange(const std::uint8_t* row, std::size_t width, std::uint8_t low, std::uint8_t high,
                         std::int32_t x, std::int32_t y, _stPixel* records);

} // namespace ormalux::kernels
