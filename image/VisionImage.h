#pragma once

#include "array/Array.h"
#include "image/GrayView.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <vector>

// What sub-pixel measurements take and give: measure/EdgeMeasure.h, measure/PlaneMeasure.h.
struct CEdgeSettings;
struct CEdgePoint;
struct CEdgeBox;
struct CEdgeRing;
struct CEdgeLine;
struct CEdgeCircle;
struct CPlanePoint;
struct CPlaneLine;

/// Edge polarities: along the measuring line from dark to bright, or from bright to dark.
enum
{
    BLACK_AND_WHITE = 0,
    WHITE_AND_BLACK = 1
};
/// Directions of a measured edge: roughly vertical, or roughly horizontal.
enum
{
    DIRECTION_VERTICAL = 0,
    DIRECTION_HORIZENTAL = 1
};

/// What is measured of a blob (measure/BlobFeature.h).
struct CBlobFeature;
/// Where the pixels of an image lie in another one (measure/Alignment.h).
struct CAlignment;

/// What ReadCharacters takes and gives (match/CharacterReading.h).
struct CReadingSettings;
struct CCharacterReading;

/// What LocalThreshold compares a pixel with.
enum
{
    LOCAL_MEAN = 0,
    LOCAL_GAUSSIAN = 1
};
/// Operations of Morphology.
enum
{
    MORPHOLOGY_ERODE = 0,
    MORPHOLOGY_DILATE = 1,
    MORPHOLOGY_OPEN = 2,
    MORPHOLOGY_CLOSE = 3,
    MORPHOLOGY_TOPHAT = 4,
    MORPHOLOGY_GRADIENT = 5
};
/// Shapes of Morphology.
enum
{
    MORPHOLOGY_RECT = 0,
    MORPHOLOGY_CROSS = 1,
    MORPHOLOGY_ELLIPSE = 2
};

/// A measured straight edge.
struct _stLineGaugeResult
{
    LONG x1; ///< first end point of the fitted segment
    LONG y1;
    LONG x2; ///< second end point
    LONG y2;
    LONG center_x; ///< the strongest edge on the centre scan line
    LONG center_y;
    double angle; ///< orientation in degrees, counter-clockwise with y pointing up
};

/// An 8-bit gray image: rows top-down and unpadded, 0 = black, 255 = white.
///
/// The image owns its buffer unless SetImagePtrLink made it borrow the caller's, which it never frees.
/// Nothing throws; an operation whose precondition fails does nothing. No operation touches memory outside
/// the image's buffer, whatever its arguments. Different images may be used from different threads at once;
/// one image only from one thread at a time. Rectangles have inclusive corners and are put in order unless
/// said otherwise.
class ORMALUX_API CKestImage
{
public:
    // Construction and pixels (image/VisionImage.cpp)

    /// An empty image.
    CKestImage();
    /// A black image.
    CKestImage(int width, int height);
    /// A copy of width x height bytes.
    CKestImage(int width, int height, unsigned char* pixels);
    /// A gray image made from 8-, 24- or 32-bit pixels; see SetImagePtr.
    CKestImage(int width, int height, int bitsPerPixel, unsigned char* pixels, const char* channels);
    /// A deep copy, never linked. An image assigned to itself stays as it is.
    CKestImage(const CKestImage& other);
    CKestImage& operator=(const CKestImage& other);
    ~CKestImage();

    /// A black image; with both sizes 0, or a size below 0, or too little memory, an image without a buffer.
    void SetImagePtr(int width, int height);
    /// A copy of width x height bytes, rows top-down and unpadded.
    void SetImagePtr(int width, int height, unsigned char* pixels);
    /// A gray image from top-down, unpadded pixels. 24 bits: channels names the gray value, one of "R", "G",
    /// "B", "RGB" (mean), "RG", "RB", "GB" (halved sums); anything else gives a black image. 32 bits:
    /// deliberately only the first quarter of the image is written. 8 bits: a copy. Other depths: width and
    /// height without a buffer.
    void SetImagePtr(int width, int height, int bitsPerPixel, unsigned char* pixels, const char* channels);
    /// Borrows width x height bytes, which must outlive their use by this image.
    void SetImagePtrLink(int width, int height, unsigned char* pixels);
    /// Lets go of the pixels; width, height and length become 0.
    void SetEmpty();
    /// Whether the image has no buffer.
    BOOL IsEmpty() const { return m_pixels == nullptr; }
    int GetWidth() const { return m_width; }
    int GetHeight() const { return m_height; }
    /// Width x height.
    int GetImageLen() const { return m_length; }

    /// The pixel, 0 outside the buffer.
    unsigned char GetPixel(int x, int y) const;
    void SetPixel(int x, int y, unsigned char value);
    /// A new copy of the rectangle, corners inclusive, which the caller frees with delete[]; null when it
    /// leaves the image.
    unsigned char* GetImagePtr(int x1, int y1, int x2, int y2) const;
    /// Deliberate: a new empty image, whatever the arguments; the caller deletes it.
    CKestImage* GetImage(int x1, int y1, int x2, int y2) const;
    /// Crops to the rectangle, corners inclusive; nothing happens when it leaves the image. Deliberate: the
    /// new size comes from the arguments as given, so a reversed rectangle gives a size of 0 or less.
    void SetROIPlacement(int x1, int y1, int x2, int y2);
    void SetROIPlacement(const RECT& rect);

    // Whole-image edits (image/VisionImageEdit.cpp; GetGrayLevelCount: image/VisionImageThreshold.cpp)

    /// The number of pixels of the level.
    long GetGrayLevelCount(unsigned char level) const;
    /// Fills the rectangle. Deliberate: x2 = width and y2 = height pass, and fill the next row's first pixel.
    void Marking(int x1, int y1, int x2, int y2, unsigned char value);
    /// Every pixel with low <= p <= high becomes value.
    void Marking(unsigned char low, unsigned char high, unsigned char value);
    /// Pixels that differ from the other image's by more than tolerance become value, all others the opposite
    /// extreme: 0, or 255 when value is 0. Images of different length: nothing happens.
    void MarkingDiffer(const CKestImage& other, unsigned char value, int tolerance);
    /// Shifts the content left and up as one run of bytes; what leaves a row enters its neighbour, and what
    /// leaves the image is lost. Uncovered bytes become 0. A linked image gets a buffer of its own.
    void Offset(int dx, int dy);
    /// Adds in place, modulo 256; nothing happens for images of different size. Returns this image.
    CKestImage& operator+(const CKestImage& other);
    /// Subtracts in place, stopping at 0; nothing happens for images of different size. Returns this image.
    CKestImage& operator-(const CKestImage& other);
    /// Paints the image upright into the rectangle. Needs the display module.
    void PaintImage(CDC* dc, CRect rect);

    // Files (image/VisionImageFile.cpp)

    /// Reads an 8-bit BMP; its palette is not applied. Returns 1, or 0 on failure. Deliberate: the file's
    /// rows are taken as unpadded, so only widths that are a multiple of 4 load right. A refused header
    /// leaves the image as it was; pixels that the file does not hold in full leave it without a buffer.
    int LoadImage(const char* path);
    /// Writes an 8-bit BMP with a gray palette. Returns 1, or 0 when the file cannot be written. An image
    /// with a size but without a buffer writes nothing and gives 0; one without a size gives a file of
    /// headers.
    int SaveImage(const char* path) const;

    // Point operations (image/VisionImagePoint.cpp)

    // Each works on the whole image in place; nothing happens to an image without pixels. Numbers become
    // levels by truncation toward 0.

    /// p becomes 255 - p.
    void Invert();
    /// p becomes clamp((p - 128) x (contrast + 100) / 100.0 + brightness + 128 + 0.5, 0, 255). Brightness
    /// -255 to 255, contrast -100 to 100; otherwise nothing happens.
    void Light(long brightness, long contrast);
    /// p becomes p^e / (255^e / 255) with e = 1 / gamma; above 1 brightens. 0 and 255 stay. Nothing happens
    /// unless gamma is above 0 and finite.
    void Gamma(float gamma);
    /// p becomes the number of pixels not above p, times the factor 255.0 / GetImageLen().
    void HistoEqualize();
    /// p becomes 255 x ln(p + 1) / ln(m + 1), m the largest pixel value but at least 1.
    void HistoLog();
    /// Deliberate: p becomes sqrt(p) x 128 / ln(m + 1), at most 255; a square root scaled by a logarithm.
    void HistoRoot();
    /// Levels from low to high become 254 x (p - low) / (high - low), lower ones 0 and higher ones 255. From
    /// either end, low and high are the first levels by which more than 1 % of the pixels were met, or the
    /// outermost levels of the image if the two are the same; an image of one level stays.
    void HistoNormalize();
    /// p becomes (p - low) x 255 / (high - low) with the outermost levels of the image; an image of one level
    /// stays.
    void HistoStretch();
    /// Levels from low to high become (p - low) x 255.0 / (high - low), rounded; lower ones 0 and higher ones
    /// 255. From either end, low and high are the first levels by which 3 % of the pixels were met; where
    /// high is not above low the image stays.
    void AutoContrast();

    // Thresholds and statistics (image/VisionImageThreshold.cpp)

    // An edge is a run, as long as possible, of at least 5 pixels along a line, each greater than the one
    // before, whose last exceeds its first by more than twice their number; its mean is an integer quotient.

    /// Every pixel greater than t becomes 255, every other 0; t may be any number.
    void Threshold(int t);
    /// A pixel with lower <= p <= upper becomes value, every other 0 if value is 255 and 255 otherwise. The
    /// first argument is the upper bound; the bounds may be any numbers.
    void DoubleThreshold(int upper, int lower, unsigned char value);
    /// In each row, pixels greater than the mean of the means of the row's edges, from left to right, become
    /// 255 and all others 0; rows without an edge are filled with fill.
    void AdaptiveThreshold(unsigned char fill);
    /// Otsu's level: the t at which splitting the pixels into those up to t and those above makes the
    /// variance between the two classes largest, the least of equals; 0 for an empty image or one of a single
    /// level. N. Otsu, IEEE Trans. SMC 9 (1979); equals OpenCV's THRESH_OTSU.
    int GetOtsuThreshold() const;
    /// Threshold at Otsu's level, which is returned.
    int OtsuThreshold();
    /// A pixel becomes 255 where it exceeds the mean of the window around it less offset, else 0; pixels
    /// outside the image count as the nearest one inside.
    ///
    /// LOCAL_MEAN takes the plain mean, at the same cost for every window; LOCAL_GAUSSIAN one weighted by a
    /// Gaussian of sigma 0.3 ((window - 1) / 2 - 1) + 0.8, up to window 9 by the usual fixed weights. Means
    /// are rounded to levels. Equals OpenCV's adaptiveThreshold with C = offset: every pixel for the mean,
    /// all but one in a thousand for the Gaussian. window is odd, 3 to 1001. Returns 1, or 0 with the image
    /// unchanged for arguments out of range or too little memory.
    int LocalThreshold(int method, int window, double offset);
    /// The mean, truncated, of the means of the edges on every step-th line: mode 'H' rows from left to
    /// right, 'V' columns from top to bottom, 'A' both; 0 for other modes and without edges. A step below 1
    /// counts as 1, one not below the width as half the width. Deliberate: every worker starts its steps at
    /// the first line of its band, so for steps above 1 the result depends on the number of processors.
    long GetAutoThreshold(char mode, int step) const;
    /// The same of a rectangle, corners inclusive; 0 when it leaves the image.
    long GetAutoThreshold(int x1, int y1, int x2, int y2, char mode, int step) const;
    /// Adds the number of pixels of each level to 256 counts, which the caller has cleared or wants to go on
    /// with.
    void Histogram(long* histogram) const;
    /// The mean level; 0 for an empty image or a rectangle, corners inclusive, that leaves it.
    double GetGrayLevelAverage() const;
    double GetGrayLevelAverage(int x1, int y1, int x2, int y2) const;
    /// The mean x and the mean y, truncated, of the pixels above the threshold (polarity 255) or not above it
    /// (0), in coordinates of the image. With nothing counted the outputs stay untouched; either may be null.
    void GetGravityCenter(int threshold, unsigned char polarity, long* cx, long* cy) const;
    /// The same of a rectangle, corners inclusive, still in coordinates of the image; nothing when it leaves
    /// the image.
    void GetGravityCenter(int x1, int y1, int x2, int y2, int threshold, unsigned char polarity, long* cx,
                          long* cy) const;
    /// Appends (x, y, p, 0.0) for every pixel with low <= p <= high, by rows from the top; returns
    /// ar.GetCount(). All of them or, when memory is short, none.
    int GetPixelArray(unsigned char low, unsigned char high, CPixelArray& ar) const;
    /// The same over a rectangle, corners inclusive, in coordinates of the image; nothing when it leaves the
    /// image.
    int GetPixelArray(int x1, int y1, int x2, int y2, unsigned char low, unsigned char high,
                      CPixelArray& ar) const;

    // Filters and morphology (image/VisionImageFilter.cpp)

    // The filters correlate: nothing is mirrored, pixels outside the image count as the nearest one inside,
    // every sum reads unfiltered pixels. Nothing happens when there is too little memory for some rows of
    // scratch.

    /// out = clamp(offset + sum / divisor, 0, 255) with sum = the kernel's entries times the neighbours.
    ///
    /// Entry (row, column) of the size x size entries, row by row, weighs the neighbour at (x + column - size
    /// / 2, y + row - size / 2); even sizes are taken too. All numbers are signed 32-bit values and wrap as
    /// such; the division truncates toward 0, a divisor of 0 leaves the sum. With threaded = 1 the rows are
    /// spread over the workers, else the calling thread does all. Nothing happens without a kernel, or with a
    /// size below 1 or above 1024.
    void Filter(long* kernel, long size, long divisor, long offset, int threaded);
    /// (16 p - S) / 7 with p the pixel and S the sum of its 3 x 3 neighbourhood.
    void Sharpen();
    /// S / 9.
    void Blur();
    /// (S + 7 p) / 16.
    void Soften();
    /// Rows 1 2 1 / 2 4 2 / 1 2 1, over 16.
    void Gassian3x3();
    /// Rows 0 1 2 1 0 / 1 3 4 3 1 / 2 4 8 4 2 / 1 3 4 3 1 / 0 1 2 1 0, over 52.
    void Gassian5x5();
    /// 127 + p(x + 1, y - 1) - p(x - 1, y + 1).
    void Emboss();
    /// 255 - (9 p - S): dark edges on white.
    void Edge();
    /// S - 9 p: bright where a pixel is darker than its neighbours.
    void Laplacian();
    /// The median of the 3 x 3 neighbourhood; equals OpenCV's medianBlur.
    void Median3x3();
    /// The median of the 5 x 5 neighbourhood.
    void Median5x5();
    /// The minimum of the 3 x 3 neighbourhood, neighbours outside the image left out. Allocates nothing.
    ///
    /// Deliberate: not the erosion of the textbooks. The scan writes where it reads, from the top left, so
    /// that the minimum runs along: a pixel becomes the least of all pixels in the rows up to the one below
    /// it, from the left edge to the column x + 1 in the row below, x + 2 in its own and one more with every
    /// row further up (x + y + 1 in row 0). Levels never rise to the right or downward. This flattens
    /// pictures of natural levels: from the darkest pixel on nothing but its level is left to the right and
    /// below.
    void Erode();
    /// The same with the maximum: the brightest pixel's level fills everything to its right and below.
    void Dilate();
    /// Erode, then Dilate. Deliberate: both run along the scan, so of any picture nothing is left: every
    /// pixel becomes the least of the four in the top left corner.
    void OpenBox();
    /// Dilate, then Erode. Deliberate: every pixel becomes the greatest of the four in the top left corner.
    void CloseBox();
    /// The textbook's gray morphology: every pixel becomes the least or greatest of the unchanged pixels
    /// under the shape, whose anchor (width / 2, height / 2) lies on it; what lies outside the image does not
    /// count.
    ///
    /// MORPHOLOGY_OPEN erodes, then dilates; MORPHOLOGY_CLOSE the other way round; MORPHOLOGY_TOPHAT is the
    /// image less its opening, MORPHOLOGY_GRADIENT the dilated less the eroded image. Shapes are those of
    /// OpenCV's getStructuringElement, results those of its morphologyEx. Sizes 1 to 255; the cost of a
    /// rectangle does not grow with its height and hardly with its width. Returns 1, or 0 with the image
    /// unchanged for arguments out of range or too little memory.
    int Morphology(int operation, int shape, int width, int height);

    // Geometric transforms (image/VisionImageTransform.cpp)

    /// Rotates clockwise as seen, by angle degrees about (cx, cy), keeping the size. fill is not used.
    ///
    /// With r = angle x 0.017453292519943295 and dx = x - cx, dy = y - cy in single precision, pixel (x, y)
    /// goes to (trunc(dx cos r - dy sin r + cx), trunc(dx sin r + dy cos r + cy)) if that lies in the frame.
    /// Of several the last one stays, rows going from the top and pixels from the left. Then, in rising order
    /// of the indices i in the buffer, p[i] = (p[i - 1] + p[i + 1]) / 2 for every place that none reached,
    /// which holds 0 until its turn; beyond both ends stands 0.
    ///
    /// Deliberate: exactly -180 is Rotate180, 180 goes by the formula. Infinite angles and not-a-number
    /// change nothing.
    void Rotate(int cx, int cy, double angle, unsigned char fill);
    /// Quarter turns about the centre. Deliberate: the size stays, corners that leave the frame are lost.
    void Rotate90L();
    void Rotate90R();
    /// Pixel (x, y) moves to (width - 1 - x, height - 1 - y).
    void Rotate180();
    /// Mirrors left and right.
    void RotateHorzFlip();
    /// Mirrors top and bottom. Deliberate: rows are addressed at the width rounded up to a multiple of 4, so
    /// other widths give a sheared picture; moves whose ends do not both lie in the buffer do not happen.
    void RotateVertFlip();

    // Blobs (measure/VisionImageBlob.cpp)
    //
    // A blob is a 4-connected set of object pixels. Those whose extents in pixels lie within the limits, both
    // ends included, are appended in the order of their first pixels in scan order; the array is not cleared.
    // Each returns the array's count, 0 for an image without buffer. When memory is short nothing is
    // appended.
    //
    // Deliberate: every further pixel of a blob is tried once more and found to stand alone, so a minimum of
    // 1 x 1 appends a record of one pixel for each; callers who want blobs only ask for at least 2.
    //
    // Regions: left and top below 0 become 0; right and bottom lie outside the region, and below 0 or beyond
    // the image they become its edge; a reversed region finds nothing. Deliberate: an object pixel directly
    // left of or above the region counts for the blob that it touches, though it does not widen its
    // rectangle.

    /// Objects: pixels equal to value. Minimum sizes of 1 x 1 list every further pixel of a blob, too, here
    /// and below.
    int GetBlobList(int value, long min_w, long max_w, long min_h, long max_h, CBlobRectArray& result) const;
    /// Objects: pixels above the threshold (color 255) or not above it (0); another colour finds nothing.
    int GetBlobList(int threshold, int color, long min_w, long max_w, long min_h, long max_h,
                    CBlobRectArray& result) const;
    /// The same within a region; right and bottom are exclusive.
    int GetBlobList(int left, int top, int right, int bottom, int threshold, int color, long min_w,
                    long max_w, long min_h, long max_h, CBlobRectArray& result) const;
    /// Pixels equal to value within a region; right and bottom are exclusive.
    int GetBlobList(int left, int top, int right, int bottom, int value, long min_w, long max_w, long min_h,
                    long max_h, CBlobRectArray& result) const;
    /// The pixels of each blob, in the order of a depth-first walk from its first pixel that tries left,
    /// right, up and down; pixels that count from outside the region are listed where they are. Right and
    /// bottom are exclusive.
    int GetBlobList(int left, int top, int right, int bottom, int value, long min_w, long max_w, long min_h,
                    long max_h, CPointArrayArray& result) const;
    /// Objects: pixels with low <= p <= high.
    int GetGrayRangeBlobList(unsigned char low, unsigned char high, long min_w, long max_w, long min_h,
                             long max_h, CBlobRectArray& result) const;

    // Blob features (measure/VisionImageFeature.cpp)

    /// Measures the blobs of pixels above the threshold (object 255) or not above it (0) within a rectangle,
    /// corners included in any order, what lies outside the image cut off: see CBlobFeature. What lies
    /// outside the rectangle belongs to no blob.
    ///
    /// connectivity 4: pixels of a blob touch by their sides, 8: by corners too; holes the other way. border
    /// 0 keeps blobs that touch the rectangle's outermost rows or columns, 1 drops them. Only blobs of
    /// min_area to max_area pixels, both included, are measured. Rows come in the scan order of the blobs'
    /// first pixels and replace what the result holds. Equal to scikit-image's regionprops: area, box,
    /// centroid, holes and moments exactly, perimeter and orientation to 1e-6 (axes but for the 1 / 12 of a
    /// pixel, which it leaves out).
    ///
    /// Returns the number of rows; 0 for an image without pixels, other arguments or too little memory. May
    /// run on one image from several threads.
    int GetBlobFeatures(int x1, int y1, int x2, int y2, int threshold, int object, int connectivity,
                        int border, long long min_area, long long max_area,
                        std::vector<CBlobFeature>& result) const;
    /// The same over the whole image, with blobs of every area and at the border.
    int GetBlobFeatures(int threshold, int object, int connectivity, std::vector<CBlobFeature>& result) const;

    // Comparison (measure/VisionImageCompare.cpp)

    /// Marks with 255 the pixels that differ from a golden image, all others with 0; marks gets this image's
    /// size and can be searched for blobs.
    ///
    /// With low and high the least and greatest golden level up to grow pixels away, along rows and columns,
    /// a pixel p differs if |p - clamp(p, low, high)| > threshold. So grow 1 forgives edges that lie up to a
    /// pixel elsewhere. The golden levels are taken where the alignment leads, between pixels bilinearly in
    /// steps of 1 / 256 pixel; pixels that lie outside the golden image are not compared. threshold 0 to 255,
    /// grow 0 to 100.
    ///
    /// Returns the number of compared pixels. 0, with marks empty, when the images do not overlap, without
    /// pixels, for other arguments, an alignment that leads farther than 2^29 pixels away, or too little
    /// memory; marks that are this image or the golden one are refused and stay. May run on one image from
    /// several threads.
    int Compare(const CKestImage& golden, const CAlignment& alignment, int threshold, int grow,
                CKestImage& marks) const;

    // Plane geometry (measure/VisionImageGeometry.cpp). Static, without state, callable from any thread.

    /// Euclidean distance, truncated; the sum of the squares and its root are rounded to single precision.
    static long Distance(int x1, int y1, int x2, int y2);
    /// The direction from point 1 to point 2 in degrees, [0, 360): counter-clockwise from the x axis with y
    /// taken as pointing up, so an upward direction is 90. Equal points: 0.
    static double GetAngle(int x1, int y1, int x2, int y2);
    /// The point turned about (cx, cy), clockwise as seen, angle in degrees; each coordinate is truncated
    /// toward 0. Coordinates that 32 bits do not hold, or of an angle that is no number, are 0x80000000.
    static void RotatePoint(int x, int y, double angle, int cx, int cy, int* ox, int* oy);
    /// Deliberate: 1 for points at or left of the left edge and at or above the top edge, else 0.
    static int PtInRectangle(int x1, int y1, int x2, int y2, int px, int py);
    /// 1 when an odd number of the closed polygon's edges cross the row of p, strictly, to the left of p.
    /// Vertices on that row never count. Not the rule of CPointArray::PtInPolygon.
    static int PtInPolygon(const POINT* points, unsigned int n, const POINT& p);
    /// Whether the point lies in the polygon of GetArcSegment from 0 to 359 degrees, by
    /// CPointArray::PtInPolygon.
    static int PtInCycle(int cx, int cy, int r, int px, int py);

    // Tracing appends pixels and returns ar.GetCount(). Pixels that 32-bit coordinates do not hold are left
    // out. Nothing is appended when memory is short, for lines of more than 2^27 pixels, circles with a
    // radius above 2^24, ellipses with a semi-axis above 2^19 and arcs of more than 2^24 degrees.

    /// The Bresenham line along its longer axis (y if equal), always toward larger coordinates of that axis.
    static int GetLineSegment(int x1, int y1, int x2, int y2, CPointArray& ar);
    /// The midpoint circle from its top and bottom on, eight symmetric pixels a step; pixels on axes and
    /// diagonals are repeated. A negative radius gives nothing.
    static int GetCycleSegment(int cx, int cy, int r, CPointArray& ar);
    /// The midpoint ellipse with the semi-axes a along x and b along y, four symmetric pixels a step: first
    /// in x from the top and the bottom, then in y from the left and the right. With an axis of 0 one step of
    /// four.
    static int GetEllipseSegment(int cx, int cy, int a, int b, CPointArray& ar);
    /// The points of whole degrees, clockwise as seen: for every degree behind start the point before it and
    /// its own, 2 x (end - start) points; nothing unless start < end. Offsets are trunc(r x cos + 0.5), so
    /// negative ones are rounded differently from positive ones.
    static int GetArcSegment(int cx, int cy, int r, int start, int end, CPointArray& ar);
    /// 1 when the lines through the two segments cross at an x within both, ends included; 0 for parallel
    /// ones.
    static int IntersectLine(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4);
    /// Where the traced segments meet: for the pixels p of the first in turn, the first pixel of the second
    /// that equals p or is its right or upper neighbour. Returns 1, or 0 with x = y = -1 when the segments do
    /// not intersect, pass through each other diagonally, or have more than 2^27 pixels.
    static int GetCrossPoint(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, int& x, int& y);

    // Sampling along shapes (measure/VisionImageSample.cpp). Appends (x, y, level, 0.0) for the pixels of the
    // shapes above whose level lies in low .. high, in the order of the trace and repeated where the trace
    // repeats them, all of them or, when memory is short, none; returns ar.GetCount(). Both ends of a line
    // belong to it. Pixels outside the image are left out; lines and circles of any
    // size are sampled, and cost no more than what lies in the image. Coordinates beyond 32 bits give
    // nothing.

    int GetLinePixelArray(long x1, long y1, long x2, long y2, unsigned char low, unsigned char high,
                          CPixelArray& ar) const;
    int GetCyclePixelArray(long cx, long cy, long r, unsigned char low, unsigned char high,
                           CPixelArray& ar) const;
    int GetEllipsePixelArray(long cx, long cy, long a, int b, unsigned char low, unsigned char high,
                             CPixelArray& ar) const;
    int GetArcPixelArray(long cx, long cy, long r, int start, int end, unsigned char low, unsigned char high,
                         CPixelArray& ar) const;

    // Gauges (measure/VisionImageGauge.cpp)

    /// Appends the edges along a straight line: every sample at which the profile, bright above the
    /// threshold, changes as the polarity says, with the contrast to the sample before it as parameter; all
    /// of them or, when memory is short, none. Returns ar.GetCount(), or 0 without a threshold (0).
    ///
    /// The ends are clamped into the image and ordered: flat lines are walked from left to right, steep ones
    /// from top to bottom. Deliberate: an exactly vertical or horizontal line is then tilted by a pixel at
    /// its far end; samples that leave the image by that are dropped. Without a given threshold that of
    /// GetAutoThreshold(rectangle of the ends, 'A', 1) is taken.
    int GetPointGauge(int x1, int y1, int x2, int y2, int polarity, CPixelArray& ar) const;
    int GetPointGauge(int x1, int y1, int x2, int y2, int polarity, int threshold, CPixelArray& ar) const;
    /// The place of the edge with the largest contrast, the last one among equals. Returns 1, or 0 without an
    /// edge, the outputs then untouched.
    int GetPointGauge(int x1, int y1, int x2, int y2, int polarity, long* best_x, long* best_y) const;
    int GetPointGauge(int x1, int y1, int x2, int y2, int polarity, int threshold, long* best_x,
                      long* best_y) const;
    /// Measures a straight edge in a rectangle, whose corners are inclusive and put in order and may leave
    /// the image. Scan lines across it (columns for DIRECTION_HORIZENTAL, rows for DIRECTION_VERTICAL) are
    /// gauged by their best edge; each pairs with its mirror line about the centre line at half the extent;
    /// the mean of the directions from each edge to its counterpart, less 90, is the angle. step is the
    /// distance of the columns (below 1 counts as 1; the columns are cut into as many bands as there are
    /// processors, each stepping anew, so with a step above 1 the angle depends on their number); rows ignore
    /// it. Returns 1, or 0 without an edge on the centre line, for another direction or when memory is short,
    /// the result then untouched. Without any pair the angle is not a number and the ends are 0x80000000.
    ///
    /// Deliberate: the angle is biased. The centre line pairs with itself and counts as 0, and the last line
    /// of the rectangle is not walked: with n walked lines a level edge measures 90 / n (odd n) or 180 / n
    /// (even n) degrees too little, an upright one 180 / n or 90 / n. Where a roughly horizontal edge falls
    /// to the right, pairs within one row count as 0 and not as 360, which pulls the angle further below 180
    /// the less the edge falls: over 200 columns 12.3 degrees measure 165.2 instead of 167.7, half a degree
    /// measures 128.3.
    ///
    /// Mean error over drawn edges within 15 degrees of upright and level, in degrees, for 80, 81, 160 and
    /// 161 walked lines: upright edges that lean to the right 0.7, 2.9, 0.4, 1.5, to the left 1.6, 2.1,
    /// 0.8, 1.1; level ones that rise to the right 2.6, 0.5, 1.3, 0.2, that fall 21, 8, 14, 4 and at worst
    /// 79, 61, 82, 31.
    int GetLineGauge(int x1, int y1, int x2, int y2, int polarity, int direction, int step,
                     _stLineGaugeResult& result) const;
    int GetLineGauge(int x1, int y1, int x2, int y2, int polarity, int direction, int step, int threshold,
                     _stLineGaugeResult& result) const;

    // Sub-pixel measurements (measure/VisionImageSubpixel.cpp)
    //
    // Arguments and results: measure/EdgeMeasure.h, measure/PlaneMeasure.h. Any number of threads may measure
    // one image at once while nobody changes it; results do not depend on the instruction set. Parts of a
    // scan outside the image hold no edge; settings out of range, coordinates that are no numbers or beyond
    // 1e9, and too little memory give nothing.
    //
    // A scan samples the image, smoothed by the cubic B-spline, 1 pixel apart, and smooths the steps between
    // the samples by a Gaussian, sigma in all. Where they peak is an edge; its contrast is the sum of the
    // smoothed steps between the valleys about the peak (within 3 sigma + 1), so an ideal step of 40 levels
    // has the contrast 40. Its position is the centre of the unsmoothed steps within 1.75 max(sigma, 1) of
    // it, with falling weight for another 3 max(sigma, 2/3); up to three times as far on a blurred edge, less
    // next to another one. Where it lies between two pixels has hardly any influence.
    //
    // Measured with sigma 1 on drawn edges (every pixel the mean over its square, rounded to levels) at all
    // angles: a scan of width 1 errs by 0.010 rms and at most 0.03 pixels, of width 3 and more at most 0.011,
    // the mean is below 0.001. Normal noise of 4 levels at a contrast of 100 scatters a scan by 0.054 pixels
    // at width 1, 0.032 at 5, 0.024 at 9, 0.020 at 15, 0.014 at 25, in proportion to noise over contrast.
    // Edges blurred by a Gaussian of up to 2 pixels err by at most 0.023. Edges 5 pixels apart pull at each
    // other by at most 0.015 pixels, 4 apart by 0.055; nearer ones repel each other.

    /// Appends the selected edges along the straight scan from (x1, y1) to (x2, y2), ends included, in its
    /// order. Returns the number of edges in the list.
    int GetEdges(double x1, double y1, double x2, double y2, const CEdgeSettings& settings,
                 std::vector<CEdgePoint>& edges) const;
    /// Measures a straight edge: one edge a scan, then the line of least orthogonal distances, weighted by
    /// Tukey's biweight from the line that half of the edges lie nearest to. Returns 1; 0, and line is as
    /// before, without an edge on a quarter of the scans and on three.
    ///
    /// Measured in boxes 100 long with 100 scans at all angles: without noise errors of at most 0.01 pixels
    /// and 0.005 degrees (an edge exactly along the pixels is off by what rounding to levels moves it, half a
    /// level over the contrast); with noise of 4 levels at a contrast of 100 a scatter of 0.008 pixels and
    /// 0.016 degrees. A notch over 30 % of the scans moves it by less than 0.015 pixels and 0.02 degrees.
    int GetEdgeLine(const CEdgeBox& box, const CEdgeSettings& settings, CEdgeLine& line) const;
    /// Measures a circular edge in the same way. That smoothing moves a rim of radius r towards the centre,
    /// by variance / 2r, is made up for. Returns 1; 0, and circle is as before, without an edge on a quarter
    /// of the rays and on three.
    ///
    /// Measured on drawn discs with 64 rays and without noise: centre and radius within 0.008 pixels for
    /// radii from 4 to 120, within 0.016 for radii from 8 on with a third of the rim hidden.
    int GetEdgeCircle(const CEdgeRing& ring, const CEdgeSettings& settings, CEdgeCircle& circle) const;
    /// In pixels: between points; from a point perpendicular to a line; from the first line's point
    /// perpendicular to the second line. Static as what follows, without state, callable from any thread.
    static double GetDistance(const CPlanePoint& a, const CPlanePoint& b);
    static double GetDistance(const CPlanePoint& point, const CPlaneLine& line);
    static double GetDistance(const CPlaneLine& first, const CPlaneLine& second);
    /// The angle between two lines, 0 to 90 degrees.
    static double GetLineAngle(const CPlaneLine& a, const CPlaneLine& b);
    /// Where two lines meet. Returns 1, or 0 and leaves at as it is for lines that are parallel to a
    /// millionth of a degree.
    static int GetIntersection(const CPlaneLine& a, const CPlaneLine& b, CPlanePoint& at);

    // Matching (match/VisionImageMatch.cpp)
    //
    // A source is laid on the top left corner of a candidate box w x h. Black and white hits are the source's
    // pixels of 0 and 255 that equal the box's, binarised (p > threshold is white). All in single precision:
    //   black_yield = hits / black_count, or 1 for a count of 0, times the smaller over the larger of the
    //   areas w x h and width x height; white_yield likewise; their average orders results.
    // The result array is not cleared; new results leave the threshold of the slot that they take as it was.
    // Every match appends all that it finds or, when memory is short, nothing.

    /// Scores the source on every blob of its key's colour whose extents differ by at most 10 from its own,
    /// and appends all in the order of the blob search. The area's corners are inclusive; coordinates are
    /// relative to its top left corner; an area that leaves the image means the whole image. A source of at
    /// most 11 x 11 admits boxes of 1 x 1: every further pixel of every blob is then a candidate, too.
    ///
    /// Without sources one of zeros is used: every dark blob of at most 10 x 10 and every further dark pixel
    /// is appended with yields of 0. Returns the array's count; 0, with nothing appended, for more than one
    /// source or no candidate.
    int Match(int left, int top, int right, int bottom, int threshold, CMatchSrcArray& sources,
              CMatchResultArray& results) const;
    /// The same over the whole image.
    int Match(int threshold, CMatchSrcArray& sources, CMatchResultArray& results) const;
    /// For every threshold from low to high that has a candidate, appends the best (the last of equals) with
    /// its threshold, in their order. Thresholds beyond the gray levels all find the same: of those below 0
    /// and of those above 255 at most 2^20 are appended, the ones nearest to the levels. Area, coordinates,
    /// sources of at most 11 x 11 and no sources are as for Match; for more than one source nothing is
    /// appended. Returns the array's count.
    int MatchThresholdRange(int left, int top, int right, int bottom, int low, int high,
                            CMatchSrcArray& sources, CMatchResultArray& results) const;
    /// For every dark blob of the given extents, both ends included, appends the source that agrees best (the
    /// last of equals): key is the character read. Minimum sizes of 1 x 1 read every further pixel of a blob,
    /// too. Returns the array's count, 0 without a blob. Without sources nothing is appended.
    int OcrMatch(int threshold, int min_width, int max_width, int min_height, int max_height,
                 CMatchSrcArray& sources, CMatchResultArray& results) const;
    /// The same within a region, whose right and bottom are exclusive, as those of GetBlobList.
    int OcrMatch(int left, int top, int right, int bottom, int threshold, int min_width, int max_width,
                 int min_height, int max_height, CMatchSrcArray& sources, CMatchResultArray& results) const;
    /// Reads the boxes of the list, whose corners are inclusive, in its order. A box that leaves the image
    /// gives no result.
    int OcrMatch(int threshold, CBlobRectArray& blobs, CMatchSrcArray& sources,
                 CMatchResultArray& results) const;

    // Reading with tolerance (match/VisionImageRead.cpp)

    /// Reads the characters of a rectangle whose corners are included, in any order, what lies outside the
    /// image cut off: 8-connected blobs of the settings' extents by threshold and object, and several
    /// together where that agrees better with a source (broken strokes, dots). Unlike OcrMatch it bears
    /// noise, levels that are not those of the sources, and boxes that are a pixel off: gray levels are taken
    /// between the character's own dark and bright, the source is laid middle on middle and tried within the
    /// shift.
    ///
    /// Several sources of one key are one character: the best counts. Ink in a source is 0, for object 255 it
    /// is 255. The result is replaced by a row a character, in lines from top to bottom, in each from left
    /// to right: see CCharacterReading. Returns the number of rows; 0 without sources, for an image without
    /// pixels, another object or too little memory. May run on one image from several threads.
    int ReadCharacters(int x1, int y1, int x2, int y2, const CReadingSettings& settings,
                       CMatchSrcArray& sources, std::vector<CCharacterReading>& result) const;
    /// The same over the whole image.
    int ReadCharacters(const CReadingSettings& settings, CMatchSrcArray& sources,
                       std::vector<CCharacterReading>& result) const;
    /// Reads the boxes of the list, whose corners are inclusive, in its order, without a regard for extents;
    /// all are line 0. A box that leaves the image or whose corners are reversed gives no row.
    int ReadCharacters(CBlobRectArray& boxes, const CReadingSettings& settings, CMatchSrcArray& sources,
                       std::vector<CCharacterReading>& result) const;

    // For the library's own modules (image/VisionImage.cpp)

    /// A size whose pixels hold anything until they are written; without pixels, and false, where SetImagePtr
    /// gives none.
    bool SetSizeForOverwrite(int width, int height);
    /// The pixels in place; empty views for an image without pixels.
    ormalux::GrayView view()
    {
        return valid() ? ormalux::GrayView{m_pixels, m_width, m_height, m_width} : ormalux::GrayView{};
    }
    ormalux::ConstGrayView view() const
    {
        return valid() ? ormalux::ConstGrayView{m_pixels, m_width, m_height, m_width}
                       : ormalux::ConstGrayView{};
    }

private:
    /// Whether there are pixels. A buffer may also go with a size of 0, and with a size below 0 after a crop
    /// to a reversed rectangle; the buffer always holds at least the length's bytes.
    bool valid() const { return m_pixels && m_width > 0 && m_height > 0; }
    /// Whether an owned buffer of the size is there already.
    bool reusable(int width, int height) const
    {
        return valid() && !m_linked && std::int64_t(width) * height == m_length;
    }
    /// Gives the buffer a size that it is large enough for.
    void resize(int width, int height);
    /// Frees the buffer unless linked; size and flag stay.
    void release();
    /// Frees the buffer unless linked and takes an owned one, made with new[]; null leaves the size without
    /// pixels.
    void adopt(unsigned char* pixels, int width, int height);

    bool m_linked = false;
    unsigned char* m_pixels = nullptr;
    int m_width = 0;
    int m_height = 0;
    int m_length = 0;
};
