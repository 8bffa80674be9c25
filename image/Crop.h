#pragma once

#include "image/GrayView.h"

namespace ormalux {

/// A new unpadded copy of the rectangle with inclusive, ordered corners, to be freed with delete[]. Null when
/// the rectangle leaves the image or memory is short.
std::uint8_t* copyOfRectangle(const ConstGrayView& image, int left, int top, int right, int bottom);

/// Moves the rectangle to the beginning of the image's unpadded buffer. False when the rectangle leaves the
/// image.
bool cropInPlace(const GrayView& image, int left, int top, int right, int bottom);

} // namespace ormalux
