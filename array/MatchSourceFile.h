#pragma once

#include "array/Records.h"

#include <cstdint>
#include <optional>
#include <span>
#include <system_error>

namespace ormalux {

/// The file of one match source, ".mcs" and ".ocs" alike: little-endian, unpadded; offset, bytes, what:
///
///      0   1  key
///      1   4  black count
///      5   4  white count
///      9   4  threshold
///     13   4  width
///     17   4  height
///     21      width x height pixels, rows top-down
///
/// What follows the pixels is ignored. The counts, the key and the pixels are taken as they stand.
inline constexpr std::size_t matchSourceHeaderSize = 21;

/// A source as a file's bytes hold it.
struct ParsedMatchSource
{
    _stMatchSource source;                ///< without pixels: data is null
    std::span<const std::uint8_t> pixels; ///< width x height of the bytes; empty for a size of 0
};

/// The record in a file's header, data null; nothing when there are fewer bytes or a size is negative.
std::optional<_stMatchSource> parseMatchSourceHeader(std::span<const std::uint8_t> bytes);

/// The whole file; nothing when its header is refused or its pixels are not all there.
std::optional<ParsedMatchSource> parseMatchSource(std::span<const std::uint8_t> bytes);

/// The source in the file at a path in UTF-8, with pixels that stay until the module is unloaded. Nothing
/// when the file cannot be opened, is refused as above, or memory is short. Reads no more than the source
/// needs and allocates no more than the file holds.
std::optional<_stMatchSource> readMatchSource(const char* path);

/// Writes the file, whole or not at all. False when that fails, a size is negative, or pixels are missing;
/// why, when given, then holds the reason.
bool writeMatchSource(const char* path, const _stMatchSource& source, std::error_code* why = nullptr);

} // namespace ormalux
