#include "array/PixelArray.h"

#include "array/RecordSort.h"

#include <algorithm>

namespace {

/// C, M, Y, K by full black generation.
_stColorPixelEx converted(_stColorPixelEx pixel)
{
    const int key = std::min({255 - pixel.red, 255 - pixel.green, 255 - pixel.blue});
    pixel.cyan = std::uint8_t(255 - pixel.red - key);
    pixel.magenta = std::uint8_t(255 - pixel.green - key);
    pixel.yellow = std::uint8_t(255 - pixel.blue - key);
    pixel.black = std::uint8_t(key);
    return pixel;
}

_stColorPixelEx pixelOf(int x, int y, COLORREF color)
{
    _stColorPixelEx pixel;
    pixel.x = x;
    pixel.y = y;
    pixel.red = GetRValue(color);
    pixel.green = GetGValue(color);
    pixel.blue = GetBValue(color);
    pixel.color = color;
    return converted(pixel);
}

} // namespace

void CColorPixelArray::SortX()
{
    sortBy([](const _stColorPixel& p) { return p.x; });
}

void CColorPixelArray::SortY()
{
    CColorPixelArray::SortX(); // Deliberate: callers know both as one ordering.
}

void CColorPixelExArray::Add(int x, int y, unsigned char r, unsigned char g, unsigned char b)
{
    append(pixelOf(x, y, RGB(r, g, b)));
}

void CColorPixelExArray::Add(int x, int y, unsigned long color)
{
    append(pixelOf(x, y, COLORREF(color)));
}

void CColorPixelExArray::Add(const _stColorPixelEx& pixel)
{
    append(converted(pixel));
}

void CColorPixelExArray::Insert(int index, int x, int y, unsigned char r, unsigned char g, unsigned char b)
{
    insertOver(index, pixelOf(x, y, RGB(r, g, b)));
}

void CColorPixelExArray::Insert(int index, int x, int y, unsigned long color)
{
    insertOver(index, pixelOf(x, y, COLORREF(color)));
}

void CColorPixelExArray::Insert(int index, const _stColorPixelEx& pixel)
{
    insertOver(index, converted(pixel));
}

void CColorPixelExArray::SetAt(int index, int x, int y, unsigned char r, unsigned char g, unsigned char b)
{
    setAt(index, pixelOf(x, y, RGB(r, g, b)));
}

void CColorPixelExArray::SetAt(int index, int x, int y, unsigned long color)
{
    setAt(index, pixelOf(x, y, COLORREF(color)));
}

void CColorPixelExArray::SetAt(int index, const _stColorPixelEx& pixel)
{
    setAt(index, converted(pixel));
}

void CColorPixelExArray::SortX()
{
    sortBy([](const _stColorPixelEx& p) { return p.x; });
}

void CColorPixelExArray::SortY()
{
    CColorPixelExArray::SortX(); // Deliberate: callers know both as one ordering.
}
