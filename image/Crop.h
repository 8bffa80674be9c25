#pragma once

#include "image/GrayView.h"

namespace ormalux {

/// A new unpadded copy of the rectangle with inclusive, ordered corners, to be freed with delete[]. Null when
/// the rectangle leaves the image or memory is short.
std::uint8_t* copyOfRectangle(const ConstGrayView& image, int left, int top, int right, int bottom);

} // namespace ormalux
