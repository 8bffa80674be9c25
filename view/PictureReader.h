#pragma once

#include "image/Picture.h"

#include <span>
#include <string>

namespace ormalux {

/// What becomes of a palette.
enum class PaletteUse
{
    /// The picture as every viewer shows it: gray when all its colours are gray, else colour; turned upright
    /// when the camera noted how it was held.
    Applied,
    /// The bytes of a file with 8 bits a pixel are gray levels whatever its palette says; every other file
    /// becomes
    /// a colour picture.
    IndicesAreGray
};

/// Reads a picture file of any kind that the system knows (BMP, PNG, JPEG, TIFF and what the toolkit's
/// plugins add), told by its content and not by its name. path is UTF-8. Of 16-bit gray the upper 8 bits are
/// taken; transparency is dropped; colours are never mixed into gray; of several pages the first is read. The
/// picture's origin tells what was cut so.
///
/// An empty picture when that fails; its origin then tells the fault, and error, when given, one English
/// sentence that names the file and the reason: not found, a directory, a pipe or device, not readable, not a
/// picture, truncated, of floating-point numbers, too large, too little memory.
Picture readPicture(const char* path, std::string* error = nullptr, PaletteUse use = PaletteUse::Applied);

/// The same for the bytes of a file that is no plain BMP, and for the beginning of one: why it gave no
/// picture. decodePicture throws std::bad_alloc.
Picture decodePicture(std::span<const std::uint8_t> file, PaletteUse use, PictureRefusal& why);
PictureRefusal whyNoPicture(std::span<const std::uint8_t> beginning);

} // namespace ormalux
