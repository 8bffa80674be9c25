#pragma once

#include "image/GrayView.h"
#include "image/StructuringElement.h"

namespace ormalux {

enum class MorphologyOperation
{
    Erode,
    Dilate,
    Open,    ///< erode, then dilate
    Close,   ///< dilate, then erode
    TopHat,  ///< what opening removes
    Gradient ///< dilated less eroded
};

/// The textbook's gray morphology by a shape, in place: every pixel of the result depends on the unchanged
/// picture, unlike the scan of image/Morphology.h. What lies outside the picture does not count. The element
/// is not mirrored for dilation. The results are those of OpenCV's morphologyEx with its border of its own.
///
/// False, and nothing has happened, for an empty picture, a size below 1 or above maxElementSize, or too
/// little memory.
bool morphology(GrayView image, MorphologyOperation operation, ElementShape shape, int width, int height);

} // namespace ormalux
