#include "view/ImageView.h"

#include "view/ViewState.h"
#include "view/ViewTracker.h"

#include <QScrollBar>
#include <QStyle>
#include <QThread>

#include <atomic>

using ormalux::toDevice;
using ormalux::ViewGeometry;
using Guard = std::lock_guard<std::recursive_mutex>;

namespace {

std::atomic<bool> parentThreadMode{false};

constexpr float divisor = 2.5f;

/// Tells a zoom that is another one at its end: made before the lock is taken, it does so without it, since
/// hosts may wait for their threads there.
class ZoomTelling
{
public:
    explicit ZoomTelling(CKestView& view) : m_view(view), m_before(view.GetZoom()) {}
    ~ZoomTelling()
    {
        if (m_view.GetZoom() != m_before)
            Q_EMIT m_view.zoomChanged(m_view.GetZoom());
    }
    ZoomTelling(const ZoomTelling&) = delete;
    ZoomTelling& operator=(const ZoomTelling&) = delete;

private:
    CKestView& m_view;
    const float m_before;
};

/// The client area that is left beside the scroll bars that a content of the size needs.
QSize besideBars(QSize room, QSize content, QSize bars)
{
    const bool tall = content.height() > room.height();
    const bool across = content.width() > room.width() - (tall ? bars.width() : 0);
    const bool down = content.height() > room.height() - (across ? bars.height() : 0);
    return {room.width() - (down ? bars.width() : 0), room.height() - (across ? bars.height() : 0)};
}

void setBar(QScrollBar* bar, int content, int page)
{
    bar->setRange(0, std::max(0, content - page));
    bar->setPageStep(std::max(1, page));
    bar->setSingleStep(std::max(1, content / 100));
}

} // namespace

void CKestView::SetParentThreadMode(int mode)
{
    parentThreadMode = mode == 1;
}

/// Asked of the view's own size and not of its viewport, so that a view that was never shown answers the
/// same.
QSize CKestView::clientSize() const
{
    const bool floating =
        style()->styleHint(QStyle::SH_ScrollBar_Transient, nullptr, horizontalScrollBar()) != 0;
    const QSize bars =
        floating ? QSize(0, 0)
                 : QSize(verticalScrollBar()->sizeHint().width(), horizontalScrollBar()->sizeHint().height());
    return besideBars(maximumViewportSize(), m->scrollSize, bars).expandedTo({0, 0});
}

/// Where the picture lies now: centred at the fit zoom only.
ViewGeometry CKestView::placement() const
{
    const Guard guard(m->lock);
    ViewGeometry geometry;
    geometry.zoom = m->zoom;
    geometry.scroll = {horizontalScrollBar()->value(), verticalScrollBar()->value()};
    if (!m->image.hasPicture())
        return geometry;
    geometry.picture = {m->image.width(), m->image.height()};
    if (m->zoom == m->fitZoom) {
        // A picture larger than the view starts at its corner, where scrolling can reach all of it.
        const QSize room = (clientSize() - geometry.shown()).expandedTo({0, 0});
        geometry.center = {room.width() / 2, room.height() / 2};
    }
    return geometry;
}

void CKestView::updateScrollSizes()
{
    if (QThread::currentThread() != thread()) {
        QMetaObject::invokeMethod(
            this, [this] { updateScrollSizes(); }, Qt::QueuedConnection);
        return;
    }
    if (!parentThreadMode)
        m->scrollSize = placement().shown();
    layOutBars();
}

void CKestView::layOutBars()
{
    const QSize client = clientSize();
    setBar(horizontalScrollBar(), m->scrollSize.width(), client.width());
    setBar(verticalScrollBar(), m->scrollSize.height(), client.height());
    // The toolkit shows and hides the bars only with the next events; this lays them out at once.
    setViewportMargins(viewportMargins());
}

void CKestView::scrollTo(QPoint position)
{
    horizontalScrollBar()->setValue(position.x());
    verticalScrollBar()->setValue(position.y());
}

void CKestView::ZoomFitTo()
{
    if (QThread::currentThread() != thread()) { // a picture was loaded there
        QMetaObject::invokeMethod(
            this, [this] { ZoomFitTo(); }, Qt::QueuedConnection);
        return;
    }
    const ZoomTelling telling(*this);
    const Guard guard(m->lock);
    // Fitted pictures need no scroll bars: the whole room is theirs.
    const QSize picture = m->image.hasPicture() ? QSize(GetWidth(), GetHeight()) : QSize();
    m->fitZoom = m->zoom = ormalux::fitZoomOf(maximumViewportSize(), picture);
    m->fitAsked = true;
    updateScrollSizes();
    requestPaint();
}

void CKestView::Zoom100()
{
    const ZoomTelling telling(*this);
    const Guard guard(m->lock);
    m->zoom = 1.0f;
    updateScrollSizes();
    requestPaint();
}

void CKestView::ZoomPlus(float step)
{
    const ZoomTelling telling(*this);
    const Guard guard(m->lock);
    const QSize oldShown = placement().shown();
    m->zoom += step;
    if (!(m->zoom < ormalux::largestZoom))
        m->zoom = ormalux::largestZoom;
    if (m->zoom <= m->fitZoom) {
        m->zoom = m->fitZoom;
        scrollTo({0, 0});
    }
    const QPoint oldScroll(horizontalScrollBar()->value(), verticalScrollBar()->value());
    zoomedFrom(oldShown, oldScroll);
}

void CKestView::ZoomMinus(float step)
{
    const ZoomTelling telling(*this);
    const Guard guard(m->lock);
    const QSize oldShown = placement().shown();
    const QPoint oldScroll(horizontalScrollBar()->value(), verticalScrollBar()->value());
    m->zoom -= step;
    if (!(m->zoom < ormalux::largestZoom))
        m->zoom = ormalux::largestZoom;
    if (m->zoom > m->fitZoom) {
        updateScrollSizes();
        const QSize client = clientSize();
        if (float(client.width()) > float(GetWidth()) * m->zoom &&
            float(client.height()) > float(GetHeight()) * m->zoom)
            m->zoom = m->fitZoom;
    } else {
        m->zoom = m->fitZoom;
    }
    if (m->zoom != m->fitZoom)
        return zoomedFrom(oldShown, oldScroll);
    updateScrollSizes();
    scrollTo({0, 0});
    requestPaint();
}

/// After a change of the zoom: scrolls by the growth of the shown picture.
void CKestView::zoomedFrom(QSize oldShown, QPoint oldScroll)
{
    updateScrollSizes();
    const QSize shown = placement().shown();
    // Deliberate: 2.5 and not 2; operators are used to where the picture moves.
    scrollTo({int(float(shown.width() - oldShown.width()) / divisor + float(oldScroll.x())),
              int(float(shown.height() - oldShown.height()) / divisor + float(oldScroll.y()))});
    requestPaint();
}

/// Zooms so that the point of the picture at the device point stays there as far as scrolling allows.
void CKestView::zoomAbout(QPointF device, float step)
{
    const ViewGeometry before = placement();
    const QPointF held = (device - before.center + before.scroll) / double(before.zoom);
    if (step > 0)
        ZoomPlus(step);
    else
        ZoomMinus(-step);
    if (m->zoom != m->fitZoom)
        scrollTo((held * double(m->zoom) - device).toPoint());
}

float CKestView::GetZoom() const
{
    return m->zoom;
}

float CKestView::GetFitZoom() const
{
    return m->fitZoom;
}

CPoint CKestView::DeviceToImage(const QPointF& device) const
{
    return placement().toImage(device);
}

CPoint CKestView::ImageToDevice(int x, int y) const
{
    return placement().toDevicePoint(x, y);
}

void CKestView::resizeEvent(QResizeEvent*)
{
    if (m->fitAsked && m->zoom == m->fitZoom)
        ZoomFitTo();
    else
        layOutBars();
}

void CKestView::scrollContentsBy(int, int)
{
    viewport()->update();
}

void CKestView::Reveal(const RECT& rect)
{
    const ViewGeometry now = placement();
    const CPoint from = now.toDevicePoint(rect.left, rect.top);
    const CPoint to = now.toDevicePoint(ormalux::shifted(rect.right, 1), ormalux::shifted(rect.bottom, 1));
    const QSize client = clientSize();
    // An end that is outside comes inside; of a rectangle larger than the view the beginning does.
    const auto shift = [](int begin, int end, int length) {
        if (begin < 0 || std::int64_t(end) - begin > length)
            return begin;
        return end > length ? end - length : 0;
    };
    const bool across = from.x < 0 || to.x > client.width();
    const bool down = from.y < 0 || to.y > client.height();
    if (across || down)
        scrollTo({ormalux::shifted(now.scroll.x(), across ? shift(from.x, to.x, client.width()) : 0),
                  ormalux::shifted(now.scroll.y(), down ? shift(from.y, to.y, client.height()) : 0)});
}
