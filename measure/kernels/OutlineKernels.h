#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels of the blob features: rows of bits, a row's first pixel in bit 0 of its first word.
namespace ormalux::kernels {

/// Pixels of one row and one blob, begin up to, excluding, end.
struct BlobRun
{
    std::int32_t begin;
    std::int32_t end;
    std::uint32_t blob;
};

/// The object pixels of a row that have one of their four neighbours outside the objects.
void contourRow(const std::uint64_t* above, const std::uint64_t* row, const std::uint64_t* below,
                std::uint64_t* contour, std::size_t words);

/// Contour pixels of a row and of the next that touch by corners, as bits of the upper row: falling where the
/// lower one lies to the right, rising where it lies to the left.
struct DiagonalRow
{
    std::uint64_t* falling;
    std::uint64_t* rising;
};

/// Pairs that touch by nothing but their corner count only if their runs are of one blob; with sharedCorners
/// they always are.
void diagonalRow(const std::uint64_t* objects, const std::uint64_t* objectsBelow,
                 const std::uint64_t* contour, const std::uint64_t* contourBelow, const BlobRun* runs,
                 const BlobRun* runsBelow, bool sharedCorners, const DiagonalRow& out, std::size_t words);

/// The contour pixels of a row as bits by what they count in the outline: 1, the root of 2, half the sum.
struct OutlineRow
{
    std::uint64_t* straight;
    std::uint64_t* diagonal;
    std::uint64_t* mixed;
};

void outlineRow(const std::uint64_t* contourAbove, const std::uint64_t* contour,
                const std::uint64_t* contourBelow, const DiagonalRow& above, const DiagonalRow& own,
                const OutlineRow& out, std::size_t words);

/// What a run adds to its blob.
struct RunMeasure
{
    std::uint64_t gray; ///< sum of the levels
    std::uint32_t straight;
    std::uint32_t diagonal;
    std::uint32_t mixed;
};

void measureRuns(const std::uint8_t* pixels, const OutlineRow& outline, const BlobRun* runs,
                 std::size_t count, RunMeasure* measures);

} // namespace ormalux::kernels
