#pragma once

#include "tools/ToolHost.h"

/// How the measuring tools draw: the colours of the command line's annotations.
namespace ormalux::strokes {

constexpr Stroke scan{RGB(255, 200, 0)};
constexpr Stroke edge{RGB(255, 0, 200)};
constexpr Stroke unused{RGB(150, 150, 150)};  ///< seen, but no part of the result
constexpr Stroke result{RGB(0, 220, 0), 2};   ///< the best edge, the fitted line
constexpr Stroke chosen{RGB(0, 200, 255), 2}; ///< what the operator has selected
constexpr Stroke blob{RGB(255, 64, 64)};

/// A frame around exactly the pixels of the rectangle, right and bottom included, at every zoom.
inline void frame(ToolHost& host, const char* layer, const RECT& box, Stroke stroke)
{
    host.addRectangle(layer, {box.left, box.top, box.right + 1, box.bottom + 1}, stroke);
}

/// A cross that is found at every zoom and a frame around the pixel meant.
inline void point(ToolHost& host, const char* layer, POINT at, int arm, Stroke stroke)
{
    host.addCross(layer, at, arm, stroke);
    frame(host, layer, {at.x, at.y, at.x, at.y}, stroke);
}

} // namespace ormalux::strokes
