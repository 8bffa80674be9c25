#include "view/ViewToolHost.h"

#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "view/ImageView.h"
#include "view/ViewState.h"
#include "view/ViewTracker.h"

#include <QTimer>

#include <new>
#include <utility>

namespace ormalux {

using Guard = std::lock_guard<std::recursive_mutex>;

ViewToolHost::ViewToolHost(CKestView& view) : m_view(view)
{
    connect(&view, &CKestView::imageChanged, this, &ViewToolHost::pictureTouched);
    connect(&view, &CKestView::imageEdited, this, &ViewToolHost::pictureTouched);
    connect(&view, &CKestView::trackerChanged, this, &ToolHost::areaChanged);
    connect(&view, &CKestView::zoomChanged, this, &ToolHost::zoomChanged);
    connect(&view, &CKestView::pixelClicked, this, &ToolHost::pixelClicked);
    connect(&view, &CKestView::rubberBandEnded, this, [this](int x1, int y1, int x2, int y2) {
        if (std::exchange(m_pickingLine, false))
            Q_EMIT linePicked(x1, y1, x2, y2);
    });
}

/// Several changes at once, as a command makes them, are told once.
void ViewToolHost::pictureTouched()
{
    m_gray.reset();
    if (std::exchange(m_telling, true))
        return;
    QTimer::singleShot(0, this, [this] {
        m_telling = false;
        Q_EMIT pictureChanged();
    });
}

CSize ViewToolHost::size() const
{
    const Guard guard(m_view.GetLock());
    return m_view.m->image.hasPicture() ? CSize(m_view.GetWidth(), m_view.GetHeight()) : CSize(0, 0);
}

bool ViewToolHost::isColor() const
{
    return m_view.GetBitCount() == 24;
}

std::shared_ptr<const CKestImage> ViewToolHost::grayPicture()
{
    if (!m_gray) {
        std::shared_ptr<CKestImage> gray(m_view.GetImage());
        if (gray && !gray->IsEmpty())
            m_gray = std::move(gray);
    }
    return m_gray;
}

std::shared_ptr<const CKestImage24> ViewToolHost::colorPicture()
{
    if (!isColor())
        return nullptr;
    std::shared_ptr<CKestImage24> color(m_view.GetImage24());
    return color && !color->IsEmpty() ? color : nullptr;
}

std::string ViewToolHost::pictureFile() const
{
    const Guard guard(m_view.GetLock());
    return m_view.m->file;
}

CRect ViewToolHost::area() const
{
    const CSize whole = size();
    CRect area(0, 0, whole.cx - 1, whole.cy - 1);
    const CRect tracker = m_view.GetTrackerRect();
    if (!m_view.IsTrackerMode() || isNothing(tracker))
        return area;
    const CRect inside(std::max(tracker.left, area.left), std::max(tracker.top, area.top),
                       std::min(tracker.right, area.right), std::min(tracker.bottom, area.bottom));
    // A region beside the picture is none.
    return inside.left <= inside.right && inside.top <= inside.bottom ? inside : area;
}

/// Makes a copy of the picture, or of its gray form, and runs the operation on it.
bool ViewToolHost::tryOn(ViewImage& copy, const GrayOperation& gray, const ColorOperation& color,
                         ColorRows rows) const
{
    const ViewImage& image = m_view.m->image;
    if (!image.hasPicture())
        return false;
    if (isColor() && !color) {
        const Picture form = image.part(0, 0, image.width(), image.height(), true);
        return !form.empty() && copy.assign(form.source(), RowOrder::TopDown) && gray && copy.edit(gray);
    }
    if (!copy.assign(image.source(), RowOrder::TopDown))
        return false;
    return isColor() ? copy.edit(color, rows) : gray && copy.edit(gray);
}

bool ViewToolHost::preview(const void* owner, const GrayOperation& gray, const ColorOperation& color,
                           ColorRows rows)
{
    const Guard guard(m_view.GetLock());
    // The memory of the last preview serves the next one: fresh pages take longer than most operations.
    std::unique_ptr<ViewImage> tried = std::move(m_view.m->preview);
    if (!tried)
        tried.reset(new (std::nothrow) ViewImage);
    m_view.requestPaint();
    if (!tried || !tryOn(*tried, gray, color, rows))
        return false;
    m_view.m->preview = std::move(tried);
    m_previewOwner = owner;
    return true;
}

void ViewToolHost::endPreview(const void* owner)
{
    if (owner != m_previewOwner)
        return;
    const Guard guard(m_view.GetLock());
    m_view.m->preview.reset();
    m_previewOwner = nullptr;
    m_view.requestPaint();
}

bool ViewToolHost::apply(const GrayOperation& gray, const ColorOperation& color, ColorRows rows)
{
    const bool run = m_view.EditImage(gray, color, rows);
    m_view.requestPaint();
    return run;
}

void ViewToolHost::clearLayer(const char* layer)
{
    const Guard guard(m_view.GetLock());
    m_view.GetOverlays().RemoveGraphics(layer);
}

void ViewToolHost::addLine(const char* layer, POINT from, POINT to, Stroke stroke)
{
    const Guard guard(m_view.GetLock());
    m_view.GetOverlays().AddLine(from.x, from.y, to.x, to.y, stroke.style, stroke.width, stroke.color, layer);
}

void ViewToolHost::addRectangle(const char* layer, const RECT& rect, Stroke stroke)
{
    const Guard guard(m_view.GetLock());
    m_view.GetOverlays().AddRectangle(rect.left, rect.top, rect.right, rect.bottom, stroke.style,
                                      stroke.width, stroke.color, layer);
}

void ViewToolHost::addCross(const char* layer, POINT center, int arm, Stroke stroke)
{
    const Guard guard(m_view.GetLock());
    m_view.GetOverlays().AddCrossLine(center.x, center.y, arm, stroke.style, stroke.width, stroke.color,
                                      layer);
}

void ViewToolHost::addLabel(const char* layer, const RECT& rect, LabelPlace place, const std::string& text,
                            COLORREF color)
{
    const LABEL_PLACE wished = place == LabelPlace::Above   ? LABEL_ABOVE
                               : place == LabelPlace::Below ? LABEL_BELOW
                                                            : LABEL_CORNER;
    const Guard guard(m_view.GetLock());
    m_view.GetOverlays().AddLabel(rect, wished, text.c_str(), color, layer);
}

void ViewToolHost::repaint()
{
    m_view.requestPaint();
}

void ViewToolHost::reveal(const RECT& rect)
{
    m_view.Reveal(rect);
}

void ViewToolHost::pickLine()
{
    m_pickingLine = true;
    m_view.Tool(TOOL_LINE);
}

void ViewToolHost::cancelPick()
{
    if (std::exchange(m_pickingLine, false))
        m_view.Tool(TOOL_NONE);
}

double ViewToolHost::zoom() const
{
    return double(m_view.GetZoom());
}

} // namespace ormalux
