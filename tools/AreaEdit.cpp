#include "tools/AreaEdit.h"

#include "image/VisionImage.h"

#include <cstring>
#include <utility>

namespace ormalux {

void editArea(CKestImage& image, const RECT& area, const ToolHost::GrayOperation& operation)
{
    const GrayView whole = image.view();
    const int width = area.right - area.left + 1;
    const int height = area.bottom - area.top + 1;
    if (width == whole.width && height == whole.height)
        return operation(image);
    CKestImage part(image);
    part.SetROIPlacement(area);
    operation(part);
    const ConstGrayView changed = std::as_const(part).view();
    if (changed.empty() || changed.width != width || changed.height != height)
        return;
    for (int y = 0; y < height; ++y)
        std::memcpy(whole.row(area.top + y) + area.left, changed.row(y), std::size_t(width));
}

} // namespace ormalux
