#pragma once

#include "array/PixelArray.h"
#include "image/ImagePart.h"

#include <cstdint>

namespace ormalux {

/// Appends a record for every pixel of the part with low <= p <= high, by rows, in coordinates of the image;
/// all of them or, when memory is short, none.
void collectPixels(const ImagePart& part, std::uint8_t low, std::uint8_t high, CPixelArray& pixels);

} // namespace ormalux
