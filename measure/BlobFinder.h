#pragma once

#include "image/GrayView.h"
#include "measure/Growable.h"
#include "measure/kernels/BlobKernels.h"
#include "platform/Export.h"

#include <bit>
#include <cstdint>
#include <span>

namespace ormalux {

/// Which pixels belong to objects: low <= p <= high.
struct ObjectLevels
{
    int low;
    int high; ///< below low: no pixel does

    bool none() const { return low > high; }
    bool hold(int level) const { return level >= low && level <= high; }
};

/// Objects of exactly one level; none outside 0 .. 255.
ObjectLevels levelsEqualTo(int value);
/// Objects brighter than the threshold (color 255) or not brighter (color 0); other colours find nothing.
ORMALUX_API ObjectLevels levelsOfColor(int threshold, int color);

/// Part of an image; right and bottom lie outside. Empty when reversed.
struct BlobRegion
{
    int left;
    int top;
    int right;
    int bottom;

    bool empty() const { return left >= right || top >= bottom; }
};

/// The region as a caller gives it: left and top below 0 become 0, right and bottom below 0 or beyond the
/// image its edge. The corners are not swapped.
ORMALUX_API BlobRegion blobRegion(int width, int height, int left, int top, int right, int bottom);

/// Extents in pixels that a blob must have, both ends included.
struct BlobSizes
{
    std::int64_t minWidth;
    std::int64_t maxWidth;
    std::int64_t minHeight;
    std::int64_t maxHeight;

    bool admit(int width, int height) const
    {
        return (width >= minWidth) & (width <= maxWidth) & (height >= minHeight) & (height <= maxHeight);
    }
};

/// A 4-connected set of object pixels. All coordinates belong to it.
struct Blob
{
    int left;
    int top; ///< also the row of its first pixel in scan order
    int right;
    int bottom;
    int pixels;
    int seed; ///< the column of its first pixel
};

/// Finds blobs by rows of bits: the runs of a row get the labels of those that they touch in the row above,
/// and labels that meet become one, so neither a picture of labels nor a walk is needed. The work is linear
/// in the pixels and the runs, the memory in the labels, which are fewer than the runs.
///
/// Keeps its memory for the next search. One thread at a time.
class ORMALUX_API BlobFinder
{
public:
    /// Finds every blob of the region. False, with none found, when memory is short. The pixels must stay as
    /// they are until the records are taken.
    ///
    /// Deliberate: an object pixel directly left of or above the region counts for the blob that it touches,
    /// though it does not widen the blob: the limits of the search are those of the image on these two sides.
    bool find(const ConstGrayView& image, const BlobRegion& region, ObjectLevels levels);

    /// Calls take(blob) for the records that the blobs give: for every blob of an admitted size one, in the
    /// order of their seeds.
    ///
    /// Deliberate: every other pixel of a blob is tried as a seed once more and then stands for itself, a
    /// blob of one pixel; callers that admit 1 x 1 get these too, in scan order.
    template <class Take>
    void forEachRecord(const BlobSizes& sizes, Take&& take);
    /// How often forEachRecord calls.
    std::int64_t recordCount(const BlobSizes& sizes) const;

    /// All blobs, in the order of their seeds.
    std::span<const Blob> blobs() const { return {m_blobs.data(), m_blobCount}; }

private:
    bool findLabels();
    bool reserveLabels(int rowsDone);
    void packRow(int y, std::uint64_t* words) const;
    void countOutsideAbove(const kernels::RunRow& row, std::int32_t runs);
    void measureRow(int y, const kernels::RunRow& row, std::int32_t runs);
    void gatherBlobs();
    template <class Take>
    void forEachPixelRecord(const BlobSizes& sizes, Take&& take);

    ConstGrayView m_image;
    BlobRegion m_region{0, 0, 0, 0};
    ObjectLevels m_levels{1, 0};
    Growable<std::uint64_t> m_bits;    // two rows of objects and of starts
    Growable<std::int32_t> m_columns;  // two rows of first runs, begins and ends
    Growable<std::uint32_t> m_labels;  // two rows
    Growable<std::uint32_t> m_parents; // by label
    Growable<Blob> m_blobs;            // by label, in the end the blobs
    std::size_t m_labelRoom = 0;
    std::size_t m_labelCount = 0;
    std::size_t m_blobCount = 0;
    std::int64_t m_pixels = 0; // inside the region
};

template <class Take>
void BlobFinder::forEachRecord(const BlobSizes& sizes, Take&& take)
{
    if (sizes.admit(1, 1)) {
        forEachPixelRecord(sizes, take);
        return;
    }
    for (const Blob& blob : blobs())
        if (sizes.admit(blob.right - blob.left + 1, blob.bottom - blob.top + 1))
            take(blob);
}

template <class Take>
void BlobFinder::forEachPixelRecord(const BlobSizes& sizes, Take&& take)
{
    const Blob* next = m_blobs.data();
    const Blob* const end = next + m_blobCount;
    const int words = (m_region.right - m_region.left + 63) / 64;
    for (int y = m_region.top; m_blobCount > 0 && y < m_region.bottom; ++y) {
        packRow(y, m_bits.data());
        for (int w = 0; w < words; ++w)
            for (std::uint64_t rest = m_bits[w]; rest != 0; rest &= rest - 1) {
                const int x = m_region.left + w * 64 + std::countr_zero(rest);
                if (next == end || next->seed != x || next->top != y) {
                    take(Blob{x, y, x, y, 1, x});
                    continue;
                }
                if (sizes.admit(next->right - next->left + 1, next->bottom - next->top + 1))
                    take(*next);
                ++next;
            }
    }
}

} // namespace ormalux
