#pragma once

#include "steps/Findings.h"
#include "steps/Step.h"

#include <string>
#include <vector>

namespace ormalux {

/// A shape that shows what was found, in pixels of the picture.
struct Shape
{
    enum class Kind
    {
        Line,
        Rectangle, ///< dotted: where a step looked; corners included
        Box,       ///< around the corners, included, with a label
        Cross,
        Circle
    };

    Kind kind;
    double x1, y1, x2, y2; ///< of a cross and a circle the middle comes first
    double size;           ///< the arm of a cross, the radius of a circle
    int width;             ///< of the pen
    COLORREF color;
    std::string label;
};

/// The shapes of a step's findings: where it looked, then what it found.
std::vector<Shape> overlayOf(const Step& step, const Findings& found);

} // namespace ormalux
