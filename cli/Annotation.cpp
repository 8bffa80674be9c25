#include "cli/Annotation.h"

#include "view/Picture.h"
#include "view/PictureWriter.h"

#include <QImage>
#include <QPainter>

namespace ormalux::cli {

namespace {

QImage canvasOf(Workpiece& work)
{
    const CKestImage24& color = work.color;
    if (color.IsEmpty() || color.GetWidth() != work.image.GetWidth() ||
        color.GetHeight() != work.image.GetHeight())
        return toQImage(work.image.view()).convertToFormat(QImage::Format_RGB32);
    return work.original.convertToFormat(QImage::Format_RGB32);
}

} // namespace

void writeAnnotated(const std::string& name, Workpiece& work)
{
    QImage canvas = canvasOf(work);
    {
        QPainter painter(&canvas);
        RECT clip{0, 0, work.image.GetWidth(), work.image.GetHeight()};
        work.shapes.Draw(&painter, 1.0f, 1.0f, &clip);
    }
    std::string error;
    if (!writePicture(name.c_str(), canvas, &error))
        throw InputError(error);
}

void addLabelledBox(CDrawObjArray& shapes, const RECT& box, COLORREF color, const std::string& label)
{
    shapes.AddRectangle(box.left - 1, box.top - 1, box.right + 2, box.bottom + 2, 0, 1, color, "result");
    shapes.AddLabel({box.left - 1, box.top - 1, box.right + 2, box.bottom + 2}, LABEL_ABOVE, label.c_str(),
                    color, "result");
}

} // namespace ormalux::cli
