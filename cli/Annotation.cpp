#include "cli/Annotation.h"

#include "cli/Input.h"
#include "view/PictureWriter.h"

#include <QImage>
#include <QPainter>

namespace ormalux::cli {

namespace {
constexpr int labelSize = 12;
} // namespace

void writeAnnotated(const std::string& name, const CKestImage& image, CDrawObjArray& shapes)
{
    QImage canvas = toQImage(image).convertToFormat(QImage::Format_RGB32);
    {
        QPainter painter(&canvas);
        RECT clip{0, 0, image.GetWidth(), image.GetHeight()};
        shapes.Draw(&painter, 1.0f, 1.0f, &clip);
    }
    const std::string error = writePicture(name, canvas);
    if (!error.empty())
        throw InputError(error);
}

void addLabelledBox(CDrawObjArray& shapes, const RECT& box, COLORREF color, const std::string& label)
{
    shapes.AddRectangle(box.left - 1, box.top - 1, box.right + 1, box.bottom + 1, 0, 1, color, "result");
    if (label.empty())
        return;
    const int above = box.top - labelSize - 4;
    shapes.AddText(box.left, above >= 0 ? above : box.bottom + 2, label.c_str(), labelSize, color, "result");
}

} // namespace ormalux::cli
