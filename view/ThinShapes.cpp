#include "view/ThinShapes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ormalux {

namespace {

void across(const DeviceCanvas& canvas, std::int64_t x1, std::int64_t x2, std::int64_t y, QRgb color)
{
    const std::int64_t first = std::max<std::int64_t>(x1, canvas.bounds.left);
    const std::int64_t last = std::min<std::int64_t>(x2, canvas.bounds.right - 1);
    if (canvas.hasRow(y) && first <= last)
        std::fill_n(canvas.at(first, y), last - first + 1, color);
}

void down(const DeviceCanvas& canvas, std::int64_t x, std::int64_t y1, std::int64_t y2, QRgb color)
{
    const std::int64_t first = std::max<std::int64_t>(y1, canvas.bounds.top);
    const std::int64_t last = std::min<std::int64_t>(y2, canvas.bounds.bottom - 1);
    if (!canvas.hasColumn(x))
        return;
    for (std::int64_t y = first; y <= last; ++y)
        *canvas.at(x, y) = color;
}

/// A line seen along the axis on which it is longer: from (along, beside), length steps forward, in all of
/// which it moves by drift sideways.
struct Course
{
    std::int64_t along;
    std::int64_t beside;
    std::int64_t length;
    std::int64_t drift;
};

/// Calls put(along, beside) for the steps within [low, end) of the long axis.
template <class Put>
void walk(const Course& course, std::int64_t low, std::int64_t end, Put put)
{
    const std::int64_t first = std::max<std::int64_t>(0, low - course.along);
    const std::int64_t last = std::min(course.length, end - 1 - course.along);
    const std::int64_t rise = 2 * std::abs(course.drift);
    const std::int64_t run = 2 * course.length;
    const std::int64_t side = course.drift < 0 ? -1 : 1;
    if (first > last)
        return;
    // The way aside after the first steps is moved / length. Whole parts are taken out before it is doubled:
    // between the ends of the integer range the double needs more than 64 bits.
    const std::uint64_t moved = std::uint64_t(first) * std::uint64_t(std::abs(course.drift));
    const auto length = std::uint64_t(course.length);
    const std::int64_t start = 2 * std::int64_t(moved % length) + course.length; // half a step ahead: rounds
    std::int64_t beside = course.beside + side * (std::int64_t(moved / length) + start / run);
    std::int64_t rest = start % run;
    for (std::int64_t step = first; step <= last; ++step) {
        put(course.along + step, beside);
        rest += rise;
        if (rest >= run) {
            rest -= run;
            beside += side;
        }
    }
}

/// Half of an ellipse's way from its centre line to its outline, at an offset from the centre.
double reach(double offset, double radius, double otherRadius)
{
    const double inside = (radius - offset) * (radius + offset);
    return inside > 0 ? otherRadius * std::sqrt(inside) / radius : 0;
}

/// The whole positions of [low, end) within +-spread of the centre.
std::pair<std::int64_t, std::int64_t> around(double center, double spread, int low, int end)
{
    return {std::max<std::int64_t>(low, std::int64_t(std::ceil(center - spread))),
            std::min<std::int64_t>(std::int64_t(end) - 1, std::int64_t(std::floor(center + spread)))};
}

} // namespace

void thinLine(const DeviceCanvas& canvas, std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2,
              QRgb color)
{
    if (y1 == y2)
        return across(canvas, std::min(x1, x2), std::max(x1, x2), y1, color);
    if (x1 == x2)
        return down(canvas, x1, std::min(y1, y2), std::max(y1, y2), color);
    const RECT& bounds = canvas.bounds;
    if (std::abs(x2 - x1) >= std::abs(y2 - y1)) {
        if (x1 > x2) {
            std::swap(x1, x2);
            std::swap(y1, y2);
        }
        walk({x1, y1, x2 - x1, y2 - y1}, bounds.left, bounds.right, [&](std::int64_t x, std::int64_t y) {
            if (canvas.hasRow(y))
                *canvas.at(x, y) = color;
        });
        return;
    }
    if (y1 > y2) {
        std::swap(x1, x2);
        std::swap(y1, y2);
    }
    walk({y1, x1, y2 - y1, x2 - x1}, bounds.top, bounds.bottom, [&](std::int64_t y, std::int64_t x) {
        if (canvas.hasColumn(x))
            *canvas.at(x, y) = color;
    });
}

void thinRectangle(const DeviceCanvas& canvas, int left, int top, int right, int bottom, QRgb color)
{
    across(canvas, left, right, top, color);
    across(canvas, left, right, bottom, color);
    down(canvas, left, top, bottom, color);
    down(canvas, right, top, bottom, color);
}

void thinEllipse(const DeviceCanvas& canvas, int left, int top, int right, int bottom, QRgb color)
{
    if (left == right || top == bottom)
        return thinRectangle(canvas, left, top, right, bottom, color);
    const std::int64_t sumX = std::int64_t(left) + right;
    const std::int64_t sumY = std::int64_t(top) + bottom;
    const double radiusX = (double(right) - left) / 2;
    const double radiusY = (double(bottom) - top) / 2;
    const double centerX = double(sumX) / 2;
    const double centerY = double(sumY) / 2;
    // A pixel a column where the outline is flat and a pixel a row where it is steep. Half a pixel more than
    // where the two meet: otherwise there might be a gap.
    const double diagonal = std::hypot(radiusX, radiusY);
    const RECT& bounds = canvas.bounds;
    const auto [firstX, lastX] =
        around(centerX, std::min(radiusX * radiusX / diagonal + 0.5, radiusX), bounds.left, bounds.right);
    for (std::int64_t x = firstX; x <= lastX; ++x) {
        const double up = reach(double(x) - centerX, radiusX, radiusY);
        const auto y = std::int64_t(std::floor(centerY - up + 0.5));
        canvas.dot(x, y, color);
        canvas.dot(x, sumY - y, color);
    }
    const auto [firstY, lastY] =
        around(centerY, std::min(radiusY * radiusY / diagonal + 0.5, radiusY), bounds.top, bounds.bottom);
    for (std::int64_t y = firstY; y <= lastY; ++y) {
        const double aside = reach(double(y) - centerY, radiusY, radiusX);
        const auto x = std::int64_t(std::floor(centerX - aside + 0.5));
        canvas.dot(x, y, color);
        canvas.dot(sumX - x, y, color);
    }
}

} // namespace ormalux
