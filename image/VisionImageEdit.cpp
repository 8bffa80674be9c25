#include "image/VisionImage.h"

#include "image/ImagePainter.h"
#include "image/Marking.h"
#include "image/PixelBuffer.h"
#include "image/kernels/EditKernels.h"

#include <algorithm>
#include <utility>

void CKestImage::Marking(int x1, int y1, int x2, int y2, unsigned char value)
{
    ormalux::markRectangle(view(), std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2),
                           value);
}

void CKestImage::Marking(unsigned char low, unsigned char high, unsigned char value)
{
    if (valid())
        ormalux::kernels::markRange(m_pixels, std::size_t(m_length), low, high, value);
}

void CKestImage::MarkingDiffer(const CKestImage& other, unsigned char value, int tolerance)
{
    if (valid() && other.m_pixels && other.m_length == m_length)
        ormalux::markDifferences({m_pixels, std::size_t(m_length)}, other.m_pixels, value, tolerance);
}

void CKestImage::Offset(int dx, int dy)
{
    if (!valid())
        return;
    const std::int64_t d = std::int64_t(m_width) * dy + dx;
    if (!m_linked)
        return ormalux::shiftBytes({m_pixels, std::size_t(m_length)}, d);
    if (unsigned char* shifted = ormalux::newPixels(std::size_t(m_length))) {
        ormalux::shiftBytes({m_pixels, std::size_t(m_length)}, d, shifted);
        adopt(shifted, m_width, m_height);
    }
}

CKestImage& CKestImage::operator+(const CKestImage& other)
{
    if (valid() && other.m_pixels && other.m_width == m_width && other.m_height == m_height)
        ormalux::kernels::addBytes(m_pixels, other.m_pixels, std::size_t(m_length));
    return *this;
}

CKestImage& CKestImage::operator-(const CKestImage& other)
{
    if (valid() && other.m_pixels && other.m_width == m_width && other.m_height == m_height)
        ormalux::kernels::subtractBytes(m_pixels, other.m_pixels, std::size_t(m_length));
    return *this;
}

void CKestImage::PaintImage(CDC* dc, CRect rect)
{
    const ormalux::GrayPainter paint = ormalux::grayPainter();
    if (valid() && dc && paint)
        paint(dc, rect, std::as_const(*this).view());
}
