#include "view/ImageViewWnd.h"

#include "view/WindowState.h"

#include <algorithm>
#include <cstdint>
#include <mutex>

namespace {

int clamped(std::int64_t value)
{
    return int(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
}

/// The view's overlays, held against the painting thread while this lives.
struct HeldOverlays
{
    explicit HeldOverlays(CKestView& view) : guard(view.GetLock()), list(view.GetOverlays()) {}
    CDrawObjArray* operator->() const { return &list; }

    std::lock_guard<std::recursive_mutex> guard;
    CDrawObjArray& list;
};

} // namespace

void CKestWnd::AddLine(int x1, int y1, int x2, int y2, int style, int width, COLORREF color, const char* tag)
{
    HeldOverlays(*m->view)->AddLine(x1, y1, x2, y2, style, width, color, tag);
}

void CKestWnd::AddLine(CPoint from, CPoint to, int style, int width, COLORREF color, const char* tag)
{
    AddLine(from.x, from.y, to.x, to.y, style, width, color, tag);
}

void CKestWnd::AddArrow(int x1, int y1, int x2, int y2, int head, int style, int width, COLORREF color,
                        const char* tag)
{
    HeldOverlays(*m->view)->AddArrow(x1, y1, x2, y2, head, style, width, color, tag);
}

void CKestWnd::AddArrow(CPoint from, CPoint to, int head, int style, int width, COLORREF color,
                        const char* tag)
{
    AddArrow(from.x, from.y, to.x, to.y, head, style, width, color, tag);
}

void CKestWnd::AddRectangle(int x1, int y1, int x2, int y2, int style, int width, COLORREF color,
                            const char* tag)
{
    HeldOverlays(*m->view)->AddRectangle(x1, y1, x2, y2, style, width, color, tag);
}

void CKestWnd::AddRectangle(CRect rect, int style, int width, COLORREF color, const char* tag)
{
    AddRectangle(rect.left, rect.top, rect.right, rect.bottom, style, width, color, tag);
}

void CKestWnd::AddEllipse(int x1, int y1, int x2, int y2, int style, int width, COLORREF color,
                          const char* tag)
{
    HeldOverlays(*m->view)->AddEllipse(x1, y1, x2, y2, style, width, color, tag);
}

void CKestWnd::AddEllipse(CRect rect, int style, int width, COLORREF color, const char* tag)
{
    AddEllipse(rect.left, rect.top, rect.right, rect.bottom, style, width, color, tag);
}

void CKestWnd::AddEllipse(CPoint center, int radius, int style, int width, COLORREF color, const char* tag)
{
    const std::int64_t r = radius;
    AddEllipse(clamped(center.x - r), clamped(center.y - r), clamped(center.x + r), clamped(center.y + r),
               style, width, color, tag);
}

void CKestWnd::AddCrossLine(int x, int y, int arm, int style, int width, COLORREF color, const char* tag)
{
    HeldOverlays(*m->view)->AddCrossLine(x, y, arm, style, width, color, tag);
}

void CKestWnd::AddCrossLine(CPoint center, int arm, int style, int width, COLORREF color, const char* tag)
{
    AddCrossLine(center.x, center.y, arm, style, width, color, tag);
}

void CKestWnd::AddText(int x, int y, const char* text, int size, COLORREF color, const char* tag)
{
    HeldOverlays(*m->view)->AddText(x, y, text, size, color, tag);
}

void CKestWnd::AddLabel(const CRect& box, LABEL_PLACE place, const char* text, COLORREF color,
                        const char* tag)
{
    HeldOverlays(*m->view)->AddLabel(box, place, text, color, tag);
}

void CKestWnd::AddText(CPoint at, const char* text, int size, COLORREF color, const char* tag)
{
    AddText(at.x, at.y, text, size, color, tag);
}

void CKestWnd::AddPolyline(POINT* points, int count, int style, int width, COLORREF color, const char* tag)
{
    HeldOverlays(*m->view)->AddPolyline(points, count, style, width, color, tag);
}

void CKestWnd::RemoveGraphics(const char* tag)
{
    HeldOverlays(*m->view)->RemoveGraphics(tag);
}

void CKestWnd::RemoveAllGraphics()
{
    HeldOverlays(*m->view)->RemoveAllGraphics();
}
