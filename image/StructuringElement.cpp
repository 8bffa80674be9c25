#include "image/StructuringElement.h"

#include <algorithm>
#include <cmath>

namespace ormalux {

namespace {

StructuringElement::Run ellipseRun(int width, int height, int row)
{
    const int a = width / 2, b = height / 2, dy = row - b;
    if (std::abs(dy) > b)
        return {0, 0};
    // The quotient is formed first, as in the tables that users compare with.
    const double inverse = b > 0 ? 1.0 / (double(b) * b) : 0;
    const int dx = int(std::nearbyint(a * std::sqrt((b * b - dy * dy) * inverse)));
    return {std::max(a - dx, 0), std::min(a + dx + 1, width)};
}

} // namespace

StructuringElement structuringElement(ElementShape shape, int width, int height)
{
    if (width == 1 && height == 1)
        shape = ElementShape::Rect;
    StructuringElement element{shape, width, height, {}};
    for (int row = 0; row < height; ++row) {
        const bool full =
            shape == ElementShape::Rect || (shape == ElementShape::Cross && row == element.anchorY());
        if (full)
            element.runs[row] = {0, width};
        else if (shape == ElementShape::Cross)
            element.runs[row] = {element.anchorX(), element.anchorX() + 1};
        else
            element.runs[row] = ellipseRun(width, height, row);
    }
    return element;
}

} // namespace ormalux
