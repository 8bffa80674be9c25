#pragma once

#include "match/CharacterReader.h"
#include "measure/BlobFinder.h"

#include <vector>

namespace ormalux {

/// A blob, or several that make a character.
struct CharacterPiece
{
    CharacterBox box;
    std::int64_t area; ///< number of pixels
    BestKeys best;     ///< empty for what is no character by its size
};

/// The characters among the pieces, whose boxes alone are given, in their order: pieces of admitted extents
/// are read, and pieces join while together they agree better with some template of about their size than
/// alone, in the mean of their pixels. A piece inside another one's box joins it when that one is not worse.
/// False when memory is short. May throw std::bad_alloc.
bool joinPieces(CharacterReader& reader, const BlobSizes& sizes, std::vector<CharacterPiece>& pieces);

} // namespace ormalux
