#include "measure/BlobFinder.h"

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
    m_image = image;
    m_region = region;
    m_levels = levels;
    m_labelCount = 0;
    m_blobCount = 0;
    m_pixels = 0;
    if (image.empty() || region.empty() || levels.none())
        return true;
    if (!findLabels())
        return false;
    gatherBlobs();
    return true;
}

bool BlobFinder::findLabels()
{
    const std::size_t width = std::size_t(m_region.right - m_region.left);
    const std::size_t words = (width + 63) / 64;
    const std::size_t runs = width / 2 + 1 + kernels::runSlack;
    if (!m_bits.reserve(4 * (words + 1)) || !m_columns.reserve(2 * (words + 2 * runs)) ||
        !m_labels.reserve(2 * runs))
        return false;
    std::memset(m_bits.data(), 0, 4 * (words + 1) * sizeof(std::uint64_t));
    kernels::RunRow rows[2];
    for (std::size_t i = 0; i < 2; ++i) {
        std::uint64_t* bits = m_bits.data() + i * 2 * (words + 1);
        std::int32_t* columns = m_columns.data() + i * (words + 2 * runs);
        rows[i] = {bits,
                   bits + words + 1,
                   columns,
                   columns + words,
                   columns + words + runs,
                   m_labels.data() + i * runs};
    }
    for (int y = m_region.top; y < m_region.bottom; ++y) {
        const kernels::RunRow& row = rows[y & 1];
        if (!reserveLabels(y - m_region.top))
            return false;
        packRow(y, row.objects);
        const std::int32_t found = kernels::joinRow(rows[~y & 1], row, words, m_parents.data());
        measureRow(y, row, found);
        if (y == m_region.top && y > 0)
            countOutsideAbove(row, found);
    }
    return true;
}

// Makes room for the labels of one more row. As many are taken as the rows done so far let expect, since
// growing in small steps copies too much.
bool BlobFinder::reserveLabels(int rowsDone)
{
    const std::size_t needed = m_labelCount + std::size_t(m_region.right - m_region.left) / 2 + 2;
    if (needed <= m_labelRoom)
        return true;
    const std::size_t rows = std::size_t(m_region.bottom - m_region.top);
    const std::size_t expected = rowsDone < 16 ? 0 : needed / std::size_t(rowsDone) * rows / 8 * 9;
    const std::size_t room = std::max({needed, expected, m_labelRoom + m_labelRoom / 2});
    if (!m_parents.reserve(room) || !m_blobs.reserve(room))
        return false;
    m_labelRoom = room;
    return true;
}

void BlobFinder::packRow(int y, std::uint64_t* words) const
{
    const std::size_t width = std::size_t(m_region.right - m_region.left);
    kernels::packLevels({m_image.row(y) + m_region.left, m_image.stride, width, 1},
                        std::uint8_t(m_levels.low), std::uint8_t(m_levels.high), words, (width + 63) / 64);
}

// Runs come in scan order, so new labels are in the order of their first pixels.
void BlobFinder::measureRow(int y, const kernels::RunRow& row, std::int32_t runs)
{
    Blob* blobs = m_blobs.data();
    std::uint32_t* parents = m_parents.data();
    std::uint32_t next = std::uint32_t(m_labelCount);
    std::int64_t pixels = 0;
    const int offset = m_region.left;
    for (std::int32_t run = 0; run < runs; ++run) {
        const int left = offset + row.begins[run];
        const int right = offset + row.ends[run] - 1;
        // Whether a run needs a new label is hard to predict: one is always begun, and anew when not used.
        blobs[next] = {left, y, right, y, 0, left};
        parents[next] = next;
        const std::uint32_t fresh = row.labels[run] >> 31;
        const std::uint32_t label = kernels::labelOr(row.labels[run], next);
        next += fresh;
        row.labels[run] = label;
        Blob& blob = blobs[label];
        blob.left = std::min(blob.left, left);
        blob.right = std::max(blob.right, right);
        blob.bottom = y;
        blob.pixels += right - left + 1;
        pixels += right - left + 1;
    }
    m_labelCount = next;
    m_pixels += pixels;
    if (runs > 0 && row.begins[0] == 0 && m_region.left > 0)
        blobs[row.labels[0]].pixels += m_levels.hold(m_image.row(y)[m_region.left - 1]) ? 1 : 0;
}

void BlobFinder::countOutsideAbove(const kernels::RunRow& row, std::int32_t runs)
{
    const std::uint8_t* above = m_image.row(m_region.top - 1) + m_region.left;
    for (std::int32_t run = 0; run < runs; ++run)
        for (int x = row.begins[run]; x < row.ends[run]; ++x)
            m_blobs[row.labels[run]].pixels += m_levels.hold(above[x]) ? 1 : 0;
}

// Labels of one blob are put together at the place of the smallest, which is its first: the blobs stay in the
// order of their seeds.
void BlobFinder::gatherBlobs()
{
    Blob* blobs = m_blobs.data();
    std::uint32_t* blobOf = m_parents.data();
    std::uint32_t count = 0;
    for (std::uint32_t label = 0; label < m_labelCount; ++label) {
        // As in measureRow, the next blob is always begun.
        const Blob part = blobs[label];
        blobs[count] = part;
        blobs[count].pixels = 0;
        const std::uint32_t parent = blobOf[label];
        const std::uint32_t first = parent == label;
        const std::uint32_t known = blobOf[parent];
        const std::uint32_t index = known ^ ((known ^ count) & (0 - first));
        count += first;
        blobOf[label] = index;
        Blob& blob = blobs[index];
        blob.left = std::min(blob.left, part.left);
        blob.right = std::max(blob.right, part.right);
        blob.bottom = std::max(blob.bottom, part.bottom);
        blob.pixels += part.pixels;
    }
    m_blobCount = count;
}

std::int64_t BlobFinder::recordCount(const BlobSizes& sizes) const
{
    std::int64_t count = sizes.admit(1, 1) ? m_pixels - std::int64_t(m_blobCount) : 0;
    for (const Blob& blob : blobs())
        count += sizes.admit(blob.right - blob.left + 1, blob.bottom - blob.top + 1) ? 1 : 0;
    return count;
}

} // namespace ormalux
