#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels that count how many pixels of a binary template and a box agree.
namespace ormalux::kernels {

/// The white and the black pixels of a box or template, one bit each, rows beginning stride words apart. A
/// pixel that is neither has no bit in either plane.
struct BitPlanes
{
    const std::uint64_t* white;
    const std::uint64_t* black;
    std::size_t stride;
    std::size_t rows;
};

/// What the planes of a plane's rows are padded to with words of 0.
inline constexpr std::size_t planeStep = 8;

struct Hits
{
    std::int32_t white;
    std::int32_t black;
};

/// Lays every template on the box, top left corner on top left corner, and counts the pixels that are white
/// in both and black in both. All planes are padded to whole steps; the box has at least the rows and the
/// stride of every template, without bits outside the pixels that it really has.
void countHits(const BitPlanes& box, const BitPlanes* templates, std::size_t count, Hits* hits);

} // namespace ormalux::kernels
