#include "cli/Annotation.h"

#include "cli/Input.h"
#include "steps/Overlay.h"
#include "view/DrawObjArray.h"
#include "view/Picture.h"
#include "view/PictureWriter.h"

#include <QImage>
#include <QPainter>

#include <cmath>

namespace ormalux::cli {

namespace {

QImage canvasOf(const Work& work)
{
    const CKestImage24& color = work.color();
    if (color.IsEmpty() || color.GetWidth() != work.width() || color.GetHeight() != work.height())
        return toQImage(work.gray().view()).convertToFormat(QImage::Format_RGB32);
    const ConstColorView view = color.view();
    return toQImage({view.pixels, view.width, view.height, std::ptrdiff_t(3) * view.width, 24})
        .convertToFormat(QImage::Format_RGB32);
}

int nearest(double value)
{
    return int(std::lround(value));
}

void addLabelledBox(CDrawObjArray& shapes, const RECT& box, COLORREF color, const std::string& label)
{
    shapes.AddRectangle(box.left - 1, box.top - 1, box.right + 2, box.bottom + 2, 0, 1, color, "result");
    shapes.AddLabel({box.left - 1, box.top - 1, box.right + 2, box.bottom + 2}, LABEL_ABOVE, label.c_str(),
                    color, "result");
}

void addShape(CDrawObjArray& shapes, const Shape& shape)
{
    const int x1 = nearest(shape.x1), y1 = nearest(shape.y1), x2 = nearest(shape.x2), y2 = nearest(shape.y2);
    const int size = nearest(shape.size);
    switch (shape.kind) {
    case Shape::Kind::Line:
        shapes.AddLine(x1, y1, x2, y2, 0, shape.width, shape.color, "result");
        break;
    case Shape::Kind::Rectangle:
        shapes.AddRectangle(x1, y1, x2, y2, 2, shape.width, shape.color, "result");
        break;
    case Shape::Kind::Box:
        addLabelledBox(shapes, {x1, y1, x2, y2}, shape.color, shape.label);
        break;
    case Shape::Kind::Cross:
        shapes.AddCrossLine(x1, y1, size, 0, shape.width, shape.color, "result");
        break;
    case Shape::Kind::Circle:
        shapes.AddEllipse(x1 - size, y1 - size, x1 + size, y1 + size, 0, shape.width, shape.color, "result");
        break;
    }
}

} // namespace

struct Annotation::Shapes
{
    CDrawObjArray array;
};

Annotation::Annotation() : m_shapes(std::make_unique<Shapes>()) {}

Annotation::~Annotation() = default;

void Annotation::add(const Step& step, const Findings& found)
{
    for (const Shape& shape : overlayOf(step, found))
        addShape(m_shapes->array, shape);
}

void Annotation::write(const std::string& name, const Work& work)
{
    QImage canvas = canvasOf(work);
    {
        QPainter painter(&canvas);
        RECT clip{0, 0, work.width(), work.height()};
        m_shapes->array.Draw(&painter, 1.0f, 1.0f, &clip);
    }
    std::string error;
    if (!writePicture(name.c_str(), canvas, &error))
        throw InputError(error);
}

} // namespace ormalux::cli
