#include "color/VisionImage24.h"

#include "image/Mirror.h"
#include "image/Rotate.h"

namespace {

/// The pixels in padded rows.
ormalux::PixelBlock blockOf(const ormalux::ColorView& view)
{
    return {view.pixels, std::size_t(view.length),
            view.width,  view.height,
            3,           ormalux::bitmapStride(view.width, 3)};
}

} // namespace

void CKestImage24::Rotate(int cx, int cy, double angle, unsigned char)
{
    ormalux::rotate(blockOf(view()), cx, cy, angle);
}

void CKestImage24::Rotate90L()
{
    Rotate(m_width / 2, m_height / 2, -90.0, 0);
}

void CKestImage24::Rotate90R()
{
    Rotate(m_width / 2, m_height / 2, 90.0, 0);
}

void CKestImage24::Rotate180()
{
    ormalux::halfTurn(blockOf(view()));
}

void CKestImage24::RotateHorzFlip()
{
    ormalux::mirrorLeftRight(blockOf(view()));
}

void CKestImage24::RotateVertFlip()
{
    ormalux::mirrorTopBottom(blockOf(view()));
}
