#include "color/VisionImage24.h"

#include "color/ColorPlane.h"
#include "color/ColorRange.h"
#include "image/ImagePart.h"

using namespace ormalux;

namespace {

/// The gray picture that a search runs on; empty for an empty image or when memory is short.
CKestImage planeOf(const CKestImage24& image, Plane plane)
{
    CKestImage gray;
    gray.SetSizeForOverwrite(image.view().width, image.view().height);
    extractPlane(image.view(), plane, pixelsOf(gray.view()));
    return gray;
}

/// 255 where the colour is in range, else 0.
CKestImage marksOf(const CKestImage24& image, COLORREF low, COLORREF high)
{
    CKestImage marks;
    marks.SetSizeForOverwrite(image.view().width, image.view().height);
    selectColors(image.view(), low, high, pixelsOf(marks.view()));
    return marks;
}

constexpr int marked = 255;

} // namespace

int CKestImage24::GetColorRangeBlobList(COLORREF low, COLORREF high, long min_w, long max_w, long min_h,
                                        long max_h, CBlobRectArray& result) const
{
    return marksOf(*this, low, high).GetBlobList(marked, min_w, max_w, min_h, max_h, result);
}

int CKestImage24::GetColorRangeBlobList(int left, int top, int right, int bottom, COLORREF low, COLORREF high,
                                        long min_w, long max_w, long min_h, long max_h,
                                        CBlobRectArray& result) const
{
    return marksOf(*this, low, high)
        .GetBlobList(left, top, right, bottom, marked, min_w, max_w, min_h, max_h, result);
}

int CKestImage24::GetHueRangeImage(double low_hue, double high_hue, int low_saturation, int high_saturation,
                                   int low_value, int high_value, CKestImage& marks) const
{
    const HueRange range{low_hue, high_hue, low_saturation, high_saturation, low_value, high_value};
    if (!view().empty() && isValid(range) && marks.SetSizeForOverwrite(view().width, view().height))
        return selectHues(view(), range, pixelsOf(marks.view()));
    marks.SetEmpty();
    return 0;
}

int CKestImage24::GetHueRangeBlobList(double low_hue, double high_hue, int low_saturation,
                                      int high_saturation, int low_value, int high_value, long min_w,
                                      long max_w, long min_h, long max_h, CBlobRectArray& result) const
{
    CKestImage marks;
    GetHueRangeImage(low_hue, high_hue, low_saturation, high_saturation, low_value, high_value, marks);
    return marks.GetBlobList(marked, min_w, max_w, min_h, max_h, result);
}

int CKestImage24::GetHueRangeBlobList(int left, int top, int right, int bottom, double low_hue,
                                      double high_hue, int low_saturation, int high_saturation, int low_value,
                                      int high_value, long min_w, long max_w, long min_h, long max_h,
                                      CBlobRectArray& result) const
{
    CKestImage marks;
    GetHueRangeImage(low_hue, high_hue, low_saturation, high_saturation, low_value, high_value, marks);
    return marks.GetBlobList(left, top, right, bottom, marked, min_w, max_w, min_h, max_h, result);
}

int CKestImage24::GetPlaneBlobList(char channel, int threshold, int color, long min_w, long max_w, long min_h,
                                   long max_h, CBlobRectArray& result) const
{
    Plane plane;
    if (!planeOfLetter(channel, plane))
        return 0;
    return planeOf(*this, plane).GetBlobList(threshold, color, min_w, max_w, min_h, max_h, result);
}

int CKestImage24::GetPlaneBlobList(int left, int top, int right, int bottom, char channel, int threshold,
                                   int color, long min_w, long max_w, long min_h, long max_h,
                                   CBlobRectArray& result) const
{
    Plane plane;
    if (!planeOfLetter(channel, plane))
        return 0;
    return planeOf(*this, plane)
        .GetBlobList(left, top, right, bottom, threshold, color, min_w, max_w, min_h, max_h, result);
}

int CKestImage24::GetBlobList(int threshold, int color, long min_w, long max_w, long min_h, long max_h,
                              CBlobRectArray& result) const
{
    return planeOf(*this, Plane::Mean).GetBlobList(threshold, color, min_w, max_w, min_h, max_h, result);
}

int CKestImage24::GetBlobList(int left, int top, int right, int bottom, int threshold, int color, long min_w,
                              long max_w, long min_h, long max_h, CBlobRectArray& result) const
{
    return planeOf(*this, Plane::Mean)
        .GetBlobList(left, top, right, bottom, threshold, color, min_w, max_w, min_h, max_h, result);
}

int CKestImage24::GetGrayRangeBlobList(unsigned char low, unsigned char high, long min_w, long max_w,
                                       long min_h, long max_h, CBlobRectArray& result) const
{
    return planeOf(*this, Plane::Mean).GetGrayRangeBlobList(low, high, min_w, max_w, min_h, max_h, result);
}

int CKestImage24::GetKBlobList(int threshold, int color, long min_w, long max_w, long min_h, long max_h,
                               CBlobRectArray& result) const
{
    return planeOf(*this, Plane::Black).GetBlobList(threshold, color, min_w, max_w, min_h, max_h, result);
}

int CKestImage24::GetKBlobList(int left, int top, int right, int bottom, int threshold, int color, long min_w,
                               long max_w, long min_h, long max_h, CBlobRectArray& result) const
{
    return planeOf(*this, Plane::Black)
        .GetBlobList(left, top, right, bottom, threshold, color, min_w, max_w, min_h, max_h, result);
}
