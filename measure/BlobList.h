#pragma once

#include "array/BlobRectArray.h"
#include "array/PointArray.h"
#include "measure/BlobFinder.h"

namespace ormalux {

/// What a blob search is asked for.
struct BlobQuery
{
    BlobRegion region;
    ObjectLevels levels;
    BlobSizes sizes;
};

/// Appends a record for every blob of an admitted size, and for every further pixel where 1 x 1 is admitted,
/// as BlobFinder::forEachRecord gives them. False, with the array as it was, when memory is short.
bool appendBlobs(const ConstGrayView& image, const BlobQuery& query, CBlobRectArray& result);

/// The same records, each as the list of its pixels in the order of a depth-first walk from the first pixel
/// in scan order, which tries left, right, up and down. Pixels just outside the region are listed where they
/// are.
bool appendBlobPixels(const ConstGrayView& image, const BlobQuery& query, CPointArrayArray& result);

} // namespace ormalux
