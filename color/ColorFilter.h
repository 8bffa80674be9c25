#pragma once

#include "color/ColorView.h"
#include "image/NamedFilters.h"

namespace ormalux {

/// Deliberate: the gray filter over the first width x height bytes, taken as a gray picture of that size,
/// channels not separated. Every byte of the buffer behind them becomes 0. Nothing happens where the gray
/// filter does nothing.
void filter(const ColorView& image, const Convolution& convolution, bool threaded);
void filter(const ColorView& image, NamedFilter name);

/// The gray in-place scan for each channel alone, rows unpadded.
void erode(const ColorView& image);
void dilate(const ColorView& image);

} // namespace ormalux
