#pragma once

#include "image/GrayView.h"
#include "measure/Growable.h"

#include <cstdint>
#include <span>

namespace ormalux {

/// Which pixels belong to objects: low <= p <= high.
struct ObjectLevels
{
    int low;
    int high; ///< below low: no pixel does

    bool none() const { return low > high; }
};

/// Objects of exactly one level; none outside 0 .. 255.
ObjectLevels levelsEqualTo(int value);
/// Objects brighter than the threshold (color 255) or not brighter (color 0); other colours find nothing.
ObjectLevels levelsOfColor(int threshold, int color);

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
BlobRegion blobRegion(int width, int height, int left, int top, int right, int bottom);

/// Extents in pixels that a blob must have, both ends included.
struct BlobSizes
{
    std::int64_t minWidth;
    std::int64_t maxWidth;
    std::int64_t minHeight;
    std::int64_t maxHeight;

    bool admit(int width, int height) const
    {
        return width >= minWidth && width <= maxWidth && height >= minHeight && height <= maxHeight;
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

/// Finds blobs by rows of bits: the runs of every row are numbered in scan order and united with those that
/// they touch in the row above, so neither a picture of labels nor a walk is needed. The work is linear in
/// the pixels and the runs; memory is 12 bytes a run.
///
/// Keeps its memory for the next search. One thread at a time.
class BlobFinder
{
public:
    /// Finds every blob of the region. False when memory is short.
    ///
    /// Deliberate: an object pixel directly left of or above the region counts for the blob that it touches,
    /// though it does not widen the blob: the limits of the search are those of the image on these two sides.
    bool find(const ConstGrayView& image, const BlobRegion& region, ObjectLevels levels);

    /// The records that the blobs give: for every blob of an admitted size one, in the order of their seeds.
    ///
    /// Deliberate: every other pixel of a blob is tried as a seed once more and then stands for itself, a
    /// blob of one pixel; callers that admit 1 x 1 get these too, in scan order.
    template <class Take>
    void forEachRecord(const BlobSizes& sizes, Take&& take) const;
    /// How often forEachRecord calls.
    std::int64_t recordCount(const BlobSizes& sizes) const;

    /// All blobs, in the order of their seeds.
    std::span<const Blob> blobs() const { return {m_blobs.data(), std::size_t(m_blobCount)}; }

private:
    bool prepare(const BlobRegion& region);
    bool findRuns(const ConstGrayView& image, const BlobRegion& region, ObjectLevels levels);
    bool measureBlobs(const BlobRegion& region);
    void countOutside(const ConstGrayView& image, const BlobRegion& region, ObjectLevels levels);
    template <class Take>
    void forEachPixelRecord(const BlobSizes& sizes, Take&& take) const;

    BlobRegion m_region{0, 0, 0, 0};
    Growable<std::uint64_t> m_bits;     // two rows of objects and starts
    Growable<std::int32_t> m_firstRuns; // two rows
    Growable<std::int32_t> m_rows;      // the first run of every row, and the number of runs
    Growable<std::int32_t> m_begins;    // by run, columns of the region
    Growable<std::int32_t> m_ends;      // by run
    Growable<std::int32_t> m_blobOfRun; // by run: first its parent, then its blob
    Growable<Blob> m_blobs;
    std::int32_t m_blobCount = 0;
    std::int64_t m_pixels = 0; // inside the region
};

template <class Take>
void BlobFinder::forEachRecord(const BlobSizes& sizes, Take&& take) const
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
void BlobFinder::forEachPixelRecord(const BlobSizes& sizes, Take&& take) const
{
    for (int row = 0; row < m_region.bottom - m_region.top; ++row) {
        const int y = m_region.top + row;
        for (std::int32_t run = m_rows[row]; run < m_rows[row + 1]; ++run) {
            int x = m_region.left + m_begins[run];
            const int end = m_region.left + m_ends[run];
            const Blob& blob = m_blobs[m_blobOfRun[run]];
            if (blob.top == y && blob.seed == x) {
                if (sizes.admit(blob.right - blob.left + 1, blob.bottom - blob.top + 1))
                    take(blob);
                ++x;
            }
            for (; x < end; ++x)
                take(Blob{x, y, x, y, 1, x});
        }
    }
}

} // namespace ormalux
