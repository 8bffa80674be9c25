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

/// A row of packed object pixels with its runs, numbered from 0.
struct RunRow
{
    std::uint64_t* objects; ///< one word more than the row, which is 0
    std::uint64_t* starts;  ///< the first pixel of every run; undefined in words without objects
    std::int32_t* firstRun; ///< the first run that starts in the word or behind it; undefined there
    std::int32_t* begins;   ///< by run: first column
    std::int32_t* ends;     ///< by run: behind the last column
    std::uint32_t* labels;  ///< by run: a label of its blob
};

/// What a run has that touches no run above it.
inline constexpr std::uint32_t noLabel = UINT32_MAX;

/// The label, or the other one for noLabel; compilers turn the plain choice into a branch that nothing
/// predicts.
inline std::uint32_t labelOr(std::uint32_t label, std::uint32_t other)
{
    return label ^ ((label ^ other) & (0 - (label >> 31)));
}

/// Room that the arrays by run need beyond the most runs that a row can have.
inline constexpr std::size_t runSlack = 4;

/// Finds the runs of a row. A run that touches runs in the row above gets the smallest of their labels, and
/// the labels of all of them become one set: parents leads from every label to a smaller one of its set, or
/// to itself at the smallest. Other runs get noLabel. Returns the number of runs.
std::int32_t joinRow(const RunRow& above, const RunRow& row, std::size_t words, std::uint32_t* parents);

} // namespace ormalux::kernels
