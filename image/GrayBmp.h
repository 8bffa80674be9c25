#pragma once

#include "image/BmpFile.h"
#include "image/GrayView.h"
#include "platform/File.h"

namespace ormalux {

/// Reads the pixels of an 8-bit BMP file, bottom row first, into width x height bytes, top row first. False
/// when the file does not give them all; the bytes are then undefined. Deliberate: the file's rows are taken
/// as unpadded and put in order as mirrorTopBottom does, so only widths that are a multiple of 4 come out
/// right.
bool readGrayRows(FileReader& file, const BmpHeader& header, std::uint8_t* pixels);

/// Writes an 8-bit BMP file, whole or not at all. The view may be empty: then there are the headers alone,
/// with the given size.
bool writeGrayBmp(const char* path, const ConstGrayView& image, int width, int height);

} // namespace ormalux
