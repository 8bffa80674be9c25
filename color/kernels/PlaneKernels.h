#pragma once

#include "color/ColorPlane.h"

#include <cstddef>
#include <cstdint>

/// Kernels that make one gray value of each pixel of a run of blue, green, red bytes.
namespace ormalux::kernels {

/// One plane of count pixels: luma, differences, intensity, saturation, value or one of C, M, Y, K.
void plane(Plane plane, const std::uint8_t* bgr, std::uint8_t* gray, std::size_t count);
/// 255 where low[c] <= byte <= high[c] holds for all three bytes c, else 0.
void colorRange(const std::uint8_t* bgr, std::uint8_t* gray, std::size_t count, const std::uint8_t low[3],
                const std::uint8_t high[3]);

} // namespace ormalux::kernels
