#pragma once

#include <cstdint>
#include <vector>

class CKestImage;
class CKestView;

namespace ormalux {

/// What a match source is for: ".mcs" files hold patterns, ".ocs" files characters.
enum class SourceKind
{
    Pattern,
    Character
};

/// The bytes of a match source file: the region binarised at its automatic threshold. key is 0 or 255 for a
/// pattern (black or white object), the character otherwise. Empty for an image without pixels.
std::vector<std::uint8_t> sourceFile(const CKestImage& region, std::uint8_t key);

/// Asks for the key and a file and saves the region under the view's tracker there; says so when that fails.
/// The dialogs are open when this returns.
void saveTrackerAsSource(CKestView& view, SourceKind kind);

} // namespace ormalux
