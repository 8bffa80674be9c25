#include "color/VisionImage24.h"

#include "color/ColorEdit.h"
#include "image/PixelBuffer.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>
#include <utility>

using ormalux::newPixels;

namespace {

/// The bytes of the padded rows; -1 for sizes that no image has.
int paddedLength(int width, int height)
{
    if (width < 0 || height < 0)
        return -1;
    const std::int64_t stride = ormalux::paddedStride(width);
    return height == 0 || stride <= INT_MAX / height ? int(stride * height) : -1;
}

} // namespace

CKestImage24::CKestImage24() = default;

CKestImage24::CKestImage24(int width, int height, unsigned char* pixels)
{
    SetImagePtr(width, height, pixels);
}

CKestImage24::CKestImage24(const CKestImage24& other)
{
    SetImagePtr(other.m_width, other.m_height, other.m_pixels);
}

CKestImage24& CKestImage24::operator=(const CKestImage24& other)
{
    if (this != &other)
        SetImagePtr(other.m_width, other.m_height, other.m_pixels);
    return *this;
}

CKestImage24::~CKestImage24()
{
    release();
}

void CKestImage24::release()
{
    if (!m_linked)
        delete[] m_pixels;
    m_pixels = nullptr;
}

void CKestImage24::adopt(unsigned char* pixels, int width, int height, int length)
{
    release();
    m_linked = false;
    m_pixels = pixels;
    m_width = width;
    m_height = height;
    m_length = length;
}

void CKestImage24::SetImagePtr(int width, int height, unsigned char* pixels)
{
    const int length = paddedLength(width, height);
    const bool empty = !pixels || length < 0 || (width == 0 && height == 0);
    // The copy is made before the old buffer is freed: the pixels may lie in it.
    unsigned char* copy = empty ? nullptr : newPixels(std::size_t(length));
    if (copy)
        std::memcpy(copy, pixels, std::size_t(length));
    adopt(copy, width, height, copy ? length : 0);
}

void CKestImage24::SetImagePtrLink(int width, int height, unsigned char* pixels)
{
    const int length = paddedLength(width, height);
    adopt(length < 0 ? nullptr : pixels, width, height, std::max(length, 0));
    m_linked = true;
}

void CKestImage24::SetEmpty()
{
    release();
    m_width = m_height = m_length = 0;
}

unsigned long CKestImage24::GetPixel(int x, int y) const
{
    return ormalux::colorAt(view(), x, y);
}

void CKestImage24::SetPixel(int x, int y, unsigned long color)
{
    ormalux::setColorAt(view(), x, y, COLORREF(color));
}

unsigned char* CKestImage24::GetImagePtr(int x1, int y1, int x2, int y2) const
{
    if (x1 > x2)
        std::swap(x1, x2);
    if (y1 > y2)
        std::swap(y1, y2);
    const ormalux::ConstColorView image = view();
    if (image.empty() || x1 < 0 || y1 < 0 || x2 > m_width - 1 || y2 > m_height - 1)
        return nullptr;
    const int width = x2 - x1 + 1, height = y2 - y1 + 1;
    // Room for padded rows too, which the crop's length counts.
    const std::int64_t room = ormalux::paddedStride(width) * height;
    unsigned char* part = newPixels(std::size_t(room));
    if (!part)
        return nullptr;
    const std::int64_t rowBytes = std::int64_t(3) * width;
    // Deliberate: the last row stays 0; callers crop one row more than they need.
    for (int y = y1; y < y2; ++y)
        std::memcpy(part + (y - y1) * rowBytes, image.at(x1, y), std::size_t(rowBytes));
    const std::int64_t copied = rowBytes * (height - 1);
    std::memset(part + copied, 0, std::size_t(room - copied));
    return part;
}

CKestImage24* CKestImage24::GetImage(int, int, int, int) const
{
    return new (std::nothrow) CKestImage24();
}

void CKestImage24::SetROIPlacement(int x1, int y1, int x2, int y2)
{
    unsigned char* part = GetImagePtr(x1, y1, x2, y2);
    if (!part)
        return;
    // Corners that gave pixels lie inside the image, so no difference overflows.
    const int width = x2 - x1 + 1, height = y2 - y1 + 1;
    adopt(part, width, height, int(ormalux::paddedStride(width) * height));
}

void CKestImage24::SetROIPlacement(const RECT& rect)
{
    SetROIPlacement(rect.left, rect.top, rect.right, rect.bottom);
}
