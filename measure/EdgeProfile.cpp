#include "measure/EdgeProfile.h"

#include "measure/kernels/ProfileKernels.h"

#include <algorithm>
#include <cmath>

namespace ormalux {

const std::size_t EdgeProfile::padding = kernels::smoothRoom;

/// One line of samples: its place at position 0 and how far it goes a pixel on.
struct EdgeProfile::Way
{
    double x;
    double y;
};

namespace {

/// The positions at which place + position * slope lies in [low, high]; none: low above high. inverse is 1 /
/// slope.
void restrict(double place, double inverse, double low, double high, double& first, double& last)
{
    if (std::isinf(inverse)) {
        if (!(place >= low && place <= high))
            last = first - 1;
        return;
    }
    const double a = (low - place) * inverse, b = (high - place) * inverse;
    first = std::max(first, std::min(a, b));
    last = std::min(last, std::max(a, b));
}

constexpr std::int64_t pixel = std::int64_t(1) << kernels::SplineWalk::shift;

std::int64_t fixedPoint(double value)
{
    return std::int64_t(std::floor(value * double(pixel) + 0.5));
}

/// One sample near the border, whose pixels go on outside.
float sampleAtBorder(const ConstGrayView& view, kernels::SplineWalk at)
{
    const std::int64_t left = (at.x >> kernels::SplineWalk::shift) - 1;
    const std::int64_t top = (at.y >> kernels::SplineWalk::shift) - 1;
    std::uint8_t patch[4 * 4];
    for (int y = 0; y < 4; ++y) {
        const std::uint8_t* row = view.row(int(std::clamp<std::int64_t>(top + y, 0, view.height - 1)));
        for (int x = 0; x < 4; ++x)
            patch[4 * y + x] = row[std::clamp<std::int64_t>(left + x, 0, view.width - 1)];
    }
    at.x -= left * pixel;
    at.y -= top * pixel;
    float sample;
    kernels::sampleSpline(patch, 4, at, 1, &sample);
    return sample;
}

} // namespace

EdgeProfile::Range EdgeProfile::inside(const Way& way, double left, double top, double right,
                                       double bottom) const
{
    Range range{m_first, m_first + double(m_count)};
    restrict(way.x, m_inverseX, left, right, range.low, range.high);
    restrict(way.y, m_inverseY, top, bottom, range.low, range.high);
    return range;
}

bool EdgeProfile::measure(const ConstGrayView& view, const ScanLine& scan, int width, double reach)
{
    m_count = 0;
    for (double c : {scan.x1, scan.y1, scan.x2, scan.y2})
        if (!(std::abs(c) <= farthest))
            return false;
    const double dx = scan.x2 - scan.x1, dy = scan.y2 - scan.y1;
    m_length = std::sqrt(dx * dx + dy * dy);
    if (view.empty() || width < 1 || !(m_length > 1e-9))
        return false;
    m_alongX = dx / m_length;
    m_alongY = dy / m_length;
    m_inverseX = 1 / m_alongX;
    m_inverseY = 1 / m_alongY;
    // What lies between these positions is near enough for some line of samples to be inside.
    double low = -reach, high = m_length + reach;
    const double beside = 0.5 + (width - 1) * 0.5;
    restrict(scan.x1, m_inverseX, -beside, view.width - 1 + beside, low, high);
    restrict(scan.y1, m_inverseY, -beside, view.height - 1 + beside, low, high);
    low = std::ceil(low);
    high = std::floor(high);
    if (!(high >= low + 1))
        return false;
    m_first = low;
    m_count = std::size_t(high - low);
    m_padded.assign(m_count + 2 * padding, 0.0f);
    m_samples.resize(m_count + 1);
    m_lines.assign(width > 1 ? m_samples.size() : 0, 0);
    for (int line = 0; line < width; ++line) {
        const double across = line - (width - 1) * 0.5;
        addSteps(view, {scan.x1 - across * m_alongY, scan.y1 + across * m_alongX});
    }
    if (width > 1)
        average();
    m_first += 0.5; // from samples to the steps between them
    return true;
}

void EdgeProfile::average()
{
    int lines = 0;
    for (std::size_t i = 0; i < m_count; ++i) {
        lines += m_lines[i];
        if (lines > 1)
            mutableSteps()[i] /= float(lines);
    }
}

kernels::SplineWalk EdgeProfile::walkFrom(const Way& way, int index) const
{
    return {fixedPoint(way.x + (m_first + index) * m_alongX),
            fixedPoint(way.y + (m_first + index) * m_alongY), fixedPoint(m_alongX), fixedPoint(m_alongY)};
}

void EdgeProfile::addSteps(const ConstGrayView& view, const Way& way)
{
    const Range range = inside(way, -0.5, -0.5, view.width - 0.5, view.height - 0.5);
    const double low = std::ceil(range.low - m_first), high = std::floor(range.high - m_first);
    if (!(high >= low + 1))
        return;
    const int first = int(low), end = int(high) + 1;
    // Rounded to fixed point, a place moves by less than a ten thousandth of a pixel.
    constexpr double slack = 1e-4;
    const Range whole = inside(way, 1 + slack, 1 + slack, view.width - 2 - slack, view.height - 2 - slack);
    int firstWhole = end, endWhole = end;
    if (view.width > 3 && view.height > 3 && whole.high >= whole.low) {
        firstWhole = std::clamp(int(std::ceil(whole.low - m_first)), first, end);
        endWhole = std::clamp(int(std::floor(whole.high - m_first)) + 1, firstWhole, end);
    }
    float* samples = m_samples.data();
    for (int i = first; i < firstWhole; ++i)
        samples[i] = sampleAtBorder(view, walkFrom(way, i));
    if (endWhole > firstWhole)
        kernels::sampleSpline(view.pixels, view.stride, walkFrom(way, firstWhole),
                              std::size_t(endWhole - firstWhole), samples + firstWhole);
    for (int i = endWhole; i < end; ++i)
        samples[i] = sampleAtBorder(view, walkFrom(way, i));
    float* steps = mutableSteps();
    for (int i = first; i + 1 < end; ++i)
        steps[i] += samples[i + 1] - samples[i];
    if (!m_lines.empty()) {
        ++m_lines[std::size_t(first)];
        --m_lines[std::size_t(end - 1)];
    }
}

} // namespace ormalux
