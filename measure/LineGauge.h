#pragma once

#include "image/GrayView.h"
#include "platform/Types.h"

#include <cstdint>

/// A straight edge inside a rectangle, from the strongest edges of many parallel scan lines.
namespace ormalux {

struct LineGaugeTask
{
    RECT area; ///< corners included, in order; may leave the picture, the scan lines are clamped into it
    int polarity;
    bool scanColumns; ///< scan lines run down (a roughly horizontal edge), else to the right
    std::int64_t
        step; ///< columns from one measured line to the next, below 1 counts as 1; rows go one by one
    int threshold;
    int bands = 0; ///< that the columns are cut into, each stepping anew; 0: as many as stepBandCount()
};

struct LineFit
{
    POINT first;
    POINT second;
    POINT center;
    double angle;
};

/// Measures the edge: the lines in front of the far border, cut into bands of equal size, each band walked by
/// steps, pair with their mirror line about the centre; the mean direction of all pairs, in band order, less
/// 90 is the angle. False when the centre line has no edge.
bool fitEdgeLine(const ConstGrayView& view, const LineGaugeTask& task, LineFit& fit);

/// sum + value + value + ..., n times, rounded after every addition.
double addRepeatedly(double sum, double value, std::int64_t n);

} // namespace ormalux
