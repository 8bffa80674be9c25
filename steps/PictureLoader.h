#pragma once

#include <memory>
#include <string>

class CKestImage;

namespace ormalux {

/// Reads a picture that a recipe names, as a gray picture; null with the reason when it cannot.
using PictureLoader = std::shared_ptr<const CKestImage> (*)(const std::string& path, std::string& why);

/// Takes the place of the engine's own loader, which reads uncompressed BMP files of 8, 24 and 32 bits alone.
/// To be called before recipes are read.
void setPictureLoader(PictureLoader loader);

std::shared_ptr<const CKestImage> loadRecipePicture(const std::string& path, std::string& why);

} // namespace ormalux
