#include "image/VisionImage.h"

#include "image/Convert.h"
#include "image/Crop.h"
#include "image/PixelBuffer.h"

#include <algorithm>
#include <cstring>

using ormalux::canHold;
using ormalux::newPixels;

CKestImage::CKestImage() = default;

CKestImage::CKestImage(int width, int height)
{
    SetImagePtr(width, height);
}

CKestImage::CKestImage(int width, int height, unsigned char* pixels)
{
    SetImagePtr(width, height, pixels);
}

CKestImage::CKestImage(int width, int height, int bitsPerPixel, unsigned char* pixels, const char* channels)
{
    SetImagePtr(width, height, bitsPerPixel, pixels, channels);
}

CKestImage::CKestImage(const CKestImage& other)
{
    *this = other;
}

CKestImage& CKestImage::operator=(const CKestImage& other)
{
    if (this != &other)
        SetImagePtr(other.m_width, other.m_height, other.m_pixels);
    return *this;
}

CKestImage::~CKestImage()
{
    release();
}

void CKestImage::release()
{
    if (!m_linked)
        delete[] m_pixels;
    m_pixels = nullptr;
}

void CKestImage::adopt(unsigned char* pixels, int width, int height)
{
    release();
    m_linked = false;
    m_pixels = pixels;
    resize(width, height);
}

void CKestImage::resize(int width, int height)
{
    m_width = width;
    m_height = height;
    m_length = ormalux::pixelCount(width, height);
}

bool CKestImage::SetSizeForOverwrite(int width, int height)
{
    const bool empty = (width == 0 && height == 0) || !canHold(width, height);
    if (!empty && reusable(width, height)) {
        resize(width, height);
        return true;
    }
    release();
    adopt(empty ? nullptr : newPixels(std::size_t(width) * height), width, height);
    return m_pixels != nullptr;
}

void CKestImage::SetImagePtr(int width, int height)
{
    if (SetSizeForOverwrite(width, height))
        std::memset(m_pixels, 0, std::size_t(m_length));
}

void CKestImage::SetImagePtr(int width, int height, unsigned char* pixels)
{
    const bool empty = (width == 0 && height == 0) || !canHold(width, height) || !pixels;
    const std::size_t length = empty ? 0 : std::size_t(width) * height;
    if (!empty && reusable(width, height)) {
        std::memmove(m_pixels, pixels, length);
        return resize(width, height);
    }
    // The copy is made before the old buffer is freed: the pixels may lie in it.
    unsigned char* copy = empty ? nullptr : newPixels(length);
    if (copy)
        std::memcpy(copy, pixels, length);
    adopt(copy, width, height);
}

void CKestImage::SetImagePtr(int width, int height, int bitsPerPixel, unsigned char* pixels,
                             const char* channels)
{
    if (bitsPerPixel == 8)
        return SetImagePtr(width, height, pixels);
    if (!pixels || !canHold(width, height) || (width == 0 && height == 0))
        return adopt(nullptr, width, height);
    unsigned char* converted = nullptr;
    if (bitsPerPixel == 24)
        converted = ormalux::convert24To8(width, height, pixels, channels);
    else if (bitsPerPixel == 32)
        converted = ormalux::convert32To8(width, height, pixels);
    adopt(converted, width, height);
}

void CKestImage::SetImagePtrLink(int width, int height, unsigned char* pixels)
{
    adopt(canHold(width, height) ? pixels : nullptr, width, height);
    m_linked = true;
}

void CKestImage::SetEmpty()
{
    release();
    m_width = m_height = m_length = 0;
}

unsigned char CKestImage::GetPixel(int x, int y) const
{
    const std::int64_t index = std::int64_t(y) * m_width + x;
    return m_pixels && index >= 0 && index < m_length ? m_pixels[index] : 0;
}

void CKestImage::SetPixel(int x, int y, unsigned char value)
{
    const std::int64_t index = std::int64_t(y) * m_width + x;
    if (m_pixels && index >= 0 && index < m_length)
        m_pixels[index] = value;
}

unsigned char* CKestImage::GetImagePtr(int x1, int y1, int x2, int y2) const
{
    return ormalux::copyOfRectangle(view(), std::min(x1, x2), std::min(y1, y2), std::max(x1, x2),
                                    std::max(y1, y2));
}

CKestImage* CKestImage::GetImage(int, int, int, int) const
{
    return new (std::nothrow) CKestImage;
}

void CKestImage::SetROIPlacement(int x1, int y1, int x2, int y2)
{
    const int left = std::min(x1, x2), top = std::min(y1, y2), right = std::max(x1, x2),
              bottom = std::max(y1, y2);
    if (left < 0 || top < 0 || right >= m_width || bottom >= m_height)
        return;
    // Most of an image moves up within its buffer; a small part gets a buffer of its own and frees the large
    // one.
    const std::int64_t kept = (std::int64_t(right) - left + 1) * (std::int64_t(bottom) - top + 1);
    if (!m_linked && kept > m_length / 2) {
        if (!ormalux::cropInPlace(view(), left, top, right, bottom))
            return;
        resize(x2 - x1 + 1, y2 - y1 + 1);
    } else if (unsigned char* crop = ormalux::copyOfRectangle(view(), left, top, right, bottom)) {
        adopt(crop, x2 - x1 + 1, y2 - y1 + 1);
    }
}

void CKestImage::SetROIPlacement(const RECT& rect)
{
    SetROIPlacement(rect.left, rect.top, rect.right, rect.bottom);
}
