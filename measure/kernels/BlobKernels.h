#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels of the blob search: object pixels as bits, runs of bits, runs that touch.
namespace ormalux::kernels {

/// Gray rows of width pixels, stride bytes apart.
struct GrayRows
{
    const std::uint8_t* pixels;
    std::ptrdiff_t stride;
    std::size_t width;
    std::size_t rows;
};

/// One bit a pixel, a row's first in bit 0 of its first word: set where low <= p <= high. Rows begin
/// wordStride words apart, of which (width + 63) / 64 are written; bits behind the last pixel are 0.
void packLevels(const GrayRows& gray, std::uint8_t low, std::uint8_t high, std::uint64_t* words,
                std::size_t wordStride);

/// A row of packed object pixels with its runs. objects has one word more than the row, which is 0.
struct RunRow
{
    std::uint64_t* objects;
    std::uint64_t* starts; ///< the first pixel of every run; undefined where objects has no bit
    std::int32_t*
        firstRun; ///< the number of the first run that starts in the word or behind it; undefined there
};

/// Where runs are written, by their number in scan order.
struct RunTable
{
    std::int32_t* begins;  ///< first column
    std::int32_t* ends;    ///< behind the last column
    std::int32_t* parents; ///< a run of the same blob with a smaller number, or the run itself
};

/// Numbers the runs of a row from run on, fills row.starts and row.firstRun, and unites every run with those
/// that it touches in the row above. Every set is rooted at its smallest number. The table needs room for all
/// runs of the row and 64 entries more. Returns the number behind the last run.
std::int32_t joinRow(const RunRow& above, const RunRow& row, std::size_t words, std::int32_t run,
                     const RunTable& table);

} // namespace ormalux::kernels
