#pragma once

#include "platform/Export.h"

#include <array>
#include <vector>

/// Points and lines of a picture, and what they measure in the plane that it shows. Coordinates are real: the
/// centre of the top left pixel is (0, 0), y downward. Angles are degrees, counter-clockwise as seen.

struct CPlanePoint
{
    double x;
    double y;
};

/// A straight line without ends.
struct CPlaneLine
{
    double x; ///< a point of the line; distances between lines start from that of the first
    double y;
    double angle;
};

/// A point of the picture and where it lies in the plane.
struct CPlanePair
{
    CPlanePoint picture;
    CPlanePoint plane;
};

/// From pixels to lengths: one scale, or the perspective view of a plane (a homography). Constant members may
/// be called from many threads at once. Nothing throws.
class ORMALUX_API CKestPlaneScale
{
public:
    /// A pixel is as long as a unit.
    CKestPlaneScale();
    /// So many units a pixel. Returns 1; 0 and changes nothing unless it lies between 1e-300 and 1e300.
    int SetPerPixel(double units);
    /// The homography with the least sum of squared distances in the plane, for four or more pairs. Returns
    /// 1; 0 and changes nothing for fewer, for coordinates that are not finite, where picture or plane points
    /// lie in a line (or but for one of them), where the points lie on both sides of the horizon, or where
    /// memory is short.
    int SetPoints(const std::vector<CPlanePair>& pairs);
    /// Where the point lies in the plane, in units. Returns 1, or 0 and leaves plane as it is when it lies on
    /// or beyond the horizon.
    int Map(const CPlanePoint& picture, CPlanePoint& plane) const;
    /// Units a pixel at the point: the root of the area that a pixel there has in the plane. 0 on or beyond
    /// the horizon.
    double GetScale(const CPlanePoint& picture) const;
    /// The distance of the mapped points in units; below 0 where one has no place in the plane.
    double GetDistance(const CPlanePoint& a, const CPlanePoint& b) const;

private:
    std::array<double, 9> m_map; ///< the homography, row by row
};
