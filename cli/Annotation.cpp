#include "cli/Annotation.h"

#include "cli/Input.h"
#include "cli/PictureModule.h"

#include <iterator>

namespace ormalux::cli {

namespace {

PixelSource shownBy(const Work& work)
{
    const CKestImage24& color = work.color();
    if (!color.IsEmpty() && color.GetWidth() == work.width() && color.GetHeight() == work.height())
        return pixelsOf(color);
    return pixelsOf(work.gray());
}

OrmaluxShape toModule(const Shape& shape)
{
    return {int(shape.kind), shape.x1,    shape.y1,    shape.x2,           shape.y2,
            shape.size,      shape.width, shape.color, shape.label.c_str()};
}

} // namespace

void Annotation::add(const Step& step, const Findings& found)
{
    std::vector<Shape> shapes = overlayOf(step, found);
    m_shapes.insert(m_shapes.end(), std::make_move_iterator(shapes.begin()),
                    std::make_move_iterator(shapes.end()));
}

void Annotation::write(const std::string& name, const Work& work)
{
    const OrmaluxPixels picture = toPixels(shownBy(work));
    std::vector<OrmaluxShape> shapes;
    for (const Shape& shape : m_shapes)
        shapes.push_back(toModule(shape));
    writeByModule(name, [&](const OrmaluxPictures& module) {
        return module.annotate(name.c_str(), &picture, shapes.data(), shapes.size());
    });
}

} // namespace ormalux::cli
