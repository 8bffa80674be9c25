#pragma once

#include "color/VisionImage24.h"
#include "tests/support/Random.h"

#include <climits>
#include <vector>

namespace testing_support {

using Bytes = std::vector<std::uint8_t>;

/// Random bytes for an image of the size, its rows padded.
inline Bytes paddedBytes(int width, int height, unsigned seed)
{
    return randomBytes(std::size_t(ormalux::paddedStride(width)) * std::size_t(height), seed);
}

/// The whole buffer of an image.
inline Bytes bufferOf(const CKestImage24& image)
{
    const ormalux::ConstColorView view = image.view();
    return view.empty() ? Bytes() : Bytes(view.pixels, view.pixels + view.length);
}

/// Coordinates that no operation may stumble over.
inline constexpr int extremes[] = {INT_MIN, INT_MIN + 1, -3, -1, 0, 1, 2, 3, 5, 100, INT_MAX - 1, INT_MAX};

} // namespace testing_support
