#include "measure/BlobList.h"

#include "measure/BlobWalk.h"

namespace ormalux {

bool appendBlobs(const ConstGrayView& image, const BlobQuery& query, CBlobRectArray& result)
{
    BlobFinder finder;
    if (!finder.find(image, query.region, query.levels))
        return false;
    const std::int64_t count = finder.recordCount(query.sizes);
    if (count == 0)
        return true;
    const auto records = result.appendForOverwrite(std::size_t(count));
    if (records.empty())
        return false;
    _stBlobRect* next = records.data();
    finder.forEachRecord(query.sizes, [&](const Blob& blob) {
        *next++ = {blob.left, blob.top, blob.right, blob.bottom, blob.pixels, 0, 0, {0, 0}, {0, 0, 0, 0}};
    });
    return true;
}

bool appendBlobPixels(const ConstGrayView& image, const BlobQuery& query, CPointArrayArray& result)
{
    BlobFinder finder;
    BlobWalk walk;
    if (!finder.find(image, query.region, query.levels) || !walk.prepare(image, query.region, query.levels))
        return false;
    const std::int64_t count = finder.recordCount(query.sizes);
    if (count == 0)
        return true;
    const int before = result.GetCount();
    const auto lists = result.appendForOverwrite(std::size_t(count));
    bool complete = !lists.empty();
    std::size_t next = 0;
    finder.forEachRecord(query.sizes, [&](const Blob& blob) {
        if (!complete)
            return;
        CPointArray& list = lists[next++];
        list = CPointArray();
        const auto points = list.appendForOverwrite(std::size_t(blob.pixels));
        complete = !points.empty();
        if (!complete)
            return;
        points[0] = {blob.seed, blob.top};
        if (blob.pixels > 1)
            walk.list(points[0], points);
    });
    if (!complete)
        result.cutBackTo(before);
    return complete;
}

} // namespace ormalux
