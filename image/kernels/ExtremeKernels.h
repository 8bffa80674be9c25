#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels of the morphology by shapes: extremes of several rows, and differences.
namespace ormalux::kernels {

/// out[x] becomes the least (greatest) of rows[0][x] to rows[n - 1][x] for count bytes; n at least 1. out may
/// be one of the rows.
using RowExtreme = void (*)(const std::uint8_t* const* rows, std::size_t n, std::uint8_t* out,
                            std::size_t count);

/// The variants for this machine, looked up once for many rows.
RowExtreme leastOfRows();
RowExtreme greatestOfRows();

/// out[x] becomes from[x] - less[x], at least 0. out may be one of the two.
void subtractRow(const std::uint8_t* from, const std::uint8_t* less, std::uint8_t* out, std::size_t count);

} // namespace ormalux::kernels
