#pragma once

#include "match/Template.h"

#include <cstdint>

namespace ormalux {

/// How well a template agrees with a box, in single precision throughout: the share of its black and of its
/// white pixels that agree (1 when the record counts none), each times the smaller area over the larger.
struct Yields
{
    float black;
    float white;

    /// What results are ordered by.
    float average() const { return (white + black) * 0.5f; }
};

/// The smaller area over the larger; 0 when the larger is 0.
inline float sizeRatio(float a, float b)
{
    const float larger = a < b ? b : a;
    return larger == 0.0f ? 0.0f : (a < b ? a : b) / larger;
}

inline Yields yieldsOf(const kernels::Hits& hits, const TemplateFacts& facts, float boxArea)
{
    const float black = facts.blackCount == 0.0f ? 1.0f : float(hits.black) / facts.blackCount;
    const float white = facts.whiteCount == 0.0f ? 1.0f : float(hits.white) / facts.whiteCount;
    const float ratio = sizeRatio(boxArea, facts.area);
    return {black * ratio, white * ratio};
}

} // namespace ormalux
