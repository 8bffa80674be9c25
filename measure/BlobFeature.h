#pragma once

/// What is measured of a blob: of its own pixels alone, in pixels, coordinates of the image. The centre of
/// the image's top left pixel is (0, 0).
struct CBlobFeature
{
    long long area;    ///< number of pixels
    double centroid_x; ///< mean of the pixels' centres
    double centroid_y;
    int left; ///< the box; all four sides belong to it
    int top;
    int right;
    int bottom;
    /// Length of the outline. The contour, 8-connected, is made of the pixels that have one of their four
    /// neighbours outside the blob; each counts by how it goes on: K. Benkrid and D. Crookes, Design and FPGA
    /// implementation of a perimeter estimator. With e contour pixels beside it and d diagonal to it, a pixel
    /// counts 1 for e of 2 or 3 with d below 3, the root of 2 for (e, d) = (0, 2) and (1, 3), half the sum of
    /// both for (1, 1) and (1, 2), else nothing. A single pixel has none.
    double perimeter;
    double circularity; ///< 4 pi area / perimeter^2, 0 without a perimeter; digital discs lie near 1
    /// Direction of the longer axis in degrees, (-90, 90], counter-clockwise with y pointing up; 0 where no
    /// direction is longer.
    double orientation;
    /// Axes of the ellipse of equal second moments, 4 times the roots of the moments' eigenvalues; pixels are
    /// squares, whose own moment, 1 / 12, is included.
    double major;
    double minor;
    long long holes; ///< parts of the background inside, connected the other way than the blob
    double mean;     ///< mean gray level of the pixels
};
