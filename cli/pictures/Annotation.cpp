#include "cli/pictures/Drawing.h"

#include "steps/Overlay.h"
#include "view/DrawObjArray.h"
#include "view/PictureImage.h"
#include "view/PictureWriter.h"

#include <QImage>
#include <QPainter>

#include <cmath>

namespace ormalux::cli {

namespace {

int nearest(double value)
{
    return int(std::lround(value));
}

void addLabelledBox(CDrawObjArray& shapes, const RECT& box, COLORREF color, const char* label)
{
    shapes.AddRectangle(box.left - 1, box.top - 1, box.right + 2, box.bottom + 2, 0, 1, color, "result");
    shapes.AddLabel({box.left - 1, box.top - 1, box.right + 2, box.bottom + 2}, LABEL_ABOVE, label, color,
                    "result");
}

void addShape(CDrawObjArray& shapes, const OrmaluxShape& shape)
{
    const int x1 = nearest(shape.x1), y1 = nearest(shape.y1), x2 = nearest(shape.x2), y2 = nearest(shape.y2);
    const int size = nearest(shape.size);
    switch (Shape::Kind(shape.kind)) {
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

bool writeAnnotated(const char* path, const OrmaluxPixels& picture, const OrmaluxShape* shapes,
                    std::size_t count, std::string* error)
{
    QImage canvas =
        toQImage(PixelSource{picture.bits, picture.width, picture.height, picture.stride, picture.bitCount})
            .convertToFormat(QImage::Format_RGB32);
    {
        CDrawObjArray drawn;
        for (std::size_t i = 0; i < count; ++i)
            addShape(drawn, shapes[i]);
        QPainter painter(&canvas);
        RECT clip{0, 0, picture.width, picture.height};
        drawn.Draw(&painter, 1.0f, 1.0f, &clip);
    }
    return writePicture(path, canvas, error);
}

} // namespace ormalux::cli
