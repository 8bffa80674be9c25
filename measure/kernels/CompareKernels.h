#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels of the comparison with a golden picture.
namespace ormalux::kernels {

/// Coordinates in 1 / 256 pixels.
inline constexpr int subPixelBits = 8;

/// out[x] becomes the level between four pixels, upper[x], upper[x + 1] and those below, that lies fx and fy
/// 256ths right of and below the first: rounded to nearest. With fx = 0 nothing is read at x + 1.
void blendRow(const std::uint8_t* upper, const std::uint8_t* lower, unsigned fx, unsigned fy,
              std::uint8_t* out, std::size_t count);

/// The least of least[0][x] to least[n - 1][x] and the greatest of greatest, for count columns. The two may
/// be the same rows.
void columnExtremes(const std::uint8_t* const* least, const std::uint8_t* const* greatest, std::size_t n,
                    std::uint8_t* low, std::uint8_t* high, std::size_t count);

/// Marks with 255 the pixels that lie more than threshold above the greatest of greatest[x - grow] to
/// greatest[x + grow], or below the least of least, the others with 0.
void markOutliers(const std::uint8_t* pixels, const std::uint8_t* least, const std::uint8_t* greatest,
                  std::size_t grow, std::uint8_t threshold, std::uint8_t* marks, std::size_t count);

} // namespace ormalux::kernels
