#pragma once

#include <array>

namespace ormalux {

enum class ElementShape
{
    Rect,
    Cross,
    Ellipse
};

/// The largest side of a structuring element.
inline constexpr int maxElementSize = 255;

/// A structuring element: in each of its rows one run of columns. The anchor is (width / 2, height / 2),
/// which for even sizes lies right of and below the middle.
struct StructuringElement
{
    /// The columns begin up to, excluding, end; none when they are equal.
    struct Run
    {
        int begin, end;
    };

    ElementShape shape;
    int width, height;
    std::array<Run, maxElementSize> runs;

    int anchorX() const { return width / 2; }
    int anchorY() const { return height / 2; }
};

/// The element of the shape, sizes 1 to maxElementSize.
///
/// A cross is the anchor's row and column. An ellipse has in the row dy from the anchor the columns up to
/// round(a sqrt(b^2 - dy^2) / b) from it, a = width / 2, b = height / 2 in integers, halves rounded to even,
/// cut to the element; with b = 0 the anchor alone. An element of 1 x 1 is its anchor. These are the tables
/// of OpenCV's getStructuringElement.
StructuringElement structuringElement(ElementShape shape, int width, int height);

} // namespace ormalux
