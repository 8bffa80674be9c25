#pragma once

#include "platform/Types.h"

#include <optional>

namespace ormalux {

/// A shift and a turn of the plane of the picture (y down): where what was at a place has gone.
class Motion
{
public:
    Motion() = default;
    /// Takes from to to, and turns about it by degrees counter-clockwise as seen.
    Motion(double fromX, double fromY, double toX, double toY, double degrees);

    struct Point
    {
        double x, y;
    };
    Point map(double x, double y) const;
    /// Where it came from.
    Point back(double x, double y) const;
    double degrees() const { return m_degrees; }

    /// The place of an upright rectangle: its middle moves, its sides do not turn; to the nearest pixel.
    RECT map(const RECT& rect) const;

private:
    double m_cos = 1, m_sin = 0, m_dx = 0, m_dy = 0;
    double m_degrees = 0;
};

/// Degrees in (-180, 180].
double turnOf(double degrees);
/// Degrees of a line, which has no direction, in (-90, 90].
double lineTurnOf(double degrees);
/// The direction from one point to another: degrees, counter-clockwise with y up.
double directionOf(double x1, double y1, double x2, double y2);

} // namespace ormalux
