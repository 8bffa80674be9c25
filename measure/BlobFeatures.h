#pragma once

#include "measure/BlobFeature.h"
#include "measure/RunTable.h"

#include <cstdint>
#include <vector>

namespace ormalux {

struct BlobFeatureQuery
{
    BlobRegion region; ///< right and bottom lie outside
    ObjectLevels levels;
    Connectivity connectivity = Connectivity::Four;
    bool dropBorder = false;  ///< leaves out blobs with a pixel on the region's outermost rows and columns
    std::int64_t minArea = 0; ///< both ends included
    std::int64_t maxArea = INT64_MAX;
};

/// Measures the blobs of the region, in the scan order of their first pixels. What lies outside the region is
/// no object. Areas, boxes, holes and moments are whole numbers, exact for every picture; the rest is
/// computed from them in doubles.
///
/// Takes as much time as there are pixels and runs of object pixels. False, with the result empty, when
/// memory is short. The region must lie in the image or be empty.
bool blobFeatures(const ConstGrayView& image, const BlobFeatureQuery& query,
                  std::vector<CBlobFeature>& result);

} // namespace ormalux
