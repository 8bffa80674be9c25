#pragma once

#include "color/VisionImage24.h"
#include "image/PictureOrigin.h"
#include "image/PixelSource.h"
#include "image/VisionImage.h"
#include "steps/Runner.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace ormalux::cli {

/// Bad usage or input: the message names what and why; the program ends with exit code 2 when all is done.
struct InputError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// Recipes that are wrong: a line each fault.
struct RecipeFault : std::runtime_error
{
    explicit RecipeFault(std::vector<std::string> faults)
        : std::runtime_error("the recipe is wrong"), lines(std::move(faults))
    {}
    std::vector<std::string> lines;
};

/// A picture that was read: rows top-down and unpadded.
struct LoadedPicture
{
    PixelSource pixels;
    PictureOrigin origin;
    std::shared_ptr<const void> owner;   ///< of the pixels
    const std::uint16_t* deep = nullptr; ///< of a file of 16-bit gray levels: these, row by row

    bool isGray() const { return pixels.bitCount == 8; }
};

/// A picture that was read, and what steps work on.
struct Workpiece
{
    std::string file;
    LoadedPicture picture;
    Work work; ///< borrows the picture's pixels
};

/// Reads a picture; throws InputError. What the reader had to cut (depth, unless the caller takes all of it,
/// pages, transparency) is told on standard error.
LoadedPicture readPictureFile(const std::string& file, bool takesDepth = false);
/// A picture that a recipe names, gray; null with the reason when it cannot be read.
std::shared_ptr<const CKestImage> readGrayPicture(const std::string& file, std::string& why);
/// The pixels as the engine takes them; of 16-bit gray levels all bits, so many of which are significant (0:
/// as the recipe says).
FrameSource frameOf(const LoadedPicture& picture, int bits = 0);
/// Reads a picture for steps; throws InputError.
void loadPicture(const std::string& file, Workpiece& piece);
/// What a function of the engine returns; what it refuses becomes an InputError that names the file.
template <class Call>
auto orInputError(const std::string& file, const Call& call)
{
    try {
        return call();
    } catch (const PictureError& error) {
        throw InputError(file + ": " + error.what());
    }
}

/// The pixels of an image as writers take them.
PixelSource pixelsOf(const CKestImage& image);
PixelSource pixelsOf(const CKestImage24& image);
/// Loads the module of pictures when any of these files, by their names, needs it. Processes that are born
/// later have it then.
void loadModuleFor(const std::vector<std::string>& files);

/// Writes a picture in the format of the name's ending, whole or not at all; throws InputError.
void savePicture(const std::string& name, const CKestImage& image);
/// The same for what the steps have made of a picture, in colour if they worked in colour.
void savePicture(const std::string& name, const Work& work);

/// The name that an output for this picture has: "{}" in the pattern stands for the picture's name without
/// folder and ending. Throws InputError when several pictures would take one name.
std::string outputName(const std::string& pattern, const std::string& file, bool severalPictures);

// What texts of options must be: why one is refused, empty when it is right.
std::string checkThreshold(const std::string& text);
std::string checkLevel(const std::string& text);
std::string checkRegion(const std::string& text);
std::string checkObject(const std::string& text);

} // namespace ormalux::cli
