#include "measure/PointGauge.h"

#include "array/PixelArray.h"
#include "array/WholeAppend.h"
#include "image/AutoThreshold.h"
#include "measure/LineWalk.h"
#include "measure/kernels/GaugeKernels.h"

#include <algorithm>
#include <cstdlib>

namespace ormalux {

namespace {

/// Samples that are read and searched at once, on the stack.
constexpr int profilePiece = 4096;

/// Copies the gray levels of a walk's steps one piece after the other.
class ProfileReader
{
public:
    ProfileReader(const ConstGrayView& view, const LineWalk& walk, Steps steps)
        : m_walk(walk), m_view(view), m_step(steps.first), m_end(steps.end)
    {}

    /// Fills in up to room samples; returns how many, 0 at the end.
    std::size_t read(std::uint8_t* samples, std::size_t room)
    {
        const std::int64_t end = std::min(m_end, m_step + std::int64_t(room));
        if (end <= m_step)
            return 0;
        const std::size_t count = std::size_t(end - m_step);
        if (m_walk.hasSlope())
            readAlongSlope(samples, end);
        else
            m_walk.visit({m_step, end},
                         [&](std::int64_t x, std::int64_t y) { *samples++ = m_view.row(int(y))[x]; });
        m_step = end;
        return count;
    }

private:
    /// No sample waits for the one before it, as the walk's own decisions would make it.
    void readAlongSlope(std::uint8_t* samples, std::int64_t end)
    {
        static_assert(LineWalk::Slope::shift == kernels::LineSlope::shift);
        const LineWalk::Slope slope = m_walk.slope();
        const std::ptrdiff_t along = m_walk.steep() ? m_view.stride : 1;
        const std::ptrdiff_t across = m_walk.steep() ? 1 : m_view.stride;
        kernels::sampleLine(m_view.pixels + m_walk.across() * across + (m_walk.along() + m_step) * along,
                            {.sideways = slope.start + std::uint64_t(m_step) * slope.increment,
                             .increment = slope.increment,
                             .along = along,
                             .across = m_walk.sign() * across},
                            std::size_t(end - m_step), samples);
    }

    const LineWalk& m_walk;
    const ConstGrayView& m_view;
    std::int64_t m_step;
    std::int64_t m_end;
};

Steps stepsInside(const LineWalk& walk, const ConstGrayView& view, const GaugeLine& line)
{
    if (line.to.x < view.width && line.to.y < view.height)
        return {0, walk.count()};
    return walk.inside(0, 0, view.width - 1, view.height - 1);
}

/// The pieces of a flat line with long runs: the runs where they are, and the two samples about each turn.
template <class Body>
void forEachRun(const ConstGrayView& view, const LineWalk& walk, Steps steps, Body body)
{
    std::uint8_t turn[2];
    std::int64_t sideways = walk.sidewaysAt(steps.first);
    for (std::int64_t step = steps.first; step < steps.end; ++sideways) {
        const bool last = sideways >= walk.rise();
        const std::int64_t end = last ? steps.end : std::min(steps.end, walk.stepOfSideways(sideways + 1));
        const std::uint8_t* row = view.row(int(walk.across() + walk.sign() * sideways)) + walk.along();
        turn[1] = row[step];
        if (step > steps.first)
            body(turn, 2, step - 1);
        turn[0] = row[end - 1];
        for (; step + 1 < end; step += profilePiece)
            body(row + step, std::size_t(std::min<std::int64_t>(profilePiece + 1, end - step)), step);
        step = end;
    }
}

/// Calls body(samples, count, step of samples[0]) for pieces of the profile that overlap by one sample.
template <class Body>
void forEachPiece(const ConstGrayView& view, const LineWalk& walk, const GaugeLine& line, Body body)
{
    const Steps steps = stepsInside(walk, view, line);
    if (!walk.steep() && walk.runsAreLong())
        return forEachRun(view, walk, steps, body);
    std::uint8_t samples[1 + profilePiece];
    ProfileReader reader(view, walk, steps);
    std::size_t count = reader.read(samples, profilePiece);
    std::int64_t first = steps.first;
    while (count > 0) {
        body(samples, count, first);
        first += std::int64_t(count) - 1;
        samples[0] = samples[count - 1];
        const std::size_t more = reader.read(samples + 1, profilePiece);
        count = more > 0 ? more + 1 : 0;
    }
}

} // namespace

GaugeLine gaugeLine(const ConstGrayView& view, std::int64_t x1, std::int64_t y1, std::int64_t x2,
                    std::int64_t y2)
{
    const auto inWidth = [&](std::int64_t x) { return LONG(std::clamp<std::int64_t>(x, 0, view.width - 1)); };
    const auto inHeight = [&](std::int64_t y) {
        return LONG(std::clamp<std::int64_t>(y, 0, view.height - 1));
    };
    GaugeLine line{{inWidth(x1), inHeight(y1)}, {inWidth(x2), inHeight(y2)}};
    const bool flat = std::abs(line.to.x - line.from.x) > std::abs(line.to.y - line.from.y);
    if (flat ? line.from.x > line.to.x : line.from.y > line.to.y)
        std::swap(line.from, line.to);
    // Deliberate: no line is exactly vertical or horizontal; the scan lines of the line gauge rely on it.
    line.to.x += line.to.x == line.from.x;
    line.to.y += line.to.y == line.from.y;
    return line;
}

std::optional<kernels::StepRule> edgeRule(int polarity, int threshold)
{
    if (threshold < 1 || threshold > 254)
        return std::nullopt;
    if (polarity == 0)
        return kernels::StepRule{0, std::uint8_t(threshold)};
    if (polarity == 1)
        return kernels::StepRule{255, std::uint8_t(254 - threshold)};
    return std::nullopt;
}

int edgeThreshold(const ConstGrayView& view, POINT corner1, POINT corner2)
{
    const auto [left, right] = std::minmax(corner1.x, corner2.x);
    const auto [top, bottom] = std::minmax(corner1.y, corner2.y);
    if (view.empty() || left < 0 || top < 0 || right >= view.width || bottom >= view.height)
        return 0;
    return int(autoThreshold(view.part(left, top, right - left + 1, bottom - top + 1), 'A', 1));
}

void appendEdges(const ConstGrayView& view, const GaugeLine& line, int polarity, int threshold,
                 CPixelArray& ar)
{
    const auto rule = edgeRule(polarity, threshold);
    if (!rule)
        return;
    const LineWalk walk(line.from, line.to);
    WholeAppend whole(ar);
    forEachPiece(view, walk, line, [&](const std::uint8_t* samples, std::size_t count, std::int64_t first) {
        std::uint64_t marks[profilePiece / 64 + 1];
        kernels::markSteps(samples, count, *rule, marks);
        for (std::size_t word = 0; word * 64 + 1 < count; ++word)
            for (std::uint64_t bits = marks[word]; bits; bits &= bits - 1) {
                const std::size_t i = word * 64 + std::size_t(__builtin_ctzll(bits)) + 1;
                const POINT at = walk.at(first + std::int64_t(i));
                whole.add(at.x, at.y, samples[i], double(std::abs(samples[i] - samples[i - 1])));
            }
    });
}

bool strongestEdge(const ConstGrayView& view, const GaugeLine& line, int polarity, int threshold,
                   EdgePoint& edge)
{
    const auto wanted = edgeRule(polarity, threshold);
    if (!wanted)
        return false;
    const kernels::StepRule rule = *wanted;
    const LineWalk walk(line.from, line.to);
    std::int64_t best = -1;
    edge = {};
    forEachPiece(view, walk, line, [&](const std::uint8_t* samples, std::size_t count, std::int64_t first) {
        const kernels::ProfileStep step = kernels::strongestStep(samples, count, rule);
        if (step.contrast == 0 || step.contrast < edge.contrast)
            return;
        best = first + std::int64_t(step.index);
        edge.level = samples[step.index];
        edge.contrast = step.contrast;
    });
    if (best < 0)
        return false;
    edge.at = walk.at(best);
    return true;
}

} // namespace ormalux
