#pragma once

#include "image/Picture.h"

#include <cstdint>
#include <span>

namespace ormalux {

enum class BmpOutcome
{
    Read,
    NotOurs,   ///< no bitmap file, or one of another kind: 1, 4, 16 or 32 bits, compressed, or with an old
               ///< header
    Truncated, ///< the file ends before its pixels do
    TooLarge,
    NoMemory
};

/// Reads an uncompressed BMP of 8 or 24 bits of any width, top row or bottom row first. The palette is
/// applied (gray when all its entries are gray, else colour) unless indicesAreGray. Sizes in the file's
/// header are believed only as far as the file is long.
BmpOutcome readBmp(std::span<const std::uint8_t> file, bool indicesAreGray, Picture& picture);
/// The same for one of 32 bits whose fourth byte means nothing.
BmpOutcome readWideBmp(std::span<const std::uint8_t> file, Picture& picture);

} // namespace ormalux
