#pragma once

#include "image/GrayView.h"

namespace ormalux {

/// 3 x 3 gray-level erosion and dilation, in place and without scratch memory.
///
/// Deliberate: the scan runs from the top left pixel and writes where it reads, so the neighbours above and
/// to the left are already eroded (dilated) when a pixel is computed, and the minimum (maximum) runs along:
/// a dark (bright) pixel at (x, y) fills row y - 1 from column x - 1 on, its own from x - 2 on (row 0 from
/// x - 1), and every row below from one column further left. Neighbours outside the picture do not count.
/// Nothing happens to an empty picture.
void erode(GrayView image);
void dilate(GrayView image);

/// Pixels of several bytes, every byte of a pixel a channel that is scanned for itself.
struct InterleavedView
{
    std::uint8_t* pixels = nullptr;
    int width = 0; ///< in pixels
    int height = 0;
    std::ptrdiff_t stride = 0; ///< in bytes, at least width x bytesPerPixel
    int bytesPerPixel = 1;     ///< 1 to 4
};

void erode(const InterleavedView& image);
void dilate(const InterleavedView& image);

} // namespace ormalux
