#pragma once

/// Where the pixels of a picture lie in another one: picture point (px, py) is the other's point
/// (xx px + xy py + x, yx px + yy py + y). The centre of the top left pixel is (0, 0) in both. As made, the
/// same place.
struct CAlignment
{
    double xx = 1;
    double xy = 0;
    double yx = 0;
    double yy = 1;
    double x = 0;
    double y = 0;
};
