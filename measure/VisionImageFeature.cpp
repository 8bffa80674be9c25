#include "image/VisionImage.h"

#include "measure/BlobFeatures.h"

#include <algorithm>
#include <climits>

using namespace ormalux;

int CKestImage::GetBlobFeatures(int x1, int y1, int x2, int y2, int threshold, int object, int connectivity,
                                int border, long long min_area, long long max_area,
                                std::vector<CBlobFeature>& result) const
{
    result.clear();
    const ConstGrayView image = view();
    if (image.empty() || (connectivity != 4 && connectivity != 8) || (border != 0 && border != 1))
        return 0;
    const int left = std::max(std::min(x1, x2), 0), top = std::max(std::min(y1, y2), 0);
    const int right = std::min(std::max(x1, x2), image.width - 1),
              bottom = std::min(std::max(y1, y2), image.height - 1);
    if (right < left || bottom < top)
        return 0;
    const BlobFeatureQuery query{{left, top, right + 1, bottom + 1},
                                 levelsOfColor(threshold, object),
                                 connectivity == 4 ? Connectivity::Four : Connectivity::Eight,
                                 border == 1,
                                 min_area,
                                 max_area};
    return blobFeatures(image, query, result) ? int(result.size()) : 0;
}

int CKestImage::GetBlobFeatures(int threshold, int object, int connectivity,
                                std::vector<CBlobFeature>& result) const
{
    return GetBlobFeatures(0, 0, m_width - 1, m_height - 1, threshold, object, connectivity, 0, 0, LLONG_MAX,
                           result);
}
