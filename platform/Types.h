#pragma once

#include <cstdint>
#include <string>

/// The value types of the interface: the records that inspection hosts know, 32 bits wide on every platform.

using LONG = std::int32_t;
using DWORD = std::uint32_t;
using BOOL = int;

/// Text in UTF-8; paths too, on every platform.
using CString = std::string;

/// A colour with red in bits 0 to 7, green in bits 8 to 15 and blue in bits 16 to 23.
using COLORREF = std::uint32_t;

constexpr COLORREF RGB(int red, int green, int blue)
{
    return COLORREF(std::uint8_t(red)) | COLORREF(std::uint8_t(green)) << 8 |
           COLORREF(std::uint8_t(blue)) << 16;
}
constexpr std::uint8_t GetRValue(COLORREF color)
{
    return std::uint8_t(color);
}
constexpr std::uint8_t GetGValue(COLORREF color)
{
    return std::uint8_t(color >> 8);
}
constexpr std::uint8_t GetBValue(COLORREF color)
{
    return std::uint8_t(color >> 16);
}

/// A pixel position: x to the right, y downward.
struct POINT
{
    LONG x;
    LONG y;
};

struct SIZE
{
    LONG cx;
    LONG cy;
};

/// A rectangle; whether right and bottom belong to it is said by each operation.
struct RECT
{
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

constexpr bool operator==(const POINT& a, const POINT& b)
{
    return a.x == b.x && a.y == b.y;
}
constexpr bool operator==(const SIZE& a, const SIZE& b)
{
    return a.cx == b.cx && a.cy == b.cy;
}
constexpr bool operator==(const RECT& a, const RECT& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

struct CPoint : POINT
{
    constexpr CPoint() : POINT{0, 0} {}
    constexpr CPoint(int x, int y) : POINT{x, y} {}
    constexpr CPoint(const POINT& point) : POINT(point) {}
};

struct CSize : SIZE
{
    constexpr CSize() : SIZE{0, 0} {}
    constexpr CSize(int cx, int cy) : SIZE{cx, cy} {}
    constexpr CSize(const SIZE& size) : SIZE(size) {}
};

struct CRect : RECT
{
    constexpr CRect() : RECT{0, 0, 0, 0} {}
    constexpr CRect(int left, int top, int right, int bottom) : RECT{left, top, right, bottom} {}
    constexpr CRect(const RECT& rect) : RECT(rect) {}
    constexpr CRect(const POINT& topLeft, const SIZE& size)
        : RECT{topLeft.x, topLeft.y, topLeft.x + size.cx, topLeft.y + size.cy}
    {}
    constexpr int Width() const { return right - left; }
    constexpr int Height() const { return bottom - top; }
    constexpr CSize Size() const { return {Width(), Height()}; }
    constexpr CPoint TopLeft() const { return {left, top}; }
    constexpr CPoint BottomRight() const { return {right, bottom}; }
};

// The display module's types, known here by name only.
class QImage;
class QPainter;
class QWidget;

using CDC = QPainter;
using CWnd = QWidget;
#ifndef _WIN32 // there these names are the system's own, which the toolkit's headers bring in
using HDC = QPainter*;
using HWND = QWidget*;
#endif
