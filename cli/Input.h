#pragma once

#include "image/VisionImage.h"

#include <CLI/CLI.hpp>

#include <stdexcept>
#include <string>
#include <vector>

namespace ormalux::cli {

/// Bad usage or input: the message names what and why; the program ends with exit code 2 when all is done.
struct InputError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// A picture as the gray operations take it; a colour picture by the mean of red, green and blue.
struct GrayPicture
{
    std::string file;
    CKestImage image;
    bool color = false;
};

/// Reads a picture; throws InputError.
GrayPicture readGray(const std::string& file);

/// The whole picture, or the region when it lies inside; throws InputError when it does not.
RECT regionWithin(const CKestImage& image, const std::string& file, const std::string& regionText);

/// The name that an output for this picture has: "{}" in the pattern stands for the picture's name without
/// folder and ending. Throws InputError when several pictures would take one name.
std::string outputName(const std::string& pattern, const std::string& file, bool severalPictures);

} // namespace ormalux::cli
