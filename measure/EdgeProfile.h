#pragma once

#include "image/GrayView.h"

#include <span>
#include <vector>

namespace ormalux {

namespace kernels {
struct SplineWalk;
}

/// A straight way through a picture, in real pixel coordinates.
struct ScanLine
{
    double x1;
    double y1;
    double x2;
    double y2;
};

/// How the gray level changes along a scan: the steps between samples 1 pixel apart, averaged over parallel
/// lines of samples. One object measures any number of scans; memory is taken for the longest only.
///
/// Samples are taken of the picture smoothed by the cubic B-spline, whose variance is 1/3 of a square pixel
/// both along and across the scan: with it, what single pixels show of an edge depends little on where
/// between them the edge lies.
class EdgeProfile
{
public:
    static constexpr double splineVariance = 1.0 / 3;
    static constexpr double farthest = 1e9; ///< larger coordinates are refused

    /// Measures from reach pixels before the first end to as many behind the last one, as far as there is
    /// picture. Where a sample lies outside, its line makes no step there. False, without steps, when an end
    /// is not a number or too far, both are the same, or no two samples lie inside. Throws std::bad_alloc.
    bool measure(const ConstGrayView& view, const ScanLine& scan, int width, double reach);

    /// steps()[i] lies at position first() + i from the scan's first end; for padding floats to either side
    /// zeros can be read.
    std::span<const float> steps() const { return {m_padded.data() + padding, m_count}; }
    static const std::size_t padding;
    double first() const { return m_first; }
    double length() const { return m_length; }
    double alongX() const { return m_alongX; }
    double alongY() const { return m_alongY; }

private:
    struct Way; // one line of samples
    struct Range
    {
        double low;
        double high;
    };
    Range inside(const Way& way, double left, double top, double right, double bottom) const;
    void addSteps(const ConstGrayView& view, const Way& way);
    void average();
    float* mutableSteps() { return m_padded.data() + padding; }
    kernels::SplineWalk walkFrom(const Way& way, int index) const;

    std::vector<float> m_padded;
    std::size_t m_count = 0;
    std::vector<float> m_samples;
    std::vector<int> m_lines; ///< how many lines begin to make steps here, less those that cease
    double m_first = 0;
    double m_length = 0;
    double m_alongX = 1;
    double m_alongY = 0;
    double m_inverseX = 1;
    double m_inverseY = 0;
};

} // namespace ormalux
