#pragma once

#include "array/Records.h"
#include "image/GrayView.h"
#include "match/CharacterReading.h"
#include "match/InkTemplate.h"
#include "measure/BlobFinder.h"

#include <span>
#include <vector>

namespace ormalux {

/// Reads every box of the list, in its order; boxes that leave the image are left out. False, with the result
/// empty, when memory is short.
bool readBoxes(const ConstGrayView& image, const CReadingSettings& settings,
               std::span<const CharacterBox> boxes, std::span<const _stMatchSource> sources,
               std::vector<CCharacterReading>& result);

/// Finds the characters of a region and reads them, in reading order. A character is a blob of the given
/// extents, or several that agree better with a source together than each of them alone: broken strokes,
/// dots. False, with the result empty, when memory is short. The region must lie in the image.
bool readRegion(const ConstGrayView& image, const CReadingSettings& settings, const BlobRegion& region,
                std::span<const _stMatchSource> sources, std::vector<CCharacterReading>& result);

} // namespace ormalux
