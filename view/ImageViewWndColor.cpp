#include "view/ImageViewWnd.h"

#include "color/ColorConversion.h"

namespace color = ormalux::color;

void CKestWnd::RGBToHSI(unsigned char r, unsigned char g, unsigned char b, double* h, double* s, double* i)
{
    color::RGBToHSI(r, g, b, h, s, i);
}

void CKestWnd::HSIToRGB(double h, double s, double i, unsigned char* r, unsigned char* g, unsigned char* b)
{
    color::HSIToRGB(h, s, i, r, g, b);
}

void CKestWnd::RGBToCMYK(unsigned char r, unsigned char g, unsigned char b, unsigned char* c,
                         unsigned char* m, unsigned char* y, unsigned char* k)
{
    color::RGBToCMYK(r, g, b, c, m, y, k);
}

void CKestWnd::CMYKToRGB(unsigned char c, unsigned char m, unsigned char y, unsigned char k, unsigned char* r,
                         unsigned char* g, unsigned char* b)
{
    color::CMYKToRGB(c, m, y, k, r, g, b);
}

unsigned char CKestWnd::RGBToGray(unsigned char r, unsigned char g, unsigned char b)
{
    return color::RGBToGray(r, g, b);
}

void CKestWnd::GrayToRGB(unsigned char gray, unsigned char* r, unsigned char* g, unsigned char* b)
{
    color::GrayToRGB(gray, r, g, b);
}
