#pragma once

#include "image/GrayView.h"

#include <algorithm>
#include <cstdint>
#include <span>

namespace ormalux {

/// A rectangle of an image as a view, and where its top left pixel lies in the image.
struct ImagePart
{
    ConstGrayView view; ///< empty unless the rectangle lies inside
    int x = 0;
    int y = 0;
};

/// The rectangle with inclusive corners in any order; an empty part when it leaves the image.
inline ImagePart partOf(const ConstGrayView& image, int x1, int y1, int x2, int y2)
{
    const auto [left, right] = std::minmax(x1, x2);
    const auto [top, bottom] = std::minmax(y1, y2);
    if (image.empty() || left < 0 || top < 0 || right >= image.width || bottom >= image.height)
        return {};
    return {image.part(left, top, right - left + 1, bottom - top + 1), left, top};
}

/// The pixels of a whole image, whose rows follow one another without gaps.
inline std::span<std::uint8_t> pixelsOf(const GrayView& image)
{
    return {image.pixels, std::size_t(image.width) * std::size_t(image.height)};
}

/// Calls body(pixels, count) for runs that together are the pixels first to end, row by row through the view;
/// rows without gaps between them are one run.
template <class Body>
void forEachRun(const ConstGrayView& view, std::int64_t first, std::int64_t end, Body body)
{
    if (view.stride == view.width) {
        if (first < end)
            body(view.pixels + first, std::size_t(end - first));
        return;
    }
    while (first < end) {
        const std::int64_t y = first / view.width;
        const std::int64_t next = std::min(end, (y + 1) * view.width);
        body(view.row(int(y)) + (first - y * view.width), std::size_t(next - first));
        first = next;
    }
}

} // namespace ormalux
