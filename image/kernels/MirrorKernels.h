#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels that put pixels in another order, in place. Runs do not overlap.
namespace ormalux::kernels {

/// Turns the order of count bytes round.
void reverse(std::uint8_t* pixels, std::size_t count);
/// Turns the order of count pixels of three bytes round.
void reverseTriples(std::uint8_t* pixels, std::size_t count);
/// Either run becomes the other, turned round.
void swapReversed(std::uint8_t* a, std::uint8_t* b, std::size_t count);
void swapReversedTriples(std::uint8_t* a, std::uint8_t* b, std::size_t count);
/// Exchanges the runs.
void swapBytes(std::uint8_t* a, std::uint8_t* b, std::size_t count);

} // namespace ormalux::kernels
