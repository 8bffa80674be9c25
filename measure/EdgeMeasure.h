#pragma once

/// What the sub-pixel measurements of CKestImage take and give. Positions are real pixel coordinates: the
/// centre of the top left pixel is (0, 0), x to the right, y downward. Angles are degrees, counter-clockwise
/// as seen.

/// Which way an edge goes, seen from where its scan starts.
enum class CEdgePolarity
{
    DarkBright,
    BrightDark,
    Any
};

/// Which of the edges along a scan are taken.
enum class CEdgeSelect
{
    All, ///< of a line or a circle the strongest of each scan
    First,
    Last,
    Strongest ///< the first among equals
};

/// What counts as an edge.
struct CEdgeSettings
{
    CEdgePolarity polarity = CEdgePolarity::Any;
    CEdgeSelect select = CEdgeSelect::All;
    double contrast = 20; ///< the least step between the two sides, in gray levels; 0 to 255
    double sigma = 1;     ///< Gaussian smoothing along the scan in pixels; above 0, at most 20
    int width = 1;        ///< samples averaged across the scan, 1 pixel apart and centred; 1 to 1,000
};

/// An edge along a scan.
struct CEdgePoint
{
    double x;
    double y;
    double position; ///< from the first end of the scan, in pixels
    double contrast; ///< the step between the two sides, in gray levels, above 0
    CEdgePolarity polarity;
};

/// Where a straight edge is looked for: a turned rectangle. The scans run across it, evenly spaced, each from
/// the left of the edge's direction to its right.
struct CEdgeBox
{
    double center_x;
    double center_y;
    double length;    ///< along the edge, in pixels, above 0
    double width;     ///< across the edge, in pixels, above 0
    double angle = 0; ///< the edge's expected direction
    int scans = 50;   ///< 3 to 10,000
};

/// Where a circular edge is looked for: between two circles, in either order. The scans are rays from the
/// centre, evenly spaced.
struct CEdgeRing
{
    double center_x;
    double center_y;
    double radius1; ///< in pixels, 0 or more
    double radius2;
    int scans = 64; ///< 3 to 10,000
};

/// A measured straight edge.
struct CEdgeLine
{
    double x; ///< the middle of the points used, on the line
    double y;
    double angle; ///< in (-90, 90]
    double x1;    ///< where the line enters the box, seen along the box's direction
    double y1;
    double x2; ///< where it leaves the box
    double y2;
    double rms; ///< of the distances of the points used, in pixels
    int scans;  ///< scans made
    int used;   ///< scans whose edge belongs to the line
};

/// A measured circular edge.
struct CEdgeCircle
{
    double x; ///< the centre
    double y;
    double radius;
    double rms; ///< of the distances of the points used, in pixels
    int scans;  ///< scans made
    int used;   ///< scans whose edge belongs to the circle
};
