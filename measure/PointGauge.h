#pragma once

#include "image/GrayView.h"
#include "measure/kernels/GaugeKernels.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <optional>

class CPixelArray;

/// Edge points along a straight line: where its binarised profile changes.
namespace ormalux {

/// A measuring line, ready to be walked: clamped into the picture, put in the order of the walk (left to
/// right, or top to bottom when it is at least as high as wide), then tilted by a pixel at its far end where
/// it would be vertical or horizontal. The tilt may leave the picture by one column or row.
struct GaugeLine
{
    POINT from;
    POINT to;
};

/// view must not be empty.
ORMALUX_API GaugeLine gaugeLine(const ConstGrayView& view, std::int64_t x1, std::int64_t y1, std::int64_t x2,
                                std::int64_t y2);

/// The automatic threshold of the rectangle with these corners; 0 when it leaves the picture or has no edges.
ORMALUX_API int edgeThreshold(const ConstGrayView& view, POINT corner1, POINT corner2);

/// The steps that are edges of the polarity: 0 from dark to bright along the walk, 1 from bright to dark;
/// bright is above the threshold. Nothing for other polarities, for the threshold 0, which asks for no
/// measurement, and for thresholds that no sample or every sample is above.
std::optional<kernels::StepRule> edgeRule(int polarity, int threshold);

struct EdgePoint
{
    POINT at; ///< the first sample on the new side of the threshold
    std::uint8_t level;
    std::uint8_t contrast; ///< to the sample before it
};

/// Appends all edges in the order of the walk, or none when memory is short; parameter is the contrast.
/// Samples outside the picture are left out and make no edge.
void appendEdges(const ConstGrayView& view, const GaugeLine& line, int polarity, int threshold,
                 CPixelArray& ar);

/// The edge of the largest contrast, the last one among equals; false when there is none.
bool strongestEdge(const ConstGrayView& view, const GaugeLine& line, int polarity, int threshold,
                   EdgePoint& edge);

} // namespace ormalux
