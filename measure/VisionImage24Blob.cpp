#include "color/VisionImage24.h"

#include "color/ColorPlane.h"
#include "color/ColorRange.h"
#include "image/ImagePart.h"

using namespace ormalux;

namespace {

/// Searches the gray picture that draw(its pixels) makes of the image; what the array then counts. 0 for an
/// empty image.
template <class Draw, class Search>
int searchGray(const CKestImage24& image, CBlobRectArray& result, Draw draw, Search search)
{
    if (image.view().empty())
        return 0;
    CKestImage gray;
    if (!gray.SetSizeForOverwrite(image.view().width, image.view().height))
        return result.GetCount();
    draw(pixelsOf(gray.view()));
    return search(gray);
}

template <class Search>
int searchPlane(const CKestImage24& image, Plane plane, CBlobRectArray& result, Search search)
{
    return searchGray(
        image, result, [&](std::span<std::uint8_t> gray) { extractPlane(image.view(), plane, gray); },
        search);
}

/// The picture is 255 where the colour is in range, else 0.
template <class Search>
int searchColors(const CKestImage24& image, COLORREF low, COLORREF high, CBlobRectArray& result,
                 Search search)
{
    return searchGray(
        image, result, [&](std::span<std::uint8_t> gray) { selectColors(image.view(), low, high, gray); },
        search);
}

constexpr int marked = 255;

} // namespace

int CKestImage24::GetColorRangeBlobList(COLORREF low, COLORREF high, long min_w, long max_w, long min_h,
                                        long max_h, CBlobRectArray& result) const
{
    return searchColors(*this, low, high, result, [&](const CKestImage& gray) {
        return gray.GetBlobList(marked, min_w, max_w, min_h, max_h, result);
    });
}

int CKestImage24::GetColorRangeBlobList(int left, int top, int right, int bottom, COLORREF low, COLORREF high,
                                        long min_w, long max_w, long min_h, long max_h,
                                        CBlobRectArray& result) const
{
    return searchColors(*this, low, high, result, [&](const CKestImage& gray) {
        return gray.GetBlobList(left, top, right, bottom, marked, min_w, max_w, min_h, max_h, result);
    });
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
    return searchPlane(*this, plane, result, [&](const CKestImage& gray) {
        return gray.GetBlobList(threshold, color, min_w, max_w, min_h, max_h, result);
    });
}

int CKestImage24::GetPlaneBlobList(int left, int top, int right, int bottom, char channel, int threshold,
                                   int color, long min_w, long max_w, long min_h, long max_h,
                                   CBlobRectArray& result) const
{
    Plane plane;
    if (!planeOfLetter(channel, plane))
        return 0;
    return searchPlane(*this, plane, result, [&](const CKestImage& gray) {
        return gray.GetBlobList(left, top, right, bottom, threshold, color, min_w, max_w, min_h, max_h,
                                result);
    });
}

int CKestImage24::GetBlobList(int threshold, int color, long min_w, long max_w, long min_h, long max_h,
                              CBlobRectArray& result) const
{
    return searchPlane(*this, Plane::Mean, result, [&](const CKestImage& gray) {
        return gray.GetBlobList(threshold, color, min_w, max_w, min_h, max_h, result);
    });
}

int CKestImage24::GetBlobList(int left, int top, int right, int bottom, int threshold, int color, long min_w,
                              long max_w, long min_h, long max_h, CBlobRectArray& result) const
{
    return searchPlane(*this, Plane::Mean, result, [&](const CKestImage& gray) {
        return gray.GetBlobList(left, top, right, bottom, threshold, color, min_w, max_w, min_h, max_h,
                                result);
    });
}

int CKestImage24::GetGrayRangeBlobList(unsigned char low, unsigned char high, long min_w, long max_w,
                                       long min_h, long max_h, CBlobRectArray& result) const
{
    return searchPlane(*this, Plane::Mean, result, [&](const CKestImage& gray) {
        return gray.GetGrayRangeBlobList(low, high, min_w, max_w, min_h, max_h, result);
    });
}

int CKestImage24::GetKBlobList(int threshold, int color, long min_w, long max_w, long min_h, long max_h,
                               CBlobRectArray& result) const
{
    return searchPlane(*this, Plane::Black, result, [&](const CKestImage& gray) {
        return gray.GetBlobList(threshold, color, min_w, max_w, min_h, max_h, result);
    });
}

int CKestImage24::GetKBlobList(int left, int top, int right, int bottom, int threshold, int color, long min_w,
                               long max_w, long min_h, long max_h, CBlobRectArray& result) const
{
    return searchPlane(*this, Plane::Black, result, [&](const CKestImage& gray) {
        return gray.GetBlobList(left, top, right, bottom, threshold, color, min_w, max_w, min_h, max_h,
                                result);
    });
}
