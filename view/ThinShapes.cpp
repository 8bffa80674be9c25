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

/// A filled rectangle; all four sides belong to it.
void block(const DeviceCanvas& canvas, std::int64_t left, std::int64_t top, std::int64_t right,
           std::int64_t bottom, QRgb color)
{
    const std::int64_t last = std::min<std::int64_t>(bottom, canvas.bounds.bottom - 1);
    for (std::int64_t y = std::max<std::int64_t>(top, canvas.bounds.top); y <= last; ++y)
        across(canvas, left, right, y, color);
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

/// A sloped line of one pixel a step, between pixels.
template <class Put>
void slope(const RECT& bounds, std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2, Put put)
{
    if (std::abs(x2 - x1) >= std::abs(y2 - y1)) {
        if (x1 > x2) {
            std::swap(x1, x2);
            std::swap(y1, y2);
        }
        return walk({x1, y1, x2 - x1, y2 - y1}, bounds.left, bounds.right,
                    [&](std::int64_t x, std::int64_t y) { put(x, y, true); });
    }
    if (y1 > y2) {
        std::swap(x1, x2);
        std::swap(y1, y2);
    }
    walk({y1, x1, y2 - y1, x2 - x1}, bounds.top, bounds.bottom,
         [&](std::int64_t y, std::int64_t x) { put(x, y, false); });
}

/// The outline of an ellipse, so many pixels wide inwards.
void curve(const DeviceCanvas& canvas, std::int64_t left, std::int64_t top, std::int64_t right,
           std::int64_t bottom, int nib, QRgb color)
{
    const int more = nib - 1;
    const std::int64_t sumX = left + right;
    const std::int64_t sumY = top + bottom;
    const double radiusX = double(right - left) / 2;
    const double radiusY = double(bottom - top) / 2;
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
        down(canvas, x, y, y + more, color);
        down(canvas, x, sumY - y - more, sumY - y, color);
    }
    const auto [firstY, lastY] =
        around(centerY, std::min(radiusY * radiusY / diagonal + 0.5, radiusY), bounds.top, bounds.bottom);
    for (std::int64_t y = firstY; y <= lastY; ++y) {
        const double aside = reach(double(y) - centerY, radiusY, radiusX);
        const auto x = std::int64_t(std::floor(centerX - aside + 0.5));
        across(canvas, x, x + more, y, color);
        across(canvas, sumX - x - more, sumX - x, y, color);
    }
}

} // namespace

void thinLine(const DeviceCanvas& canvas, std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2,
              QRgb color)
{
    x1 = canvas.column(double(x1));
    x2 = canvas.column(double(x2));
    y1 = canvas.row(double(y1));
    y2 = canvas.row(double(y2));
    const int more = canvas.nib() - 1; // a line's pixels aside and behind its end
    if (x1 == x2 || y1 == y2)
        return block(canvas, std::min(x1, x2), std::min(y1, y2), std::max(x1, x2) + more,
                     std::max(y1, y2) + more, color);
    if (more == 0)
        return slope(canvas.bounds, x1, y1, x2, y2,
                     [&](std::int64_t x, std::int64_t y, bool) { canvas.dot(x, y, color); });
    slope(canvas.bounds, x1, y1, x2, y2, [&](std::int64_t x, std::int64_t y, bool flat) {
        if (flat)
            down(canvas, x, y, y + more, color);
        else
            across(canvas, x, x + more, y, color);
    });
    for (const auto& [x, y] : {std::pair(x1, y1), std::pair(x2, y2)})
        block(canvas, x, y, x + more, y + more, color);
}

void thinRectangle(const DeviceCanvas& canvas, int left, int top, int right, int bottom, QRgb color)
{
    const int more = canvas.nib() - 1;
    const std::int64_t x1 = canvas.column(left), x2 = canvas.column(right);
    const std::int64_t y1 = canvas.row(top), y2 = canvas.row(bottom);
    block(canvas, x1, y1, x2 + more, y1 + more, color);
    block(canvas, x1, y2, x2 + more, y2 + more, color);
    if (more == 0) {
        down(canvas, x1, y1, y2, color);
        return down(canvas, x2, y1, y2, color);
    }
    block(canvas, x1, y1, x1 + more, y2 + more, color);
    block(canvas, x2, y1, x2 + more, y2 + more, color);
}

void thinEllipse(const DeviceCanvas& canvas, int left, int top, int right, int bottom, QRgb color)
{
    if (left == right || top == bottom)
        return thinRectangle(canvas, left, top, right, bottom, color);
    const int nib = canvas.nib();
    const std::int64_t x1 = canvas.column(left), x2 = canvas.column(right) + nib - 1;
    const std::int64_t y1 = canvas.row(top), y2 = canvas.row(bottom) + nib - 1;
    curve(canvas, x1, y1, x2, y2, nib, color);
}

} // namespace ormalux
