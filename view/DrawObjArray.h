#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <memory>

namespace ormalux {
class ShapeList;
}

/// Where a label stands before another place is looked for: left above its box, left below it, or with its
/// left top corner in that of the box.
enum LABEL_PLACE : int
{
    LABEL_ABOVE = 0,
    LABEL_BELOW = 1,
    LABEL_CORNER = 2
};

/// The vector shapes that a view draws over its picture: lines, arrows, rectangles, ellipses, crosses and
/// texts, added in image coordinates by a host or a tool and removed by their tags.
///
/// Sizes of arms, heads, pens and letters are device pixels: they do not grow with the zoom. Pen styles are
/// 0 solid, 1 dash, 2 dot, 3 dash dot, 4 dash dot dot, 5 nothing; any other is solid, and so is every pen
/// wider than one pixel. Styles and sizes are held in 16 bits, larger ones are limited. Tags of more than 255
/// bytes and texts of more than 99 are cut between two UTF-8 characters; null counts as "".
///
/// Shapes stay in the order in which they were added. Room is reported in steps of 100 shapes. Nothing
/// throws; a shape that finds no memory is not added. A list is used from one thread at a time; drawing texts
/// needs a QGuiApplication and leaves them out without one.
class ORMALUXVIEW_API CDrawObjArray
{
public:
    CDrawObjArray();
    CDrawObjArray(const CDrawObjArray& other);
    CDrawObjArray& operator=(const CDrawObjArray& other);

    /// Removes every shape with exactly this tag; the others keep their order.
    virtual void RemoveGraphics(const char* tag);
    virtual ~CDrawObjArray();
    virtual void RemoveAllGraphics();
    /// The number of shapes with exactly this tag.
    virtual int GetCount(const char* tag) const;
    /// The corners are put in order.
    virtual void AddRectangle(int x1, int y1, int x2, int y2, int style, int width, COLORREF color,
                              const char* tag);
    /// The ellipse inside the rectangle, whose corners are put in order.
    virtual void AddEllipse(int x1, int y1, int x2, int y2, int style, int width, COLORREF color,
                            const char* tag);
    /// One line of text in UTF-8 with its top left corner at the point; size is the height of the letters.
    virtual void AddText(int x, int y, const char* text, int size, COLORREF color, const char* tag);
    /// Two diagonal strokes that reach arm device pixels to each side; a single pixel when arm is 0.
    virtual void AddCrossLine(int x, int y, int arm, int style, int width, COLORREF color, const char* tag);
    virtual void AddLine(int x1, int y1, int x2, int y2, int style, int width, COLORREF color,
                         const char* tag);
    /// A line with a head at the second point: two strokes of head device pixels, 30 degrees to each side.
    virtual void AddArrow(int x1, int y1, int x2, int y2, int head, int style, int width, COLORREF color,
                          const char* tag);
    /// Deliberate: adds nothing; callers rely on no polyline ever being drawn.
    virtual void AddPolyline(POINT* points, int count, int style, int width, COLORREF color, const char* tag);
    /// Draws the shapes whose device box meets clip (null: all of them) in their order. A shape's device
    /// point is its image point times the zoom, truncated. The painter's state is as before afterwards.
    virtual void Draw(CDC* dc, float zoom_x, float zoom_y, RECT* clip);

    /// A short text that says what a box stands for, in letters of 12 device pixels with a thin halo, dark or
    /// bright, that tells them from any picture. Labels are drawn over all other shapes and never over each
    /// other: one whose place is taken moves to another side of its box, and one that finds none is left out
    /// until zoom or scrolling make room. They leave most of the picture free; an empty text adds nothing.
    void AddLabel(const RECT& box, LABEL_PLACE place, const char* text, COLORREF color, const char* tag);

    int GetCount() const;
    /// The shapes that the list reports room for: a multiple of 100.
    int GetCapacity() const;

private:
    std::unique_ptr<ormalux::ShapeList> m_shapes;
};
