#pragma once

#include "cli/Values.h"
#include "image/VisionImage.h"
#include "view/PictureOrigin.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace ormalux::cli {

/// Bad usage or input: the message names what and why; the program ends with exit code 2 when all is done.
struct InputError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

struct Workpiece;

/// Reads a picture; throws InputError. Gray steps take a colour picture by the mean of red, green and blue.
/// What the reader had to cut (depth, pages, transparency) is told on standard error and returned.
PictureOrigin loadPicture(const std::string& file, Workpiece& work);

/// The region as it is when it lies inside the picture; throws InputError when it does not.
RECT regionWithin(const CKestImage& image, const std::string& file, const RECT& region);

/// The level that a choice stands for in the region: the automatic one, or the one given. Throws InputError
/// when the region has no rising edges to set a threshold by.
int levelOf(const ThresholdChoice& choice, const CKestImage& image, const RECT& region,
            const std::string& file, int step = 1);

/// Writes a picture in the format of the name's ending, whole or not at all; throws InputError.
void savePicture(const std::string& name, const CKestImage& image);
/// The same for what the steps have made of a picture, in colour if they worked in colour.
void savePicture(const std::string& name, const Workpiece& work);

/// The name that an output for this picture has: "{}" in the pattern stands for the picture's name without
/// folder and ending. Throws InputError when several pictures would take one name.
std::string outputName(const std::string& pattern, const std::string& file, bool severalPictures);

} // namespace ormalux::cli
