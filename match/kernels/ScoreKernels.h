#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels that count how many pixels of a binary template and a box agree.
namespace ormalux::kernels {

/// The white and the black pixels of a box or template, one bit each, rows beginning stride bytes apart, the
/// pixels from the lowest bit of the lowest byte on. A pixel that is neither has no bit in either plane.
struct BitPlanes
{
    const std::uint64_t* white;
    const std::uint64_t* black;
    std::size_t stride;
    std::size_t rows;
    std::size_t words; ///< of a plane, padded with 0 to whole steps
};

/// The words of a plane are a multiple of this.
inline constexpr std::size_t planeStep = 8;

struct Hits
{
    std::int32_t white;
    std::int32_t black;
};

/// Lays every template on the box, top left corner on top left corner, and counts the pixels that are white
/// in both and black in both. The box has at least the rows, the stride and the words of every template,
/// without bits outside the pixels that it really has; strides that differ are whole words.
void countHits(const BitPlanes& box, const BitPlanes* templates, std::size_t count, Hits* hits);

} // namespace ormalux::kernels
