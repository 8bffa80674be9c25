#pragma once

#include "image/Picture.h"

#include <functional>
#include <span>
#include <string>

namespace ormalux {

/// What a picture file gave: a picture, or its bytes when it is of a kind that others must decode, or why it
/// gave neither.
struct PictureFile
{
    Picture picture;
    std::vector<std::uint8_t> bytes;
    PictureRefusal why;
};

/// Why a file that begins so cannot be a picture; none when it may be one. Asked before a large file is read.
using WhyNoPicture = std::function<PictureRefusal(std::span<const std::uint8_t> beginning)>;

/// Reads a picture file as far as it is a plain BMP (image/BmpReader.h). path is UTF-8. Throws
/// std::bad_alloc.
PictureFile openPicture(const char* path, bool indicesAreGray, const WhyNoPicture& whyNone);

// Why files gave no picture, in words.
PictureRefusal tooLarge();
PictureRefusal unknownKind();
PictureRefusal truncatedFile();
/// The sentence that names the file and why it was not read.
std::string readingError(const char* path, const std::string& why);

/// Runs a way of writing a file, which words why it failed. False when it did; error, when given, then holds
/// a sentence that names the file. Memory that is short counts as failure.
bool writeOrTell(const char* path, std::string* error, const std::function<bool(std::string& why)>& write);

/// Writes a BMP, 8-bit with a gray palette or 24-bit, whole or not at all, whatever the path's ending. False
/// when that fails; error, when given, then holds one English sentence with the file and the reason.
bool writeBmp(const char* path, const PixelSource& picture, std::string* error = nullptr);

/// What stands behind the last dot of the file's name, with small letters: "bmp".
std::string fileEnding(const char* path);

} // namespace ormalux
