#include "measure/BlobFinder.h"

#include "measure/kernels/BlobKernels.h"

#include <algorithm>
#include <cstring>

namespace ormalux {

ObjectLevels levelsEqualTo(int value)
{
    if (value < 0 || value > 255)
        return {1, 0};
    return {value, value};
}

ObjectLevels levelsOfColor(int threshold, int color)
{
    const int t = std::clamp(threshold, -1, 255);
    if (color == 255)
        return {t + 1, 255};
    if (color == 0)
        return {0, t};
    return {1, 0};
}

BlobRegion blobRegion(int width, int height, int left, int top, int right, int bottom)
{
    return {std::max(left, 0), std::max(top, 0), right < 0 ? width : std::min(right, width),
            bottom < 0 ? height : std::min(bottom, height)};
}

bool BlobFinder::find(const ConstGrayView& image, const BlobRegion& region, ObjectLevels levels)
{
    m_blobCount = 0;
    m_pixels = 0;
    m_region = region;
    if (image.empty() || region.empty() || levels.none()) {
        m_region = {0, 0, 0, 0};
        return true;
    }
    if (!prepare(region) || !findRuns(image, region, levels) || !measureBlobs(region))
        return false;
    countOutside(image, region, levels);
    return true;
}

bool BlobFinder::prepare(const BlobRegion& region)
{
    const std::size_t words = (std::size_t(region.right - region.left) + 63) / 64 + 1;
    return m_bits.reserve(4 * words) && m_firstRuns.reserve(2 * words) &&
           m_rows.reserve(std::size_t(region.bottom - region.top) + 1);
}

bool BlobFinder::findRuns(const ConstGrayView& image, const BlobRegion& region, ObjectLevels levels)
{
    const std::size_t width = std::size_t(region.right - region.left);
    const std::size_t words = (width + 63) / 64;
    const std::size_t mostRuns = width / 2 + 1 + 64;
    std::uint64_t* bits = m_bits.data();
    std::int32_t* firstRuns = m_firstRuns.data();
    kernels::RunRow above{bits, bits + (words + 1), firstRuns};
    kernels::RunRow row{bits + 2 * (words + 1), bits + 3 * (words + 1), firstRuns + (words + 1)};
    std::memset(bits, 0, 4 * (words + 1) * sizeof *bits);

    std::int32_t runs = 0;
    for (int y = region.top; y < region.bottom; ++y) {
        m_rows[y - region.top] = runs;
        const std::size_t room = std::size_t(runs) + mostRuns;
        if (!m_begins.reserve(room) || !m_ends.reserve(room) || !m_blobOfRun.reserve(room))
            return false;
        kernels::packLevels({image.row(y) + region.left, image.stride, width, 1}, std::uint8_t(levels.low),
                            std::uint8_t(levels.high), row.objects, words);
        runs =
            kernels::joinRow(above, row, words, runs, {m_begins.data(), m_ends.data(), m_blobOfRun.data()});
        std::swap(above, row);
    }
    m_rows[region.bottom - region.top] = runs;
    return true;
}

// Runs come in scan order and the smallest number of a set is its root, so a blob is met first at its seed
// and blobs get their numbers in the order of their seeds.
bool BlobFinder::measureBlobs(const BlobRegion& region)
{
    const std::int32_t* begins = m_begins.data();
    const std::int32_t* ends = m_ends.data();
    std::int32_t* blobOfRun = m_blobOfRun.data();
    for (int row = 0; row < region.bottom - region.top; ++row) {
        const int y = region.top + row;
        if (!m_blobs.reserve(std::size_t(m_blobCount) + std::size_t(m_rows[row + 1] - m_rows[row])))
            return false;
        for (std::int32_t run = m_rows[row]; run < m_rows[row + 1]; ++run) {
            const int left = region.left + begins[run];
            const int right = region.left + ends[run] - 1;
            const int length = right - left + 1;
            m_pixels += length;
            const std::int32_t parent = blobOfRun[run];
            if (parent == run) {
                blobOfRun[run] = m_blobCount;
                m_blobs[m_blobCount++] = {left, y, right, y, length, left};
                continue;
            }
            const std::int32_t index = blobOfRun[parent];
            blobOfRun[run] = index;
            Blob& blob = m_blobs[index];
            blob.left = std::min(blob.left, left);
            blob.right = std::max(blob.right, right);
            blob.bottom = y;
            blob.pixels += length;
        }
    }
    return true;
}

void BlobFinder::countOutside(const ConstGrayView& image, const BlobRegion& region, ObjectLevels levels)
{
    const auto isObject = [&](int x, int y) {
        const int level = image.row(y)[x];
        return level >= levels.low && level <= levels.high ? 1 : 0;
    };
    if (region.left > 0)
        for (int row = 0; row < region.bottom - region.top; ++row) {
            const std::int32_t run = m_rows[row];
            if (run < m_rows[row + 1] && m_begins[run] == 0)
                m_blobs[m_blobOfRun[run]].pixels += isObject(region.left - 1, region.top + row);
        }
    if (region.top > 0)
        for (std::int32_t run = m_rows[0]; run < m_rows[1]; ++run)
            for (int x = m_begins[run]; x < m_ends[run]; ++x)
                m_blobs[m_blobOfRun[run]].pixels += isObject(region.left + x, region.top - 1);
}

std::int64_t BlobFinder::recordCount(const BlobSizes& sizes) const
{
    std::int64_t count = sizes.admit(1, 1) ? m_pixels - m_blobCount : 0;
    for (const Blob& blob : blobs())
        count += sizes.admit(blob.right - blob.left + 1, blob.bottom - blob.top + 1) ? 1 : 0;
    return count;
}

} // namespace ormalux
