#pragma once

#include "image/VisionImage.h"
#include "view/DrawObjArray.h"

#include <string>

namespace ormalux::cli {

/// Draws the shapes over the picture and writes it in the format of the name's ending; throws InputError.
/// Shapes stand in picture coordinates; a pixel covers the device square to its right and below.
void writeAnnotated(const std::string& name, const CKestImage& image, CDrawObjArray& shapes);

/// A box around the inclusive rectangle with a small label above it (below at the top edge).
void addLabelledBox(CDrawObjArray& shapes, const RECT& box, COLORREF color, const std::string& label);

} // namespace ormalux::cli
