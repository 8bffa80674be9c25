#pragma once

#include "color/ColorView.h"
#include "image/BmpFile.h"
#include "platform/File.h"

namespace ormalux {

/// Reads the padded rows of a 24-bit BMP file, bottom row first, into as many bytes, top row first; the
/// padding goes with its row. False when the file does not give them all; the bytes are then undefined.
bool readColorRows(FileReader& file, const BmpHeader& header, std::uint8_t* pixels);

/// Writes a 24-bit BMP file, whole or not at all. The view may be empty: then there are the headers alone,
/// with the given size. Deliberate: a row is the 3 x width bytes of the unpadded buffer, bottom row first,
/// and stride - width bytes of 0, stride the padded row, and behind the rows stands the whole padded buffer
/// with its rows reversed. Readers that go by the headers find the picture only where the padding is right.
bool writeColorBmp(const char* path, const ConstColorView& image, int width, int height);

} // namespace ormalux
