#pragma once

#include "cli/PictureTable.h"
#include "image/PixelSource.h"

#include <functional>
#include <string>

namespace ormalux::cli {

/// The module that decodes and writes other pictures than BMP and draws, loaded at the first call: the
/// program starts without it. Null with the reason in `why` when there is none.
const OrmaluxPictures* pictureModule(std::string& why);

/// What the program says of itself behind its version; empty when it can have the module.
const char* buildNote();

/// Writes by a function of the module, which returns what it does; throws InputError that names the file.
void writeByModule(const std::string& name,
                   const std::function<const char*(const OrmaluxPictures& module)>& write);

OrmaluxPixels toPixels(const PixelSource& picture);

} // namespace ormalux::cli
