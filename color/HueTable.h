#pragma once

#include <cstddef>
#include <cstdint>

namespace ormalux {

/// The hue of count pixels of blue, green, red bytes, 255 for 360 degrees. Safe to call from any thread; the
/// first call takes some milliseconds longer.
void hues(const std::uint8_t* bgr, std::uint8_t* gray, std::size_t count);

} // namespace ormalux
