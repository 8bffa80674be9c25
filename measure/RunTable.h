#pragma once

#include "measure/BlobFinder.h"
#include "measure/Growable.h"
#include "measure/kernels/OutlineKernels.h"

#include <cstdint>

namespace ormalux {

/// How pixels of a blob touch: by sides, or by corners too. Its holes touch the other way.
enum class Connectivity
{
    Four,
    Eight
};

/// The runs of object pixels of a region with their blobs, and the object pixels as bits. Columns and rows
/// count from the region's corner. Linear in pixels and runs; 12 bytes a run, 12 a label and a bit a pixel.
class RunTable
{
public:
    using Run = kernels::BlobRun;
    /// What is known of a blob from its runs.
    struct Blob
    {
        std::int64_t area;
        std::int64_t runs;
        std::int64_t contacts; ///< pairs of runs in neighbouring rows that touch
    };

    /// Finds all blobs, numbered in the scan order of their first pixels. False when memory is short. The
    /// region must lie in the image.
    bool find(const ConstGrayView& image, const BlobRegion& region, ObjectLevels levels,
              Connectivity connectivity);

    std::uint32_t blobCount() const { return m_blobCount; }
    const Blob& blob(std::uint32_t index) const { return m_blobs[index]; }
    int width() const { return m_width; }
    int height() const { return m_height; }
    /// Words a row.
    std::size_t words() const { return m_words; }
    /// The bits of a row; rows -1 and height() are there too, without objects.
    const std::uint64_t* bits(int y) const { return m_bits.data() + std::size_t(y + 1) * m_words; }
    const Run* runs(int y) const { return m_runs.data() + m_rowStarts[std::size_t(y)]; }
    const Run* runsEnd(int y) const { return m_runs.data() + m_rowStarts[std::size_t(y) + 1]; }

private:
    bool findRuns(int y);
    bool joinRows(int y, std::int32_t reach);
    std::uint32_t rootOf(std::uint32_t label);
    void gather();

    int m_width = 0;
    int m_height = 0;
    std::size_t m_words = 0;
    std::size_t m_runCount = 0;
    std::uint32_t m_labelCount = 0;
    std::uint32_t m_blobCount = 0;
    Growable<std::uint64_t> m_bits;
    Growable<std::size_t> m_rowStarts;
    Growable<Run> m_runs;              // with labels, in the end blobs
    Growable<std::uint32_t> m_parents; // by label, in the end the blob
    Growable<Blob> m_blobs;            // by label, in the end by blob
};

} // namespace ormalux
