#include "color/VisionImage24.h"

#include "color/ColorCollection.h"
#include "color/ColorLevels.h"

#include <algorithm>

using namespace ormalux;

namespace {

std::span<std::uint8_t> colorBytesOf(const ColorView& image)
{
    return {image.pixels, std::size_t(image.colorBytes())};
}

/// Puts inclusive corners in order; whether the rectangle lies inside.
bool orderInside(const ConstColorView& image, int& x1, int& y1, int& x2, int& y2)
{
    if (x1 > x2)
        std::swap(x1, x2);
    if (y1 > y2)
        std::swap(y1, y2);
    return !image.empty() && x1 >= 0 && y1 >= 0 && x2 < image.width && y2 < image.height;
}

} // namespace

void CKestImage24::Light(long brightness, long contrast)
{
    if (const auto table = buildLightTable(brightness, contrast))
        applyTable(colorBytesOf(view()), *table);
}

void CKestImage24::Gamma(float gamma)
{
    if (const auto table = buildGammaTable(gamma))
        applyTable(colorBytesOf(view()), *table);
}

void CKestImage24::AutoContrast()
{
    const ColorView image = view();
    if (!image.empty())
        applyTables(image, buildColorContrastTables(countChannelLevels(image), image.pixelCount()));
}

void CKestImage24::WhiteBalance()
{
    WhiteBalance(0, 0, view().width - 1, view().height - 1);
}

void CKestImage24::WhiteBalance(int x1, int y1, int x2, int y2)
{
    const ColorView image = view();
    if (orderInside(image, x1, y1, x2, y2))
        applyTables(image, buildBalanceTables(sumChannels(image, x1, y1, x2, y2)));
}

int CKestImage24::GetPixelArray(COLORREF low, COLORREF high, CColorPixelArray& ar) const
{
    return GetPixelArray(0, 0, view().width - 1, view().height - 1, low, high, ar);
}

int CKestImage24::GetPixelArray(int x1, int y1, int x2, int y2, COLORREF low, COLORREF high,
                                CColorPixelArray& ar) const
{
    const ConstColorView image = view();
    if (orderInside(image, x1, y1, x2, y2))
        collectColors(image, x1, y1, x2, y2, low, high, ar);
    return ar.GetCount();
}
