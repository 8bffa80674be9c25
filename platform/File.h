#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace ormalux {

/// Opens, for reading or writing, by a path in UTF-8 on every platform. Nothing throws.

/// The length of a regular file in bytes; nothing when the path is not a readable regular file.
std::optional<std::uint64_t> fileLength(const char* path);

/// The whole of a regular file, at most limit bytes of it from its beginning. Nothing when it cannot be read,
/// memory is short, or the path names something else (a directory, a device).
std::optional<std::vector<std::uint8_t>> readFile(const char* path, std::uint64_t limit = UINT64_MAX);

/// Writes the parts one after the other, whole or not at all: into a new file beside the target, which then
/// takes its place. False when that fails; the old file is then as it was.
bool writeFile(const char* path, std::span<const std::span<const std::uint8_t>> parts);
bool writeFile(const char* path, std::span<const std::uint8_t> bytes);

} // namespace ormalux
