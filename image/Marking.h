#pragma once

#include "image/GrayView.h"

#include <span>

namespace ormalux {

/// Fills the rectangle with inclusive, ordered corners. Nothing happens for a corner below 0, right above the
/// width or bottom above the height. Deliberate: right = width and bottom = height pass; the fill then takes
/// in the next row's first pixel, or a row below the last, as far as the buffer goes.
void markRectangle(const GrayView& image, int left, int top, int right, int bottom, std::uint8_t value);

/// Pixels that differ from the other's at the same place by more than tolerance become value, all others the
/// opposite extreme: 0, or 255 when value is 0. Equal pixels never differ, whatever the tolerance.
void markDifferences(std::span<std::uint8_t> pixels, const std::uint8_t* others, std::uint8_t value,
                     int tolerance);

/// Shifts a run of bytes by d: byte i becomes byte i + d, or 0 where there is none.
void shiftBytes(std::span<std::uint8_t> bytes, std::int64_t d);
/// The same into another run of the same length.
void shiftBytes(std::span<const std::uint8_t> bytes, std::int64_t d, std::uint8_t* shifted);

} // namespace ormalux
