#pragma once

#include "cli/PictureTable.h"

#include <string>

namespace ormalux::cli {

// What the module draws, as writePicture (view/PictureWriter.h) writes it. False with a sentence in error.

/// A picture with shapes drawn over it.
bool writeAnnotated(const char* path, const OrmaluxPixels& picture, const OrmaluxShape* shapes,
                    std::size_t count, std::string* error);
/// The gray levels' counts with an axis of levels.
bool writeHistogramPlot(const char* path, const long* counts, std::string* error);

} // namespace ormalux::cli
