#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels that lay templates on pixels.
namespace ormalux::kernels {

/// Which pixels of a template are ink: bytes of 255, the others 0, in rows of whole steps.
struct InkMask
{
    const std::uint8_t* mask;
    std::size_t stride; ///< a multiple of inkStep
    std::size_t rows;
};

inline constexpr std::size_t inkStep = 16;

/// The most ink that a template covers when it is laid at ink and up to shift pixels beside it each way: the
/// largest sum of the bytes under its mask. Around ink there are shift rows and columns more than the mask's.
std::uint64_t mostInkUnder(const std::uint8_t* ink, std::ptrdiff_t stride, const InkMask& mask, int shift);

} // namespace ormalux::kernels
