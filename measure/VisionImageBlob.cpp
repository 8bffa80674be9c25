#include "image/VisionImage.h"

#include "measure/BlobList.h"

using namespace ormalux;

namespace {

BlobRegion wholeOf(const ConstGrayView& image)
{
    return {0, 0, image.width, image.height};
}

} // namespace

int CKestImage::GetBlobList(int value, long min_w, long max_w, long min_h, long max_h,
                            CBlobRectArray& result) const
{
    if (IsEmpty())
        return 0;
    const BlobQuery query{wholeOf(view()), levelsEqualTo(value), {min_w, max_w, min_h, max_h}};
    appendBlobs(view(), query, result);
    return result.GetCount();
}

int CKestImage::GetBlobList(int threshold, int color, long min_w, long max_w, long min_h, long max_h,
                            CBlobRectArray& result) const
{
    if (IsEmpty())
        return 0;
    const BlobQuery query{wholeOf(view()), levelsOfColor(threshold, color), {min_w, max_w, min_h, max_h}};
    appendBlobs(view(), query, result);
    return result.GetCount();
}

int CKestImage::GetBlobList(int left, int top, int right, int bottom, int threshold, int color, long min_w,
                            long max_w, long min_h, long max_h, CBlobRectArray& result) const
{
    if (IsEmpty())
        return 0;
    const BlobQuery query{blobRegion(view().width, view().height, left, top, right, bottom),
                          levelsOfColor(threshold, color),
                          {min_w, max_w, min_h, max_h}};
    appendBlobs(view(), query, result);
    return result.GetCount();
}

int CKestImage::GetBlobList(int left, int top, int right, int bottom, int value, long min_w, long max_w,
                            long min_h, long max_h, CBlobRectArray& result) const
{
    if (IsEmpty())
        return 0;
    const BlobQuery query{blobRegion(view().width, view().height, left, top, right, bottom),
                          levelsEqualTo(value),
                          {min_w, max_w, min_h, max_h}};
    appendBlobs(view(), query, result);
    return result.GetCount();
}

int CKestImage::GetBlobList(int left, int top, int right, int bottom, int value, long min_w, long max_w,
                            long min_h, long max_h, CPointArrayArray& result) const
{
    if (IsEmpty())
        return 0;
    const BlobQuery query{blobRegion(view().width, view().height, left, top, right, bottom),
                          levelsEqualTo(value),
                          {min_w, max_w, min_h, max_h}};
    appendBlobPixels(view(), query, result);
    return result.GetCount();
}

int CKestImage::GetGrayRangeBlobList(unsigned char low, unsigned char high, long min_w, long max_w,
                                     long min_h, long max_h, CBlobRectArray& result) const
{
    if (IsEmpty())
        return 0;
    const BlobQuery query{wholeOf(view()), {low, high}, {min_w, max_w, min_h, max_h}};
    appendBlobs(view(), query, result);
    return result.GetCount();
}
