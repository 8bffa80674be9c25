#pragma once

#include "array/MatchArray.h"
#include "platform/Types.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class CKestImage;

namespace ormalux {

/// What a match source is for: ".mcs" files hold patterns, whose key is the object's polarity (0 or 255),
/// ".ocs" files characters, whose key is the character. Both have the same layout.
enum class SourceKind
{
    Pattern,
    Character
};

/// Writes the region in black and white at a level as a match source, whole or not at all. False when that
/// fails or the region has no pixels.
bool writeSource(const std::string& path, const CKestImage& region, int level, std::uint8_t key);

/// The source in the file at a path in UTF-8. What a file holds is kept until it holds something else, so
/// that a source may be loaded as often as a slider moves. Nothing when it cannot be read or is refused (see
/// CMatchSrcArray::Add). Safe to call from any thread.
std::optional<_stMatchSource> loadSource(const std::string& path);

/// The sources that can be loaded, in the order of their files.
struct LoadedSources
{
    CMatchSrcArray sources;
    std::vector<std::string> refused; ///< the files of the others
};
LoadedSources loadSources(const std::vector<std::string>& paths);

/// The lines of an example program that load the sources into `arMatchSrc`.
CString scriptSourceLines(const std::vector<std::string>& paths);
/// The lines of a complete program that declare `sources` and load them.
CString programSourceLines(const std::vector<std::string>& paths);

} // namespace ormalux
