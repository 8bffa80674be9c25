#pragma once

#include "platform/Types.h"

#include <QColor>

#include <cstddef>
#include <cstdint>
#include <optional>

class QPainter;

namespace ormalux {

/// The 32-bit pixels (0xffRRGGBB) under a painter, addressed in its coordinates. Nothing is owned.
struct DeviceCanvas
{
    std::uint32_t* pixels = nullptr; ///< the pixel at (left, top)
    std::ptrdiff_t stride = 0;       ///< pixels from one row to the next
    RECT bounds{0, 0, 0, 0};         ///< right and bottom do not belong to it

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

/// The pixels of an active painter, when it paints plainly (opaque, unclipped, moved by whole pixels at most)
/// on an image of 32-bit colours: what is written there is what the painter would have drawn. The painter
/// must outlive the canvas.
std::optional<DeviceCanvas> canvasOf(QPainter& painter);

} // namespace ormalux
