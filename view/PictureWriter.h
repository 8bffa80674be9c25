#pragma once

#include "image/PictureFile.h"

#include <QImage>

#include <string>

namespace ormalux {

/// Writes a picture file, whole or not at all: a file that stood there stays as it was when writing fails.
/// path is UTF-8; its ending names the kind: .bmp by our own code (8-bit with a gray palette, or 24-bit), any
/// other that the toolkit can write (.png, .jpg, .tif); an unknown ending, or none, is an error. False when
/// that fails; error, when given, then holds one English sentence with the file and the reason.
bool writePicture(const char* path, const PixelSource& picture, std::string* error = nullptr);
/// Gray images are written with 8 bits, all others with 24 in a BMP, without transparency.
bool writePicture(const char* path, const QImage& image, std::string* error = nullptr);

/// The same as a BMP, whatever the path's ending.
bool writeBmp(const char* path, const QImage& image, std::string* error = nullptr);

} // namespace ormalux
