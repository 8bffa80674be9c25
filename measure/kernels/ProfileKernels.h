#pragma once

#include <cstddef>
#include <cstdint>

/// Kernels of gray profiles between the pixels. They give the same bits on every instruction set.
namespace ormalux::kernels {

/// Evenly spaced places on a straight line, in pixels x 2^32; no step is longer than a pixel.
struct SplineWalk
{
    static constexpr int shift = 32;

    std::int64_t x;
    std::int64_t y;
    std::int64_t stepX;
    std::int64_t stepY;
};

/// The picture smoothed by the cubic B-spline, at count places of the walk, met to within 4e-6 pixels. All
/// 4 x 4 pixels about every place, from one to the left of and above its whole coordinates on, must exist.
void sampleSpline(const std::uint8_t* pixels, std::ptrdiff_t stride, const SplineWalk& walk,
                  std::size_t count, float* samples);

/// What smoothSteps may touch behind the last of its steps, before and behind for the widest kernel.
inline constexpr std::size_t smoothRoom = 80;

/// smooth[i] = the sum of steps[i +- k] * weights[k] for k from 0 to radius, at most smoothRoom - 16. Steps
/// must be readable, and smooth writable, for smoothRoom floats to either side.
void smoothSteps(const float* steps, std::size_t count, const float* weights, int radius, float* smooth);

} // namespace ormalux::kernels
