#include "image/ImagePainter.h"

#include <atomic>

namespace ormalux {

namespace {
std::atomic<GrayPainter> gray{nullptr};
std::atomic<ColorPainter> color{nullptr};
} // namespace

void setImagePainters(GrayPainter newGray, ColorPainter newColor)
{
    gray = newGray;
    color = newColor;
}

GrayPainter grayPainter()
{
    return gray;
}

ColorPainter colorPainter()
{
    return color;
}

} // namespace ormalux
