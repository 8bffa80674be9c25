#include "image/VisionImage.h"

#include "match/OcrMatch.h"
#include "match/PatternMatch.h"
#include "match/RangeMatch.h"
#include "measure/BlobList.h"

using namespace ormalux;

namespace {

/// Reads the dark blobs of a region.
int readBlobs(const CKestImage& image, const BlobRegion& region, int threshold, const BlobSizes& sizes,
              CMatchSrcArray& sources, CMatchResultArray& results)
{
    if (image.IsEmpty())
        return 0;
    CBlobRectArray blobs;
    if (!appendBlobs(image.view(), {region, levelsOfColor(threshold, 0), sizes}, blobs))
        return results.GetCount();
    return image.OcrMatch(threshold, blobs, sources, results);
}

} // namespace

int CKestImage::Match(int left, int top, int right, int bottom, int threshold, CMatchSrcArray& sources,
                      CMatchResultArray& results) const
{
    const auto source = patternSource(sources);
    if (!source)
        return 0;
    return matchPattern(searchedArea(view(), left, top, right, bottom), threshold, *source, results);
}

int CKestImage::Match(int threshold, CMatchSrcArray& sources, CMatchResultArray& results) const
{
    const auto source = patternSource(sources);
    return source ? matchPattern(view(), threshold, *source, results) : 0;
}

int CKestImage::MatchThresholdRange(int left, int top, int right, int bottom, int low, int high,
                                    CMatchSrcArray& sources, CMatchResultArray& results) const
{
    if (const auto source = patternSource(sources))
        matchThresholdRange(searchedArea(view(), left, top, right, bottom), low, high, *source, results);
    return results.GetCount();
}

int CKestImage::OcrMatch(int threshold, int min_width, int max_width, int min_height, int max_height,
                         CMatchSrcArray& sources, CMatchResultArray& results) const
{
    return readBlobs(*this, {0, 0, view().width, view().height}, threshold,
                     {min_width, max_width, min_height, max_height}, sources, results);
}

int CKestImage::OcrMatch(int left, int top, int right, int bottom, int threshold, int min_width,
                         int max_width, int min_height, int max_height, CMatchSrcArray& sources,
                         CMatchResultArray& results) const
{
    return readBlobs(*this, blobRegion(view().width, view().height, left, top, right, bottom), threshold,
                     {min_width, max_width, min_height, max_height}, sources, results);
}

int CKestImage::OcrMatch(int threshold, CBlobRectArray& blobs, CMatchSrcArray& sources,
                         CMatchResultArray& results) const
{
    if (blobs.GetCount() < 1)
        return 0;
    matchCharacters(view(), threshold, blobs.records(), sources.records(), results);
    return results.GetCount();
}
