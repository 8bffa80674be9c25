#pragma once

#include "image/Filter.h"

namespace ormalux {

/// The filters with fixed kernels.
enum class NamedFilter
{
    Sharpen,
    Blur,
    Soften,
    Gassian3x3,
    Gassian5x5,
    Emboss,
    Edge,
    Laplacian
};

/// What the filter computes, written as a convolution.
Convolution convolutionOf(NamedFilter name);

/// The same as filter(image, convolutionOf(name), false), bit for bit, by code of its own.
bool filter(GrayView image, NamedFilter name);

} // namespace ormalux
