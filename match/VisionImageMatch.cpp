#include "image/VisionImage.h"

#include "match/OcrMatch.h"
#include "match/PatternMatch.h"
#include "match/RangeMatch.h"
#include "measure/BlobList.h"

using namespace ormalux;

int CKestImage::Match(int left, int top, int right, int bottom, int threshold, CMatchSrcArray& sources,
                      CMatchResultArray& results) const
{
    const auto source = patternSource(sources);
    if (!source || !matchPattern(searchedArea(view(), left, top, right, bottom), threshold, *source, results))
        return 0;
    return results.GetCount();
}

int CKestImage::Match(int threshold, CMatchSrcArray& sources, CMatchResultArray& results) const
{
    const auto source = patternSource(sources);
    if (!source || !matchPattern(view(), threshold, *source, results))
        return 0;
    return results.GetCount();
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
    CBlobRectArray blobs;
    GetBlobList(threshold, 0, min_width, max_width, min_height, max_height, blobs);
    return OcrMatch(threshold, blobs, sources, results);
}

int CKestImage::OcrMatch(int left, int top, int right, int bottom, int threshold, int min_width,
                         int max_width, int min_height, int max_height, CMatchSrcArray& sources,
                         CMatchResultArray& results) const
{
    CBlobRectArray blobs;
    GetBlobList(left, top, right, bottom, threshold, 0, min_width, max_width, min_height, max_height, blobs);
    return OcrMatch(threshold, blobs, sources, results);
}

int CKestImage::OcrMatch(int threshold, CBlobRectArray& blobs, CMatchSrcArray& sources,
                         CMatchResultArray& results) const
{
    if (blobs.GetCount() < 1)
        return 0;
    matchCharacters(view(), threshold, blobs.records(), sources.records(), results);
    return results.GetCount();
}
