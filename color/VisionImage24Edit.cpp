#include "color/VisionImage24.h"

#include "color/ColorEdit.h"
#include "image/ImagePainter.h"
#include "image/Marking.h"
#include "image/PixelBuffer.h"
#include "image/kernels/EditKernels.h"
#include "image/kernels/PointKernels.h"

#include <algorithm>

void CKestImage24::Marking(int x1, int y1, int x2, int y2, int red, int green, int blue)
{
    ormalux::paintBox(view(), {x1, y1, x2, y2}, RGB(red, green, blue));
}

void CKestImage24::Offset(int dx, int dy)
{
    const ormalux::ColorView image = view();
    if (image.empty())
        return;
    // No more pixels than the buffer has bytes, lest their bytes overflow.
    const std::int64_t pixels = std::int64_t(image.width) * dy + dx;
    const std::int64_t shift = 3 * std::clamp(pixels, -image.length, image.length);
    const std::span<std::uint8_t> bytes(image.pixels, std::size_t(image.length));
    if (!m_linked)
        return ormalux::shiftBytes(bytes, shift);
    if (unsigned char* shifted = ormalux::newPixels(bytes.size())) {
        ormalux::shiftBytes(bytes, shift, shifted);
        adopt(shifted, m_width, m_height, m_length);
    }
}

CKestImage24& CKestImage24::operator+(const CKestImage24& other)
{
    const ormalux::ColorView image = view();
    const ormalux::ConstColorView added = other.view();
    if (!image.empty() && !added.empty() && image.width == added.width && image.height == added.height)
        ormalux::kernels::addBytes(image.pixels, added.pixels, std::size_t(image.colorBytes()));
    return *this;
}

CKestImage24& CKestImage24::operator-(const CKestImage24& other)
{
    const ormalux::ColorView image = view();
    const ormalux::ConstColorView taken = other.view();
    if (!image.empty() && !taken.empty() && image.width == taken.width && image.height == taken.height)
        ormalux::kernels::subtractBytes(image.pixels, taken.pixels, std::size_t(image.colorBytes()));
    return *this;
}

void CKestImage24::Invert()
{
    const ormalux::ColorView image = view();
    if (!image.empty())
        ormalux::kernels::invert(image.pixels, std::size_t(image.colorBytes()));
}

void CKestImage24::PaintImage(CDC* dc, CRect rect)
{
    const ormalux::ColorPainter paint = ormalux::colorPainter();
    if (valid() && dc && paint)
        paint(dc, rect, m_pixels, m_width, m_height);
}

void CKestImage24::AbandonColorCell(int x1, int y1, int x2, int y2, char channel, unsigned char value)
{
    const int place = channel == 'R' ? 2 : channel == 'G' ? 1 : 0;
    ormalux::paintChannel(view(), {x1, y1, x2, y2}, place, value);
}

void CKestImage24::SetRedGain(float gain)
{
    ormalux::repeatGain(view(), 2, gain);
}

void CKestImage24::SetGreenGain(float gain)
{
    ormalux::repeatGain(view(), 1, gain);
}

void CKestImage24::SetBlueGain(float gain)
{
    ormalux::repeatGain(view(), 0, gain);
}
