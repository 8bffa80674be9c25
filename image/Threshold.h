#pragma once

#include "image/GrayView.h"

#include <cstdint>
#include <span>

namespace ormalux {

/// Every pixel greater than t becomes 255, every other 0; t may be any number.
void threshold(std::span<std::uint8_t> pixels, int t);

/// A pixel with lower <= p <= upper becomes value, every other 0 if value is 255 and 255 otherwise; the
/// bounds may be any numbers.
void doubleThreshold(std::span<std::uint8_t> pixels, int upper, int lower, std::uint8_t value);

/// Each row becomes 255 where a pixel is greater than the mean of the means of the row's edges (see
/// kernels/RiseKernels.h), else 0; a row without edges becomes fill.
void adaptiveThreshold(const GrayView& view, std::uint8_t fill);

} // namespace ormalux
