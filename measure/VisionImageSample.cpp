#include "image/VisionImage.h"

#include "array/WholeAppend.h"
#include "measure/Tracing.h"

using namespace ormalux;

namespace {

/// Appends the visited pixels whose level lies in low .. high.
auto appendLevels(const ConstGrayView& view, unsigned char low, unsigned char high,
                  WholeAppend<CPixelArray>& whole)
{
    return [view, low, high, &whole](int x, int y) {
        const std::uint8_t level = view.row(y)[x];
        if (low <= level && level <= high)
            whole.add(x, y, level, 0.0);
    };
}

Frame frameOf(const ConstGrayView& view)
{
    return {view.width, view.height};
}

} // namespace

int CKestImage::GetLinePixelArray(long x1, long y1, long x2, long y2, unsigned char low, unsigned char high,
                                  CPixelArray& ar) const
{
    WholeAppend whole(ar);
    visitLineInside(frameOf(view()), x1, y1, x2, y2, appendLevels(view(), low, high, whole));
    return whole.finish();
}

int CKestImage::GetCyclePixelArray(long cx, long cy, long r, unsigned char low, unsigned char high,
                                   CPixelArray& ar) const
{
    WholeAppend whole(ar);
    visitCircleInside(frameOf(view()), {cx, cy, r}, appendLevels(view(), low, high, whole));
    return whole.finish();
}

int CKestImage::GetEllipsePixelArray(long cx, long cy, long a, int b, unsigned char low, unsigned char high,
                                     CPixelArray& ar) const
{
    WholeAppend whole(ar);
    visitEllipseInside(frameOf(view()), cx, cy, a, b, appendLevels(view(), low, high, whole));
    return whole.finish();
}

int CKestImage::GetArcPixelArray(long cx, long cy, long r, int start, int end, unsigned char low,
                                 unsigned char high, CPixelArray& ar) const
{
    WholeAppend whole(ar);
    visitArcInside(frameOf(view()), {cx, cy, r}, start, end, appendLevels(view(), low, high, whole));
    return whole.finish();
}
