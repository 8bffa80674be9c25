#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels that search scan lines for edges. A rising run is a sequence of pixels as long as possible in
/// which every next one is greater; with n pixels it is an edge when n >= 5 and last - first > 2 x n. Its
/// mean is the integer quotient of the sum of its pixels by n.
namespace ormalux::kernels {

/// The edges found: the sum of their means, and their number.
struct EdgeSum
{
    std::int64_t means = 0;
    std::int64_t number = 0;

    EdgeSum& operator+=(const EdgeSum& other)
    {
        means += other.means;
        number += other.number;
        return *this;
    }
};

/// The edges of a row, from left to right.
EdgeSum rowEdges(const std::uint8_t* row, std::size_t width);

/// The edges of the columns 0, spacing, 2 x spacing and so on below width, from top to bottom; spacing at
/// least 1.
EdgeSum columnEdges(const std::uint8_t* top, std::ptrdiff_t stride, std::size_t height, std::size_t width,
                    std::size_t spacing);

} // namespace ormalux::kernels
