#include "view/DrawObjArray.h"

#include "view/ShapeList.h"
#include "view/ShapePainter.h"

#include <algorithm>
#include <new>

using ormalux::Shape;
using ormalux::ShapeKind;
using ormalux::ShapeList;

namespace {

std::int16_t held(int value)
{
    return std::int16_t(std::clamp<int>(value, INT16_MIN, INT16_MAX));
}

Shape shapeOf(ShapeKind kind, int style, int width, COLORREF color)
{
    Shape shape;
    shape.kind = kind;
    shape.style = held(style);
    shape.width = held(width);
    shape.color = color;
    return shape;
}

Shape placed(Shape shape, int x1, int y1, int x2, int y2)
{
    shape.x1 = x1;
    shape.y1 = y1;
    shape.x2 = x2;
    shape.y2 = y2;
    return shape;
}

Shape ordered(Shape shape, int x1, int y1, int x2, int y2)
{
    return placed(shape, std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2));
}

} // namespace

CDrawObjArray::CDrawObjArray() : m_shapes(new (std::nothrow) ShapeList) {}

CDrawObjArray::CDrawObjArray(const CDrawObjArray& other) : CDrawObjArray()
{
    *this = other;
}

CDrawObjArray& CDrawObjArray::operator=(const CDrawObjArray& other)
{
    if (this != &other && m_shapes && other.m_shapes) {
        try {
            *m_shapes = ShapeList(*other.m_shapes);
        } catch (const std::bad_alloc&) { // the list stays as it was
        }
    }
    return *this;
}

CDrawObjArray::~CDrawObjArray() = default;

void CDrawObjArray::RemoveGraphics(const char* tag)
{
    if (m_shapes)
        m_shapes->remove(tag);
}

void CDrawObjArray::RemoveAllGraphics()
{
    if (m_shapes)
        m_shapes->clear();
}

int CDrawObjArray::GetCount(const char* tag) const
{
    return m_shapes ? m_shapes->count(tag) : 0;
}

void CDrawObjArray::AddRectangle(int x1, int y1, int x2, int y2, int style, int width, COLORREF color,
                                 const char* tag)
{
    if (m_shapes)
        m_shapes->add(ordered(shapeOf(ShapeKind::Rectangle, style, width, color), x1, y1, x2, y2), tag);
}

void CDrawObjArray::AddEllipse(int x1, int y1, int x2, int y2, int style, int width, COLORREF color,
                               const char* tag)
{
    if (m_shapes)
        m_shapes->add(ordered(shapeOf(ShapeKind::Ellipse, style, width, color), x1, y1, x2, y2), tag);
}

void CDrawObjArray::AddText(int x, int y, const char* text, int size, COLORREF color, const char* tag)
{
    Shape shape = placed(shapeOf(ShapeKind::Text, 0, 1, color), x, y, x, y);
    shape.extent = held(size);
    if (m_shapes)
        m_shapes->add(shape, tag, text);
}

void CDrawObjArray::AddLabel(const RECT& box, LABEL_PLACE place, const char* text, COLORREF color,
                             const char* tag)
{
    const int known = place == LABEL_BELOW || place == LABEL_CORNER ? place : LABEL_ABOVE;
    if (m_shapes && text && *text)
        m_shapes->add(
            ordered(shapeOf(ShapeKind::Label, known, 1, color), box.left, box.top, box.right, box.bottom),
            tag, text);
}

void CDrawObjArray::AddCrossLine(int x, int y, int arm, int style, int width, COLORREF color, const char* tag)
{
    Shape shape = placed(shapeOf(ShapeKind::Cross, style, width, color), x, y, x, y);
    shape.extent = held(arm);
    if (m_shapes)
        m_shapes->add(shape, tag);
}

void CDrawObjArray::AddLine(int x1, int y1, int x2, int y2, int style, int width, COLORREF color,
                            const char* tag)
{
    if (m_shapes)
        m_shapes->add(placed(shapeOf(ShapeKind::Line, style, width, color), x1, y1, x2, y2), tag);
}

void CDrawObjArray::AddArrow(int x1, int y1, int x2, int y2, int head, int style, int width, COLORREF color,
                             const char* tag)
{
    Shape shape = placed(shapeOf(ShapeKind::Arrow, style, width, color), x1, y1, x2, y2);
    shape.extent = held(head);
    if (m_shapes)
        m_shapes->add(shape, tag);
}

void CDrawObjArray::AddPolyline(POINT*, int, int, int, COLORREF, const char*) {}

void CDrawObjArray::Draw(CDC* dc, float zoom_x, float zoom_y, RECT* clip)
{
    if (m_shapes)
        ormalux::drawShapes(*m_shapes, dc, zoom_x, zoom_y, clip);
}

int CDrawObjArray::GetCount() const
{
    return m_shapes ? m_shapes->count() : 0;
}

int CDrawObjArray::GetCapacity() const
{
    return m_shapes ? m_shapes->capacity() : 0;
}
