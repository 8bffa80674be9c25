#include "view/ImageView.h"

#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "view/ViewState.h"

#include <new>

using ormalux::Picture;
using ormalux::RowOrder;
using Guard = std::lock_guard<std::recursive_mutex>;

int CKestView::GetRowOrder() const
{
    const Guard guard(m->lock);
    return m->image.rowOrder() == RowOrder::TopDown ? TOP_DOWN : BOTTOM_UP;
}

int CKestView::GetWidth() const
{
    const Guard guard(m->lock);
    return m->image.width();
}

int CKestView::GetHeight() const
{
    const Guard guard(m->lock);
    return m->image.height();
}

int CKestView::GetBitCount() const
{
    const Guard guard(m->lock);
    return m->image.bitCount();
}

unsigned char* CKestView::GetImagePtr()
{
    const Guard guard(m->lock);
    return m->image.bits();
}

CKestImage* CKestView::GetImage() const
{
    const Guard guard(m->lock); // no other picture between its size and its pixels
    return GetImage(0, 0, GetWidth(), GetHeight());
}

CKestImage* CKestView::GetImage(int x, int y, int w, int h) const
{
    auto* const image = new (std::nothrow) CKestImage;
    const Guard guard(m->lock);
    Picture part = m->image.part(x, y, w, h, true);
    if (image && !part.empty())
        image->SetImagePtr(part.width, part.height, part.pixels.data());
    return image;
}

CKestImage24* CKestView::GetImage24() const
{
    const Guard guard(m->lock);
    return GetImage24(0, 0, GetWidth(), GetHeight());
}

CKestImage24* CKestView::GetImage24(int x, int y, int w, int h) const
{
    auto* const image = new (std::nothrow) CKestImage24;
    const Guard guard(m->lock);
    if (!image || m->image.bitCount() != 24)
        return image;
    const Picture part = m->image.part(x, y, w, h, false);
    ormalux::ViewImage padded; // holds the part with the padding that the colour image copies
    if (!part.empty() && padded.assign(part.source(), RowOrder::TopDown))
        image->SetImagePtr(part.width, part.height, padded.bits());
    return image;
}

unsigned char CKestView::GetPixel(int x, int y) const
{
    const Guard guard(m->lock);
    const std::uint8_t* const byte = m->image.byteAt(std::int64_t(GetWidth()) * y + x);
    return byte ? *byte : 0;
}

void CKestView::SetPixel(int x, int y, unsigned char value)
{
    const Guard guard(m->lock);
    if (std::uint8_t* const byte = m->image.byteAt(std::int64_t(GetWidth()) * y + x))
        *byte = value;
}

unsigned long CKestView::GetPixel24(int x, int y) const
{
    const Guard guard(m->lock);
    const std::int64_t offset = m->image.hasBuffer() ? m->image.stride() * y + x : 0;
    unsigned long value = 0;
    for (int i = 0; i < 3; ++i)
        if (const std::uint8_t* const byte = m->image.byteAt(offset + i))
            value |= static_cast<unsigned long>(*byte) << (8 * i);
    return value;
}

void CKestView::SetPixel24(int x, int y, unsigned long value)
{
    const Guard guard(m->lock);
    const std::int64_t offset = m->image.hasBuffer() ? m->image.stride() * y + x : 0;
    for (int i = 0; i < 3; ++i)
        if (std::uint8_t* const byte = m->image.byteAt(offset + i))
            *byte = std::uint8_t(value >> (16 - 8 * i));
}
