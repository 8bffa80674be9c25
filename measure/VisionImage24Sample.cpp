#include "color/VisionImage24.h"

#include "measure/Tracing.h"

using namespace ormalux;

namespace {

/// Appends the colours of the visited pixels.
auto appendColors(const ConstColorView& view, CColorPixelArray& ar)
{
    return [view, &ar](int x, int y) {
        const std::uint8_t* p = view.at(x, y);
        ar.Add(x, y, p[2], p[1], p[0]);
    };
}

Frame frameOf(const ConstColorView& view)
{
    return {view.width, view.height};
}

} // namespace

int CKestImage24::GetLinePixelArray(long x1, long y1, long x2, long y2, CColorPixelArray& ar) const
{
    visitLineInside(frameOf(view()), x1, y1, x2, y2, appendColors(view(), ar));
    return ar.GetCount();
}

int CKestImage24::GetCyclePixelArray(long cx, long cy, long r, CColorPixelArray& ar) const
{
    visitCircleInside(frameOf(view()), {cx, cy, r}, appendColors(view(), ar));
    return ar.GetCount();
}

int CKestImage24::GetEllipsePixelArray(long cx, long cy, long a, int b, CColorPixelArray& ar) const
{
    visitEllipseInside(frameOf(view()), cx, cy, a, b, appendColors(view(), ar));
    return ar.GetCount();
}

int CKestImage24::GetArcPixelArray(long cx, long cy, long r, int start, int end, CColorPixelArray& ar) const
{
    visitArcInside(frameOf(view()), {cx, cy, r}, start, end, appendColors(view(), ar));
    return ar.GetCount();
}
