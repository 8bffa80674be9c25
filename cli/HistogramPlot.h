#pragma once

#include "image/VisionImage.h"

#include <string>

namespace ormalux::cli {

/// Writes a picture of the gray levels' counts with an axis of levels; throws InputError.
void writeHistogramPlot(const std::string& name, const CKestImage& image);

} // namespace ormalux::cli
