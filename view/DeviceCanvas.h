#pragma once

#include "platform/Types.h"

#include <QColor>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>

class QPainter;

namespace ormalux {

/// The 32-bit pixels (0xffRRGGBB) under a painter, counted from the one at its origin. Nothing is owned.
struct DeviceCanvas
{
    std::uint32_t* pixels = nullptr; ///< the pixel at (left, top)
    std::ptrdiff_t stride = 0;       ///< pixels from one row to the next
    RECT bounds{0, 0, 0, 0};         ///< right and bottom do not belong to it
    double scale = 1;                ///< pixels across one step of the painter's coordinates, 1 or more
    double startX = 0;               ///< what the painter's origin lies behind its pixel's edge, 0 to 1
    double startY = 0;

    /// The first pixel that shows a whole coordinate of the painter, as the picture's pixels are shown.
    std::int64_t column(double x) const { return std::int64_t(std::ceil(x * scale + startX)); }
    std::int64_t row(double y) const { return std::int64_t(std::ceil(y * scale + startY)); }
    /// How many pixels wide a thin outline is.
    int nib() const { return int(scale + 0.5); }

    bool hasColumn(std::int64_t x) const { return x >= bounds.left && x < bounds.right; }
    bool hasRow(std::int64_t y) const { return y >= bounds.top && y < bounds.bottom; }
    std::uint32_t* at(std::int64_t x, std::int64_t y) const
    {
        return pixels + (y - bounds.top) * stride + (x - bounds.left);
    }
    void dot(std::int64_t x, std::int64_t y, QRgb color) const
    {
        if (hasColumn(x) && hasRow(y))
            *at(x, y) = color;
    }
};

/// The pixels of an active painter, when it paints plainly (opaque, unclipped, moved and evenly enlarged at
/// most, without an enlargement by whole pixels) on an image of 32-bit colours. The painter must outlive the
/// canvas.
std::optional<DeviceCanvas> canvasOf(QPainter& painter);

} // namespace ormalux
