#pragma once

#include "steps/Parameter.h"
#include "image/VisionImage.h"

#include <string>
#include <vector>

namespace ormalux {

struct MatchRequest
{
    RECT region{};             ///< inclusive, inside the picture
    ThresholdChoice threshold; ///< a level, or a range
    bool perThreshold = false; ///< with a range: the single best part of each level
};

/// The agreement that parts are judged by: the mean of both yields.
float yield(const _stMatchResult& part);

/// The parts in coordinates of the picture, in the order of the search. Over a range every part is listed
/// once, at the level where it agrees best (the lowest of equals): results whose boxes overlap by more than
/// half of the smaller are the same part.
std::vector<_stMatchResult> searchParts(const CKestImage& image, CMatchSrcArray& sources,
                                        const MatchRequest& request);

/// By "yield" (best first), "left" or "top"; equal parts keep their order.
void sortParts(std::vector<_stMatchResult>& parts, const std::string& key);

} // namespace ormalux
