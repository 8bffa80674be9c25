#pragma once

#include "array/Array.h"
#include "color/ColorView.h"
#include "image/VisionImage.h"
#include "platform/Export.h"
#include "platform/Types.h"

/// A 24-bit colour image: blue, green and red bytes, top row first.
///
/// The buffer counts rows padded to 4 bytes: GetImageLen() = ((width x 24 + 31) >> 5) x 4 x height.
/// Deliberate: the members address it in three ways, which agree only where the widths allow it, and callers
/// rely on each:
///  - row step 3 x width, the pixel (x, y) at byte 3 x width x y + 3 x x: every member not named below;
///  - row step width, the pixel (x, y) at byte width x y + 3 x x: GetPixel and SetPixel;
///  - padded rows or the whole buffer as it is: SetImagePtr, LoadImage, PaintImage, operator=,
///  RotateVertFlip,
///    RotateHorzFlip, Rotate180, Rotate.
/// A colour outside the buffer is a COLORREF: red in bits 0 to 7, green in bits 8 to 15, blue in bits 16
/// to 23.
///
/// The image owns its buffer unless SetImagePtrLink made it borrow the caller's, which it never frees.
/// Nothing throws; an operation whose precondition fails does nothing. No operation touches memory outside
/// the image's buffer, whatever its arguments: what lies inside happens, the rest does not. Different images
/// may be used from different threads at once; one image only from one thread at a time. Rectangles have
/// inclusive corners and are put in order unless said otherwise.
class ORMALUX_API CKestImage24
{
public:
    // Construction and pixels (color/VisionImage24.cpp)

    /// An empty image.
    CKestImage24();
    /// A copy of pixels; see SetImagePtr.
    CKestImage24(int width, int height, unsigned char* pixels);
    /// A deep copy, never linked.
    CKestImage24(const CKestImage24& other);
    CKestImage24& operator=(const CKestImage24& other);
    ~CKestImage24();

    /// A copy of GetImageLen() bytes: the caller's rows must be padded to 4 bytes. Both sizes 0,
    /// a size below 0, more than 2 GB or than the memory has, and null pixels give an image without a buffer.
    void SetImagePtr(int width, int height, unsigned char* pixels);
    /// Borrows rows padded to 4 bytes, which must outlive their use by this image.
    void SetImagePtrLink(int width, int height, unsigned char* pixels);
    void SetEmpty();
    /// Whether the image has no buffer.
    BOOL IsEmpty() const { return m_pixels == nullptr; }
    int GetWidth() const { return m_width; }
    int GetHeight() const { return m_height; }
    /// The bytes of the padded rows.
    int GetImageLen() const { return m_length; }

    /// The colour of the bytes at width x y + 3 x x; bytes outside the buffer count as 0.
    unsigned long GetPixel(int x, int y) const;
    /// Writes the bytes at width x y + 3 x x.
    void SetPixel(int x, int y, unsigned long color);
    /// A new copy of the rectangle, rows unpadded, which the caller frees with delete[]; null when it leaves
    /// the image. Deliberate: the last row is not copied but 0.
    unsigned char* GetImagePtr(int x1, int y1, int x2, int y2) const;
    /// Deliberate: a new empty image, whatever the arguments; the caller deletes it.
    CKestImage24* GetImage(int x1, int y1, int x2, int y2) const;
    /// Crops to the rectangle as GetImagePtr copies it, the black last row and the unpadded rows included;
    /// nothing happens when it leaves the image. Deliberate: the new size comes from the arguments as given,
    /// so a reversed rectangle gives a size of 0 or less, with which no other operation does anything.
    void SetROIPlacement(int x1, int y1, int x2, int y2);
    void SetROIPlacement(const RECT& rect);

    // Whole-image edits (color/VisionImage24Edit.cpp)

    /// Paints columns x1 to x2 - 1 of rows y1 to y2 - 1. Deliberate: the ends are exclusive, corners are not
    /// put in order, and columns outside the image are those of the neighbouring rows.
    void Marking(int x1, int y1, int x2, int y2, int red, int green, int blue);
    /// Shifts the buffer by 3 x width x dy + 3 x dx bytes to its beginning, as one run; what leaves a row
    /// enters its neighbour, and what leaves the buffer is lost. Uncovered bytes become 0. A linked image
    /// gets a buffer of its own.
    void Offset(int dx, int dy);
    /// Adds each byte in place, modulo 256; nothing happens for images of different size. Returns this image.
    CKestImage24& operator+(const CKestImage24& other);
    /// Subtracts each byte in place, stopping at 0; nothing happens for images of different size. Returns
    /// this.
    CKestImage24& operator-(const CKestImage24& other);
    /// Each byte v becomes 255 - v.
    void Invert();
    /// Paints the padded buffer into the rectangle with its last row on top, unlike the gray image. Needs the
    /// display module.
    void PaintImage(CDC* dc, CRect rect);

    // Channel edits (color/VisionImage24Edit.cpp)

    /// Sets the channel ('R', 'G', any other letter blue) of columns x1 to x2 - 1 of rows y1 to y2 - 1.
    /// Corners are not put in order; columns outside the image are those of the neighbouring rows.
    void AbandonColorCell(int x1, int y1, int x2, int y2, char channel, unsigned char value);
    /// Deliberate: multiplies the channel of the first pixel of every row, truncating, limited to 255 from
    /// above, width times in a row; all other pixels stay. A negative product keeps its low 8 bits. Factors
    /// that are not finite do nothing.
    void SetRedGain(float gain);
    void SetGreenGain(float gain);
    void SetBlueGain(float gain);

    // Files (color/VisionImage24File.cpp)

    /// Reads a 24-bit BMP. Returns 1, or 0 with the image as it was. The rows stay padded, the top row comes
    /// first.
    int LoadImage(const char* path);
    /// Writes a 24-bit BMP: the rows of 3 x width bytes, the last one first, each followed by stride - width
    /// bytes of 0 where stride is the padded row, and then, deliberately, the whole padded buffer once more
    /// with its rows reversed. Returns 1, or 0 when the file cannot be written. An image with a size but
    /// without a buffer writes nothing and gives 0; one without a size gives a file of headers.
    int SaveImage(const char* path) const;

    // Point operations (color/VisionImage24Point.cpp)

    /// Every byte v becomes (v - 128) x (contrast + 100) / 100 + brightness + 128, rounded and clamped.
    /// Brightness -255 to 255, contrast -100 to 100; otherwise nothing happens.
    void Light(long brightness, long contrast);
    /// Every byte v becomes 255 x (v / 255)^(1 / gamma), truncated; nothing happens unless gamma > 0.
    void Gamma(float gamma);
    /// Stretches each channel between its own 3 % ends to 0 .. 255, rounding; a channel whose ends meet
    /// stays.
    void AutoContrast();
    /// Gray world: every byte v of channel c becomes min(255, v x T / (3 x S)), S the sum over the channel, T
    /// the sum over all three, in 64-bit integers; a channel with a sum of 0 stays.
    void WhiteBalance();
    /// The same with the sums of a reference patch, corners inclusive, applied to the whole image; nothing
    /// when it leaves the image.
    void WhiteBalance(int x1, int y1, int x2, int y2);
    /// Appends every pixel whose channels each lie between those of low and high, by rows, all of them or,
    /// when memory is short, none; returns ar.GetCount().
    int GetPixelArray(COLORREF low, COLORREF high, CColorPixelArray& ar) const;
    /// The same over a rectangle, corners inclusive, in coordinates of the image; nothing when it leaves the
    /// image.
    int GetPixelArray(int x1, int y1, int x2, int y2, COLORREF low, COLORREF high,
                      CColorPixelArray& ar) const;

    // Filters and morphology (color/VisionImage24Filter.cpp)

    /// Deliberate: the gray convolution over the first width x height bytes taken as a gray image, channels
    /// not separated; all bytes behind them become 0. The named filters pass their gray siblings' kernels.
    void Filter(long* kernel, long size, long divisor, long offset, int threaded);
    void Sharpen();
    void Blur();
    void Soften();
    void Gassian3x3();
    void Gassian5x5();
    void Emboss();
    void Edge();
    void Laplacian();
    // Deliberate, as in the gray image: minimum and maximum run along the scan and flatten pictures of
    // natural levels; CKestImage::Erode says how far.

    /// Every channel alone becomes the minimum of its 3 x 3 neighbourhood, in place: a channel's least level
    /// fills everything to its right and below.
    void Erode();
    /// The same with the maximum: a channel's greatest level fills everything to its right and below.
    void Dilate();
    /// Erode, then Dilate: every channel becomes the least of its four levels in the top left corner.
    void OpenBox();
    /// Dilate, then Erode: every channel becomes the greatest of its four levels in the top left corner.
    void CloseBox();

    // Geometric transforms (color/VisionImage24Transform.cpp): rows padded to 4 bytes

    /// Rotates clockwise by angle degrees about (cx, cy), keeping the size: each source pixel goes to its
    /// truncated target, later ones win, holes take the mean of their neighbours per channel. fill is not
    /// used.
    void Rotate(int cx, int cy, double angle, unsigned char fill);
    /// Quarter turns about the centre. Deliberate: the size stays, corners that leave the frame are lost.
    void Rotate90L();
    void Rotate90R();
    void Rotate180();
    /// Mirrors left and right.
    void RotateHorzFlip();
    /// Mirrors top and bottom; the padding goes with its row.
    void RotateVertFlip();

    // Colour planes (color/VisionImage24Plane.cpp): new gray images of this image's size, which the caller
    // deletes; null when memory is short. R, G, B are the channels as 0 .. 255, results are truncated.

    CKestImage* GetRedSpace() const;
    CKestImage* GetGreenSpace() const;
    CKestImage* GetBlueSpace() const;
    /// 0.257 R + 0.504 G + 0.098 B + 16: luma, 16 .. 235.
    CKestImage* GetYSpace() const;
    /// 0.439 B - (0.291 G + 0.148 R) + 128: the blue difference, centred on 128.
    CKestImage* GetUSpace() const;
    /// 0.439 R - 0.368 G - 0.071 B + 128: the red difference, centred on 128.
    CKestImage* GetVSpace() const;
    /// The hue angle, 255 for 360 degrees, from the arc cosine of 0.5 ((R - G) + (R - B)) /
    /// sqrt((R - G)^2 + (R - B)(G - B)); 0 for gray. Red is 0, green 84, blue 170.
    CKestImage* GetHSpaceOfHSI() const;
    /// 255 (sum - 3 min) / sum in integers; 0 for black.
    CKestImage* GetSSpaceOfHSI() const;
    /// (R + G + B) / 3, rounded.
    CKestImage* GetISpaceOfHSI() const;
    /// The hue of GetHSpaceOfHSI.
    CKestImage* GetHSpaceOfHSV() const;
    /// The saturation of GetSSpaceOfHSI.
    CKestImage* GetSSpaceOfHSV() const;
    /// (max + min) / 2 in integers.
    CKestImage* GetVSpaceOfHSV() const;
    /// 255 - R - K.
    CKestImage* GetCSpaceOfCMYK() const;
    /// 255 - G - K.
    CKestImage* GetMSpaceOfCMYK() const;
    /// 255 - B - K.
    CKestImage* GetYSpaceOfCMYK() const;
    /// K = min(255 - R, 255 - G, 255 - B).
    CKestImage* GetKSpaceOfCMYK() const;
    /// Writes 'R', 'G', 'B' or the mean 'A' = (R + G + B) / 3 of every pixel to byte width x y + x of target;
    /// any other letter writes nothing. An empty target first becomes a black image of this image's size; the
    /// size of another is not checked, what lies beyond its end is dropped. Returns 1, or 0 when target has
    /// no buffer.
    int GetImageWithFilter(char filter, CKestImage& target) const;

    // Blobs (measure/VisionImage24Blob.cpp): the gray image's blob searches of the same form on one gray
    // plane. Sizes are inclusive limits in pixels, and a minimum of 1 x 1 lists every further pixel of a
    // blob, too; the region is left <= x < right, top <= y < bottom. Results are appended, all of them or,
    // when memory is short, none; returns result.GetCount(), 0 for an empty image.

    /// Blobs of pixels whose channels each lie between those of low and high.
    int GetColorRangeBlobList(COLORREF low, COLORREF high, long min_w, long max_w, long min_h, long max_h,
                              CBlobRectArray& result) const;
    int GetColorRangeBlobList(int left, int top, int right, int bottom, COLORREF low, COLORREF high,
                              long min_w, long max_w, long min_h, long max_h, CBlobRectArray& result) const;
    /// Blobs of pixels whose hue, saturation and value lie within the ends: hues in degrees, 0 to 360, from
    /// low_hue up to high_hue, through 0 where low_hue is the larger; saturation and value 0 to 255.
    ///
    /// With max and d = max - min of the channels: value is max; saturation 255 d / max, rounded; hue 60 (G -
    /// B) / d where R is the max, else 120 + 60 (B - R) / d where G is, else 240 + 60 (R - G) / d, plus 360
    /// where negative, and 0 for gray. Hues are compared as exact fractions, their ends taken to 1 / 256
    /// degree. Ends out of range or order find nothing.
    int GetHueRangeBlobList(double low_hue, double high_hue, int low_saturation, int high_saturation,
                            int low_value, int high_value, long min_w, long max_w, long min_h, long max_h,
                            CBlobRectArray& result) const;
    int GetHueRangeBlobList(int left, int top, int right, int bottom, double low_hue, double high_hue,
                            int low_saturation, int high_saturation, int low_value, int high_value,
                            long min_w, long max_w, long min_h, long max_h, CBlobRectArray& result) const;
    /// Writes 255 for the pixels that GetHueRangeBlobList takes as objects, else 0, to marks, which gets this
    /// image's size. Returns 1, or 0 with marks empty for an empty image, wrong ends or too little memory.
    int GetHueRangeImage(double low_hue, double high_hue, int low_saturation, int high_saturation,
                         int low_value, int high_value, CKestImage& marks) const;
    /// Blobs of the plane 'R', 'G', 'B' or 'A' of GetImageWithFilter; another letter returns 0.
    int GetPlaneBlobList(char channel, int threshold, int color, long min_w, long max_w, long min_h,
                         long max_h, CBlobRectArray& result) const;
    int GetPlaneBlobList(int left, int top, int right, int bottom, char channel, int threshold, int color,
                         long min_w, long max_w, long min_h, long max_h, CBlobRectArray& result) const;
    /// Blobs of the gray level (R + G + B) / 3.
    int GetBlobList(int threshold, int color, long min_w, long max_w, long min_h, long max_h,
                    CBlobRectArray& result) const;
    int GetBlobList(int left, int top, int right, int bottom, int threshold, int color, long min_w,
                    long max_w, long min_h, long max_h, CBlobRectArray& result) const;
    /// Blobs with low <= (R + G + B) / 3 <= high.
    int GetGrayRangeBlobList(unsigned char low, unsigned char high, long min_w, long max_w, long min_h,
                             long max_h, CBlobRectArray& result) const;
    /// Blobs of the plane GetKSpaceOfCMYK.
    int GetKBlobList(int threshold, int color, long min_w, long max_w, long min_h, long max_h,
                     CBlobRectArray& result) const;
    int GetKBlobList(int left, int top, int right, int bottom, int threshold, int color, long min_w,
                     long max_w, long min_h, long max_h, CBlobRectArray& result) const;

    // Sampling along shapes (measure/VisionImage24Sample.cpp): the points of the gray image's samplings in
    // the same order, repeated ones repeated; points outside the image are skipped. All are appended or, when
    // memory is short, none. Returns ar.GetCount().

    int GetLinePixelArray(long x1, long y1, long x2, long y2, CColorPixelArray& ar) const;
    int GetCyclePixelArray(long cx, long cy, long r, CColorPixelArray& ar) const;
    int GetEllipsePixelArray(long cx, long cy, long a, int b, CColorPixelArray& ar) const;
    int GetArcPixelArray(long cx, long cy, long r, int start, int end, CColorPixelArray& ar) const;

    // For the library's own modules: the pixels in place; empty views for an image without pixels.
    ormalux::ColorView view()
    {
        return valid() ? ormalux::ColorView{m_pixels, m_width, m_height, m_length} : ormalux::ColorView{};
    }
    ormalux::ConstColorView view() const
    {
        return valid() ? ormalux::ConstColorView{m_pixels, m_width, m_height, m_length}
                       : ormalux::ConstColorView{};
    }

private:
    bool valid() const { return m_pixels && m_width > 0 && m_height > 0; }
    /// Frees the buffer unless linked; sizes and flag stay.
    void release();
    /// Frees the buffer unless linked and takes an owned one of length bytes, made with new[]; null leaves
    /// the sizes without pixels.
    void adopt(unsigned char* pixels, int width, int height, int length);

    bool m_linked = false;
    unsigned char* m_pixels = nullptr;
    int m_width = 0;
    int m_height = 0;
    int m_length = 0;
};
