#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels of the local threshold: means of windows, and pixels beside them. All in whole numbers or in
/// single precision without fused steps, so that every instruction set gives the same.
namespace ormalux::kernels {

/// Sums of columns slide down by a row: with[x] becomes sums[x] + entering[x], then sums[x] becomes with[x] -
/// leaving[x].
void slideColumns(std::uint32_t* sums, const std::uint8_t* entering, const std::uint8_t* leaving,
                  std::uint32_t* with, std::size_t count);

/// out[x] becomes weights[0] x rows[0][x] plus, for i from 1 to reach, weights[i] x (rows[-i][x] +
/// rows[i][x]).
void weighRows(const std::uint8_t* const* rows, const float* weights, std::size_t reach, float* out,
               std::size_t count);
/// The same along a line, with the neighbours at x - i and x + i.
void weighLine(const float* line, const float* weights, std::size_t reach, float* out, std::size_t count);
/// Every entry becomes the sum of the entries up to itself, modulo 2^32.
void runningSums(std::uint32_t* line, std::size_t count);

/// A pixel becomes 255 where it exceeds the mean, rounded to nearest with halves to even, less offset, else
/// 0.
void markAboveMeans(std::uint8_t* pixels, const float* means, std::int32_t offset, std::size_t count);
/// The same with the means of windows: the running sum at x + window less that at x, times scale.
void markAboveWindows(std::uint8_t* pixels, const std::uint32_t* runningSums, std::size_t window, float scale,
                      std::int32_t offset, std::size_t count);

} // namespace ormalux::kernels
