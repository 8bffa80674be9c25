#pragma once

#include "measure/LineWalk.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

/// The pixels of lines, circles, ellipses and arcs, in the order in which segments and samples list them.
///
/// Every visitor is called with the coordinates of one pixel after the other, as 64-bit integers: a shape may
/// leave the 32-bit plane.
namespace ormalux {

/// A larger circle is not traced as a whole: segments of it stay empty.
inline constexpr std::int64_t maxTracedRadius = std::int64_t(1) << 24;
/// Beyond these an ellipse or an arc has no pixels: an ellipse's decision values leave 64 bits.
inline constexpr std::int64_t maxEllipseAxis = std::int64_t(1) << 19;
inline constexpr std::int64_t maxArcDegrees = std::int64_t(1) << 24;

struct Circle
{
    std::int64_t cx;
    std::int64_t cy;
    std::int64_t r;
};

/// The radius offset of the midpoint circle at the offset x of its first octant.
std::int64_t circleOffset(std::int64_t r, std::int64_t x);

/// The steps of a circle's walk that have a pixel in the picture, in order and apart; returns how many
/// ranges.
std::size_t circleStepsInside(const Circle& circle, int width, int height, std::array<Steps, 8>& ranges);

/// Midpoint circle from the offset (0, r) on. A step has eight pixels about the centre, those on axes and
/// diagonals repeated: (x, y), (-x, y), (x, -y), (-x, -y), then the same with x and y exchanged. A negative
/// radius has none.
template <class Visit>
void visitCircle(const Circle& circle, Steps steps, Visit&& visit)
{
    std::int64_t x = steps.first;
    std::int64_t y = x > 0 ? circleOffset(circle.r, x) : circle.r;
    std::int64_t d = (x + 1) * (x + 1) + y * (y - 1) - circle.r * circle.r;
    for (; x < steps.end && y >= x; ++x) {
        for (const auto& [u, v] : {std::array{x, y}, std::array{y, x}}) {
            visit(circle.cx + u, circle.cy + v);
            visit(circle.cx - u, circle.cy + v);
            visit(circle.cx + u, circle.cy - v);
            visit(circle.cx - u, circle.cy - v);
        }
        if (d >= 0) {
            d += 2 * (x - y) + 5;
            --y;
        } else {
            d += 2 * x + 3;
        }
    }
}

/// Midpoint ellipse with the semi-axes a and b: steps in x from the top and the bottom, then steps in y from
/// the left and the right. A step has four pixels: (x, y), (-x, y), (x, -y), (-x, -y). An axis of 0 ends
/// after the first step. Deliberate: the second part starts from 5aa - 4bba, not from bb + 4aa - 4bba, so the
/// sides of an ellipse that is no circle differ by a pixel from the other rule here and there.
template <class Visit>
void visitEllipse(std::int64_t cx, std::int64_t cy, std::int64_t a, std::int64_t b, Visit&& visit)
{
    if (std::abs(a) > maxEllipseAxis || std::abs(b) > maxEllipseAxis)
        return;
    const auto four = [&](std::int64_t x, std::int64_t y) {
        visit(cx + x, cy + y);
        visit(cx - x, cy + y);
        visit(cx + x, cy - y);
        visit(cx - x, cy - y);
    };
    const std::int64_t aa = a * a, bb = b * b;
    std::int64_t x = 0, y = b, d = (1 - 4 * b) * aa + 4 * bb;
    for (; bb * x <= aa * y; ++x) {
        four(x, y);
        if (aa == 0 && bb == 0)
            return;
        if (d >= 0) {
            d += 8 * aa * (1 - y);
            --y;
        }
        d += 4 * bb * (2 * x + 3);
    }
    x = a, y = 0, d = 5 * aa - 4 * bb * a;
    for (; aa * y < bb * x; ++y) {
        four(x, y);
        if (d >= 0) {
            d += 8 * bb * (1 - x);
            --x;
        }
        d += 4 * aa * (2 * y + 3);
    }
}

/// The points of whole degrees, clockwise as seen: for every degree behind start the point before it and its
/// own, so that inner points are repeated.
template <class Visit>
void visitArc(const Circle& circle, std::int64_t start, std::int64_t end, Visit&& visit)
{
    if (end - start > maxArcDegrees)
        return;
    struct Place
    {
        std::int64_t x, y;
    };
    const auto place = [&](std::int64_t degree) {
        const double angle = double(degree) * 3.141592653589793 / 180;
        // Deliberate: half a pixel is added before truncation toward 0, on negative offsets too.
        return Place{circle.cx + std::int64_t(double(circle.r) * std::cos(angle) + 0.5),
                     circle.cy + std::int64_t(double(circle.r) * std::sin(angle) + 0.5)};
    };
    if (start >= end)
        return;
    Place previous = place(start);
    for (std::int64_t degree = start + 1; degree <= end; ++degree) {
        const Place current = place(degree);
        visit(previous.x, previous.y);
        visit(current.x, current.y);
        previous = current;
    }
}

/// The extent of a picture, to which shapes are cut.
struct Frame
{
    int width;
    int height;

    bool holds(std::int64_t x, std::int64_t y) const { return x >= 0 && x < width && y >= 0 && y < height; }
};

/// Whether 32-bit coordinates hold all the values: others, which a wider `long` can carry, have no pixels.
template <class... Values>
bool fit32(Values... values)
{
    return ((values >= INT32_MIN && values <= INT32_MAX) && ...);
}

// A shape's pixels inside the frame, in the shape's order, as visit(int x, int y). What lies far outside is
// left out arithmetically, not walked.

template <class Visit>
void visitLineInside(Frame frame, std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2,
                     Visit&& visit)
{
    if (!fit32(x1, y1, x2, y2))
        return;
    const LineWalk walk({LONG(x1), LONG(y1)}, {LONG(x2), LONG(y2)});
    walk.visit(walk.inside(0, 0, frame.width - 1, frame.height - 1),
               [&](std::int64_t x, std::int64_t y) { visit(int(x), int(y)); });
}

template <class Visit>
void visitCircleInside(Frame frame, const Circle& circle, Visit&& visit)
{
    if (!fit32(circle.cx, circle.cy, circle.r))
        return;
    std::array<Steps, 8> ranges;
    const std::size_t count = circleStepsInside(circle, frame.width, frame.height, ranges);
    for (std::size_t i = 0; i < count; ++i)
        visitCircle(circle, ranges[i], [&](std::int64_t x, std::int64_t y) {
            if (frame.holds(x, y))
                visit(int(x), int(y));
        });
}

template <class Visit>
void visitEllipseInside(Frame frame, std::int64_t cx, std::int64_t cy, std::int64_t a, std::int64_t b,
                        Visit&& visit)
{
    if (!fit32(cx, cy, a, b))
        return;
    visitEllipse(cx, cy, a, b, [&](std::int64_t x, std::int64_t y) {
        if (frame.holds(x, y))
            visit(int(x), int(y));
    });
}

template <class Visit>
void visitArcInside(Frame frame, const Circle& circle, std::int64_t start, std::int64_t end, Visit&& visit)
{
    if (!fit32(circle.cx, circle.cy, circle.r))
        return;
    visitArc(circle, start, end, [&](std::int64_t x, std::int64_t y) {
        if (frame.holds(x, y))
            visit(int(x), int(y));
    });
}

} // namespace ormalux
