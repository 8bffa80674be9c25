#pragma once

#include "array/MatchArray.h"
#include "array/Records.h"
#include "image/GrayView.h"

#include <span>

namespace ormalux {

/// Appends for every character box, in the order of the list, the source that agrees best with it: the
/// highest yield average, the last of equals. A box that leaves the image gives nothing, nor does any without
/// sources. Nothing is appended when memory is short.
///
/// A box whose corners are reversed has no pixels; its area is the product of its extents as they are.
void matchCharacters(const ConstGrayView& image, int threshold, std::span<const _stBlobRect> boxes,
                     std::span<const _stMatchSource> sources, CMatchResultArray& results);

} // namespace ormalux
