#pragma once

#include "array/Records.h"
#include "measure/Geometry.h"
#include "measure/LineGauge.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

/// The gauges as plain code: profiles in arrays, sorted edges. What the library is compared and timed with.
namespace plain {

struct Picture
{
    const std::uint8_t* pixels;
    int width;
    int height;
};

struct EdgeRuns
{
    double sum = 0;
    double count = 0;

    void scan(const std::uint8_t* first, std::ptrdiff_t stride, int length)
    {
        for (int i = 0; i < length;) {
            int end = i + 1;
            long total = first[i * stride];
            for (; end < length && first[end * stride] > first[(end - 1) * stride]; ++end)
                total += first[end * stride];
            const int n = end - i;
            if (n >= 5 && first[(end - 1) * stride] - first[i * stride] > 2 * n) {
                sum += double(total / n);
                count += 1;
            }
            i = end;
        }
    }
};

/// Rows and columns of the rectangle, copied out; 0 when it leaves the picture.
inline int edgeThreshold(const Picture& picture, int x1, int y1, int x2, int y2)
{
    if (x1 > x2)
        std::swap(x1, x2);
    if (y1 > y2)
        std::swap(y1, y2);
    if (!picture.pixels || x1 < 0 || y1 < 0 || x2 >= picture.width || y2 >= picture.height)
        return 0;
    const int w = x2 - x1 + 1, h = y2 - y1 + 1;
    std::vector<std::uint8_t> part;
    for (int y = y1; y <= y2; ++y)
        for (int x = x1; x <= x2; ++x)
            part.push_back(picture.pixels[std::size_t(y) * picture.width + x]);
    EdgeRuns runs;
    for (int y = 0; y < h; ++y)
        runs.scan(part.data() + y * w, 1, w);
    for (int x = 0; x < w; ++x)
        runs.scan(part.data() + x, w, h);
    return runs.count == 0 ? 0 : int(runs.sum / double(float(runs.count)));
}

struct Line
{
    int x1, y1, x2, y2;
};

inline Line gaugeLine(const Picture& picture, Line line)
{
    line.x1 = std::clamp(line.x1, 0, picture.width - 1);
    line.x2 = std::clamp(line.x2, 0, picture.width - 1);
    line.y1 = std::clamp(line.y1, 0, picture.height - 1);
    line.y2 = std::clamp(line.y2, 0, picture.height - 1);
    const bool flat = std::abs(line.x2 - line.x1) > std::abs(line.y2 - line.y1);
    if (flat ? line.x1 > line.x2 : line.y1 > line.y2) {
        std::swap(line.x1, line.x2);
        std::swap(line.y1, line.y2);
    }
    if (line.x1 == line.x2)
        line.x2 = line.x1 + 1;
    if (line.y1 == line.y2)
        line.y2 = line.y1 + 1;
    return line;
}

inline std::vector<_stPixel> profile(const Picture& picture, const Line& line)
{
    std::vector<_stPixel> samples;
    const auto sample = [&](int x, int y) {
        if (x >= 0 && x < picture.width && y >= 0 && y < picture.height)
            samples.push_back({x, y, picture.pixels[std::size_t(y) * picture.width + x], 0.0});
    };
    int x = line.x1, y = line.y1;
    const int dx = std::abs(line.x2 - line.x1), dy = std::abs(line.y2 - line.y1);
    if (dx > dy) {
        const int sy = line.y2 > line.y1 ? 1 : -1;
        int e = 2 * dy - dx;
        sample(x, y);
        while (x != line.x2) {
            x += 1;
            if (e > 0)
                y += sy;
            e += e < 1 ? 2 * dy : 2 * (dy - dx);
            sample(x, y);
        }
        return samples;
    }
    const int sx = line.x2 > line.x1 ? 1 : -1;
    int e = 2 * dx - dy;
    sample(x, y);
    while (y != line.y2) {
        y += 1;
        if (e > 0)
            x += sx;
        e += e < 1 ? 2 * dx : 2 * (dx - dy);
        sample(x, y);
    }
    return samples;
}

inline void edges(const Picture& picture, Line ends, int polarity, int threshold,
                  std::vector<_stPixel>& found)
{
    if (threshold == 0)
        return;
    const std::vector<_stPixel> samples = profile(picture, gaugeLine(picture, ends));
    if (samples.empty())
        return;
    bool bright = samples[0].gray_level > threshold;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const bool now = samples[i].gray_level > threshold;
        if (now != bright && ((polarity == 0 && now) || (polarity == 1 && !now))) {
            const double rise = double(samples[i].gray_level) - samples[i - 1].gray_level;
            found.push_back(
                {samples[i].x, samples[i].y, samples[i].gray_level, polarity == 0 ? rise : -rise});
        }
        bright = now;
    }
}

inline bool bestEdge(const Picture& picture, Line ends, int polarity, int threshold, POINT& best)
{
    std::vector<_stPixel> found;
    edges(picture, ends, polarity, threshold, found);
    if (found.empty())
        return false;
    std::stable_sort(found.begin(), found.end(),
                     [](const _stPixel& a, const _stPixel& b) { return a.parameter < b.parameter; });
    best = {found.back().x, found.back().y};
    return true;
}

/// bands workers, one after the other.
inline bool lineGauge(const Picture& picture, RECT area, int polarity, int direction, int step, int threshold,
                      int bands, ormalux::LineFit& fit)
{
    const bool columns = direction == 1;
    const int first = columns ? area.left : area.top, end = columns ? area.right : area.bottom;
    const int center = first + (end - first) / 2;
    const auto gauge = [&](int line, POINT& at) {
        const Line ends =
            columns ? Line{line, area.top, line, area.bottom} : Line{area.left, line, area.right, line};
        return bestEdge(picture, ends, polarity, threshold, at);
    };
    POINT edge;
    if (!gauge(center, edge))
        return false;
    std::vector<double> directions;
    const int share = (end - first) / bands;
    for (int band = 0; band < bands; ++band) {
        const std::int64_t bandEnd = band == bands - 1 ? end : first + (band + 1) * share;
        for (std::int64_t line = first + band * share; line < bandEnd;) {
            POINT a, b;
            if (!gauge(int(line), a) || !gauge(2 * center - int(line), b)) {
                line += 1;
                continue;
            }
            directions.push_back(ormalux::directionDegrees(b.x - a.x, b.y - a.y));
            line += columns ? std::max(step, 1) : 1;
        }
    }
    double sum = 0;
    for (double degrees : directions)
        sum += degrees;
    const double mean = sum / double(directions.size());
    fit.center = edge;
    fit.angle = mean - 90;
    const double theta = (columns ? -(mean - 90) : -mean) * 0.017453292519943295;
    const auto turned = [&](double u, double v, int cx, int cy) {
        return POINT{ormalux::truncated(u * std::cos(theta) - v * std::sin(theta) + cx),
                     ormalux::truncated(u * std::sin(theta) + v * std::cos(theta) + cy)};
    };
    const int cx = columns ? center : edge.x, cy = columns ? edge.y : center;
    fit.first = columns ? turned(area.left - cx, 0, cx, cy) : turned(0, area.top - cy, cx, cy);
    fit.second = columns ? turned(area.right - cx, 0, cx, cy) : turned(0, area.bottom - cy, cx, cy);
    return true;
}

} // namespace plain
