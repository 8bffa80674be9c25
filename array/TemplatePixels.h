#pragma once

#include <cstdint>
#include <span>

namespace ormalux {

/// A copy of the pixels that stays valid until the module is unloaded; null when memory is short. Copies of
/// match source arrays share it and nobody owns it, so nothing can free it sooner. Safe to call from any
/// thread.
std::uint8_t* keepTemplatePixels(std::span<const std::uint8_t> pixels);

} // namespace ormalux
