#pragma once

#include <cstddef>
#include <cstdint>

/// The in-place 3 x 3 scans of image/Morphology.h over whole pictures, at least one pixel large.
namespace ormalux::kernels {

void erode(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride);
void dilate(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride);

/// The same for pixels of 2 to 4 bytes, each byte for itself.
void erodeInterleaved(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride,
                      std::size_t bytesPerPixel);
void dilateInterleaved(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride,
                       std::size_t bytesPerPixel);

} // namespace ormalux::kernels
