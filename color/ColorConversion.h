#pragma once

#include "platform/Export.h"

/// Conversions of single colours. Channels are 0 .. 255. Nothing happens when a pointer is null. Safe to call
/// from any thread.
namespace ormalux::color {

/// Hue h in degrees, 0 <= h < 360 and 0 for gray; saturation s = 1 - 3 x min / sum, 0 for black; intensity
/// i = sum / 765. s and i lie in 0 .. 1.
ORMALUX_API void RGBToHSI(unsigned char r, unsigned char g, unsigned char b, double* h, double* s, double* i);
/// The inverse by sectors of 120 degrees, rounded to nearest and clamped; h is taken modulo 360. Every colour
/// survives RGBToHSI and back. Values that are not finite give black.
ORMALUX_API void HSIToRGB(double h, double s, double i, unsigned char* r, unsigned char* g, unsigned char* b);
/// Full black generation without rescaling: K = min(255 - R, 255 - G, 255 - B), C = 255 - R - K and so on.
ORMALUX_API void RGBToCMYK(unsigned char r, unsigned char g, unsigned char b, unsigned char* c,
                           unsigned char* m, unsigned char* y, unsigned char* k);
/// R = max(0, 255 - C - K) and so on; the exact inverse of RGBToCMYK.
ORMALUX_API void CMYKToRGB(unsigned char c, unsigned char m, unsigned char y, unsigned char k,
                           unsigned char* r, unsigned char* g, unsigned char* b);
/// (R + G + B) / 3 in integers; not the weighted luma, which is CKestImage24::GetYSpace.
ORMALUX_API unsigned char RGBToGray(unsigned char r, unsigned char g, unsigned char b);
/// All three equal.
ORMALUX_API void GrayToRGB(unsigned char gray, unsigned char* r, unsigned char* g, unsigned char* b);

} // namespace ormalux::color
