#include "color/VisionImage24.h"

#include "array/WholeAppend.h"
#include "measure/Tracing.h"

using namespace ormalux;

namespace {

/// Appends the colours of the visited pixels.
auto appendColors(const ConstColorView& view, WholeAppend<CColorPixelArray>& whole)
{
    return [view, &whole](int x, int y) {
        const std::uint8_t* p = view.at(x, y);
        whole.add(x, y, p[2], p[1], p[0]);
    };
}

Frame frameOf(const ConstColorView& view)
{
    return {view.width, view.height};
}

} // namespace

int CKestImage24::GetLinePixelArray(long x1, long y1, long x2, long y2, CColorPixelArray& ar) const
{
    WholeAppend whole(ar);
    visitLineInside(frameOf(view()), x1, y1, x2, y2, appendColors(view(), whole));
    return whole.finish();
}

int CKestImage24::GetCyclePixelArray(long cx, long cy, long r, CColorPixelArray& ar) const
{
    WholeAppend whole(ar);
    visitCircleInside(frameOf(view()), {cx, cy, r}, appendColors(view(), whole));
    return whole.finish();
}

int CKestImage24::GetEllipsePixelArray(long cx, long cy, long a, int b, CColorPixelArray& ar) const
{
    WholeAppend whole(ar);
    visitEllipseInside(frameOf(view()), cx, cy, a, b, appendColors(view(), whole));
    return whole.finish();
}

int CKestImage24::GetArcPixelArray(long cx, long cy, long r, int start, int end, CColorPixelArray& ar) const
{
    WholeAppend whole(ar);
    visitArcInside(frameOf(view()), {cx, cy, r}, start, end, appendColors(view(), whole));
    return whole.finish();
}
