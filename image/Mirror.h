#pragma once

#include "image/PixelBlock.h"

namespace ormalux {

// The exact mirrors, in place, for gray and colour pixels. Nothing is allocated.

/// Pixel (x, y) moves to (width - 1 - x, height - 1 - y); bytes between the rows stay. Nothing happens unless
/// the block is whole.
void halfTurn(const PixelBlock& image);

/// Pixel (x, y) moves to (width - 1 - x, y); bytes between the rows stay. Nothing happens unless the block is
/// whole.
void mirrorLeftRight(const PixelBlock& image);

/// Byte stride * y + i moves to stride * (height - 1 - y) + i for every i < stride, padding included.
///
/// Deliberate: the stride may exceed the row of an unpadded buffer, as it does for gray images whose width is
/// not a multiple of 4. The moves whose both ends lie in the buffer then happen, the others do not.
void mirrorTopBottom(const PixelBlock& image);

} // namespace ormalux
