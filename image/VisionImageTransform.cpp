#include "image/VisionImage.h"

#include "image/Mirror.h"
#include "image/Rotate.h"

namespace {

ormalux::PixelBlock blockOf(const ormalux::GrayView& view)
{
    return {view.pixels, std::size_t(view.width) * view.height,
            view.width,  view.height,
            1,           std::size_t(view.width)};
}

} // namespace

void CKestImage::Rotate(int cx, int cy, double angle, unsigned char)
{
    ormalux::rotate(blockOf(view()), cx, cy, angle);
}

void CKestImage::Rotate90L()
{
    Rotate(m_width / 2, m_height / 2, -90.0, 0);
}

void CKestImage::Rotate90R()
{
    Rotate(m_width / 2, m_height / 2, 90.0, 0);
}

void CKestImage::Rotate180()
{
    ormalux::halfTurn(blockOf(view()));
}

void CKestImage::RotateHorzFlip()
{
    ormalux::mirrorLeftRight(blockOf(view()));
}

void CKestImage::RotateVertFlip()
{
    ormalux::PixelBlock image = blockOf(view());
    image.stride = ormalux::bitmapStride(m_width, 1);
    ormalux::mirrorTopBottom(image);
}
