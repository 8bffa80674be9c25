#include "color/ColorConversion.h"

#include "color/ColorFormulas.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ormalux::color {

namespace {

constexpr double radiansPerDegree = std::numbers::pi / 180;

unsigned char toByte(double fraction)
{
    // Not below 0 covers what is not a number too.
    const double rounded = std::floor(fraction * 255 + 0.5);
    return rounded > 0 ? static_cast<unsigned char>(std::min(rounded, 255.0)) : 0;
}

} // namespace

void RGBToHSI(unsigned char r, unsigned char g, unsigned char b, double* h, double* s, double* i)
{
    if (!h || !s || !i)
        return;
    const int sum = r + g + b;
    *h = formula::hueAngle(b, g, r, 180 / std::numbers::pi);
    *s = sum == 0 ? 0 : 1 - 3.0 * formula::smallest(b, g, r) / sum;
    *i = sum / 765.0;
}

void HSIToRGB(double h, double s, double i, unsigned char* r, unsigned char* g, unsigned char* b)
{
    if (!r || !g || !b)
        return;
    if (!std::isfinite(h) || !std::isfinite(s) || !std::isfinite(i)) {
        *r = *g = *b = 0;
        return;
    }
    h = std::fmod(h, 360);
    if (h < 0)
        h += 360;
    const int sector = h < 120 ? 0 : h < 240 ? 1 : 2;
    h -= sector * 120;
    const double low = i * (1 - s);
    const double high = i * (1 + s * std::cos(h * radiansPerDegree) / std::cos((60 - h) * radiansPerDegree));
    const double rest = 3 * i - (low + high);
    // The channels after the sector's main one follow it in the circle red, green, blue.
    unsigned char* const circle[] = {r, g, b, r, g};
    *circle[sector] = toByte(high);
    *circle[sector + 1] = toByte(rest);
    *circle[sector + 2] = toByte(low);
}

void RGBToCMYK(unsigned char r, unsigned char g, unsigned char b, unsigned char* c, unsigned char* m,
               unsigned char* y, unsigned char* k)
{
    if (!c || !m || !y || !k)
        return;
    *c = formula::cyan(b, g, r);
    *m = formula::magenta(b, g, r);
    *y = formula::yellow(b, g, r);
    *k = formula::black(b, g, r);
}

void CMYKToRGB(unsigned char c, unsigned char m, unsigned char y, unsigned char k, unsigned char* r,
               unsigned char* g, unsigned char* b)
{
    if (!r || !g || !b)
        return;
    const auto left = [k](int ink) { return static_cast<unsigned char>(std::max(0, 255 - ink - k)); };
    *r = left(c);
    *g = left(m);
    *b = left(y);
}

unsigned char RGBToGray(unsigned char r, unsigned char g, unsigned char b)
{
    return formula::mean(b, g, r);
}

void GrayToRGB(unsigned char gray, unsigned char* r, unsigned char* g, unsigned char* b)
{
    if (!r || !g || !b)
        return;
    *r = *g = *b = gray;
}

} // namespace ormalux::color
