#include "measure/Tracing.h"

#include <algorithm>
#include <limits>

namespace ormalux {

namespace {

/// The largest integer whose square is at most n; n below 2^62.
std::int64_t root(std::int64_t n)
{
    std::int64_t r = std::int64_t(std::sqrt(double(n)));
    while (r * r > n)
        --r;
    while ((r + 1) * (r + 1) <= n)
        ++r;
    return r;
}

/// The steps whose offset x lies in the interval.
Steps stepsOfX(std::int64_t low, std::int64_t high)
{
    return {std::max<std::int64_t>(low, 0), high + 1};
}

/// The steps whose offset y lies in the interval: the offset is the largest y with y (y - 1) < rr - xx.
Steps stepsOfY(std::int64_t r, std::int64_t low, std::int64_t high)
{
    Steps steps{0, r + 1};
    if (high < 0 || low > r)
        return {};
    if (high < r) {
        const std::int64_t least = r * r - high * (high + 1);
        steps.first = least > 0 ? root(least - 1) + 1 : 0;
    }
    if (low > 1)
        steps.end = root(r * r - low * (low - 1) - 1) + 1;
    return steps;
}

Steps both(Steps a, Steps b)
{
    return {std::max(a.first, b.first), std::min(a.end, b.end)};
}

} // namespace

std::int64_t circleOffset(std::int64_t r, std::int64_t x)
{
    const std::int64_t limit = r * r - x * x;
    if (limit <= 0)
        return 0;
    std::int64_t y = root(limit);
    while (y * (y + 1) < limit)
        ++y;
    return y;
}

std::size_t circleStepsInside(const Circle& circle, int width, int height, std::array<Steps, 8>& ranges)
{
    constexpr std::int64_t walkedAnyway = 4096; // steps that cost less than their bounds
    const auto [cx, cy, r] = circle;
    const bool whole = cx - r >= 0 && cy - r >= 0 && cx + r < width && cy + r < height;
    if (r < 0 || whole || r <= walkedAnyway) {
        ranges[0] = {0, r + 1};
        return 1;
    }
    std::size_t found = 0;
    const auto keep = [&](Steps steps) {
        if (steps.first < steps.end)
            ranges[found++] = steps;
    };
    // The offsets that reach into the picture: to the right (down) of the centre, and to the left (up) of it.
    const std::int64_t right[] = {-cx, width - 1 - cx}, left[] = {cx - width + 1, cx};
    const std::int64_t down[] = {-cy, height - 1 - cy}, up[] = {cy - height + 1, cy};
    for (const auto* horizontal : {right, left})
        for (const auto* vertical : {down, up}) {
            keep(both(stepsOfX(horizontal[0], horizontal[1]), stepsOfY(r, vertical[0], vertical[1])));
            keep(both(stepsOfX(vertical[0], vertical[1]), stepsOfY(r, horizontal[0], horizontal[1])));
        }
    std::sort(ranges.begin(), ranges.begin() + found,
              [](const Steps& a, const Steps& b) { return a.first < b.first; });
    std::size_t joined = 0;
    for (std::size_t i = 0; i < found; ++i)
        if (joined > 0 && ranges[i].first <= ranges[joined - 1].end)
            ranges[joined - 1].end = std::max(ranges[joined - 1].end, ranges[i].end);
        else
            ranges[joined++] = ranges[i];
    return joined;
}

} // namespace ormalux
