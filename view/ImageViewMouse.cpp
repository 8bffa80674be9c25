#include "view/ImageView.h"

#include "view/ViewState.h"
#include "view/ViewTracker.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <cstdlib>
#include <utility>

using ormalux::Drag;
using ormalux::DragState;
using ormalux::HoveredPixel;
using ormalux::ViewGeometry;

namespace {

constexpr float wheelStep = 1.0f;
constexpr int wheelNotch = 120;

/// The cursors over the tracker: its body, then its handles from the left top corner clockwise.
constexpr Qt::CursorShape trackerCursors[] = {Qt::SizeAllCursor,   Qt::SizeFDiagCursor, Qt::SizeVerCursor,
                                              Qt::SizeBDiagCursor, Qt::SizeHorCursor,   Qt::SizeFDiagCursor,
                                              Qt::SizeVerCursor,   Qt::SizeBDiagCursor, Qt::SizeHorCursor};

} // namespace

/// A drawing tool comes before the tracker, the tracker before panning.
void CKestView::startDrag(QPointF device)
{
    const ViewGeometry now = placement();
    DragState drag;
    drag.kind = Drag::Idle;
    drag.anchorDevice = device;
    drag.anchorImage = drag.currentImage = now.toImage(device);
    drag.anchorScroll = now.scroll;
    if (m->tool != TOOL_NONE) {
        drag.kind = Drag::RubberBand;
    } else if (m->trackerMode) {
        drag.kind = Drag::Tracker;
        drag.handle = ormalux::isNothing(m->tracker)
                          ? ormalux::trackerMiss
                          : ormalux::hitTracker(now.toDeviceRect(ormalux::ordered(m->tracker)), device);
        drag.tracker = ormalux::ordered(m->tracker);
    } else if (m->zoom != m->fitZoom) {
        drag.kind = Drag::Pan;
        viewport()->setCursor(Qt::ClosedHandCursor);
    }
    m->drag = drag;
}

void CKestView::continueDrag(QPointF device)
{
    DragState& drag = m->drag;
    drag.moved = drag.moved || device != drag.anchorDevice;
    if (drag.kind == Drag::Pan)
        scrollTo(drag.anchorScroll - (device - drag.anchorDevice).toPoint());
    drag.currentImage = placement().toImage(device);
    if (drag.kind == Drag::Tracker) {
        const CPoint& from = drag.anchorImage;
        const CPoint& to = drag.currentImage;
        drag.tracker = drag.handle == ormalux::trackerMiss
                           ? CRect(from.x, from.y, to.x, to.y)
                           : ormalux::draggedTracker(ormalux::ordered(m->tracker), drag.handle, to.x - from.x,
                                                     to.y - from.y);
    }
    if (drag.kind != Drag::Idle)
        viewport()->update();
}

void CKestView::moveTracker(const CRect& rect)
{
    {
        const std::lock_guard guard(m->lock);
        m->tracker = rect;
    }
    viewport()->update();
    Q_EMIT trackerChanged();
}

void CKestView::endTrackerDrag()
{
    const DragState drag = std::exchange(m->drag, {});
    if (drag.moved) // a click alone leaves the tracker as it is
        moveTracker(ormalux::ordered(drag.tracker));
}

void CKestView::endRubberBand()
{
    const DragState drag = std::exchange(m->drag, {});
    m->tool = TOOL_NONE;
    viewport()->update();
    Q_EMIT rubberBandEnded(drag.anchorImage.x, drag.anchorImage.y, drag.currentImage.x, drag.currentImage.y);
    if (m->upProc)
        m->upProc(drag.anchorImage.x, drag.anchorImage.y, drag.currentImage.x, drag.currentImage.y, this);
}

void CKestView::mousePressEvent(QMouseEvent* event)
{
    event->accept();
    if (!m->mouseEnabled)
        return;
    if (event->button() == Qt::LeftButton) {
        setFocus(Qt::MouseFocusReason);
        startDrag(event->position());
    } else if (event->button() == Qt::RightButton && m->drag.kind == Drag::None) {
        openMenu(event->globalPosition().toPoint());
    }
}

/// The second press of a double click is a press like any other.
void CKestView::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event);
}

void CKestView::mouseMoveEvent(QMouseEvent* event)
{
    event->accept();
    const QPointF device = event->position();
    if (m->drag.kind != Drag::None && !(event->buttons() & Qt::LeftButton)) {
        m->drag = {}; // the release went elsewhere
        viewport()->update();
    }
    hover(device);
    if (m->drag.kind == Drag::None)
        return chooseCursor(device);
    continueDrag(device);
    const CPoint from = m->drag.anchorImage;
    const CPoint to = m->drag.currentImage;
    if (m->moveProc)
        m->moveProc(from.x, from.y, to.x, to.y, this);
}

void CKestView::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
    if (event->button() != Qt::LeftButton || m->drag.kind == Drag::None)
        return;
    if (event->position() != m->drag.anchorDevice || m->drag.moved)
        continueDrag(event->position());
    const bool click = !m->drag.moved && m->drag.kind != Drag::RubberBand;
    const CPoint pixel = m->drag.anchorImage;
    if (m->drag.kind == Drag::Tracker)
        endTrackerDrag();
    else if (m->drag.kind == Drag::RubberBand)
        endRubberBand();
    else
        m->drag = {};
    chooseCursor(event->position());
    const auto hit = [this, pixel] {
        const std::lock_guard guard(m->lock);
        return m->image.valueAt(pixel.x, pixel.y).has_value();
    };
    if (click && hit())
        Q_EMIT pixelClicked(pixel.x, pixel.y);
}

void CKestView::chooseCursor(QPointF device)
{
    Qt::CursorShape shape = m->zoom != m->fitZoom ? Qt::OpenHandCursor : Qt::ArrowCursor;
    if (!m->mouseEnabled) {
        shape = Qt::ArrowCursor;
    } else if (m->tool != TOOL_NONE) {
        shape = Qt::CrossCursor;
    } else if (m->trackerMode) {
        const int hit =
            ormalux::isNothing(m->tracker)
                ? ormalux::trackerMiss
                : ormalux::hitTracker(placement().toDeviceRect(ormalux::ordered(m->tracker)), device);
        shape = hit == ormalux::trackerMiss ? Qt::CrossCursor : trackerCursors[hit];
    }
    if (viewport()->cursor().shape() != shape)
        viewport()->setCursor(shape);
}

/// Tells the pixel under the pointer. Again, when the picture may have moved or changed under a pointer that
/// rests: told only when that made a difference.
void CKestView::hover(QPointF device, bool again)
{
    HoveredPixel here;
    {
        const std::lock_guard guard(m->lock);
        m->pointer = device;
        const ViewGeometry now = placement();
        const int x = now.columnAt(float(device.x()));
        const int y = now.rowAt(float(device.y()));
        auto value = m->shown().valueAt(x, y);
        if (value && m->shown().bitCount() == 8 && GetBitCount() == 24)
            *value *= 0x010101u; // what a tool shows of a colour picture in gray
        if (value)
            here = {x, y, *value, GetBitCount()};
    }
    const HoveredPixel before = std::exchange(m->hovered, here);
    if (again ? here != before : here.x >= 0 || before.x >= 0)
        Q_EMIT pixelHovered(here.x, here.y, here.value);
}

void CKestView::wheelEvent(QWheelEvent* event)
{
    event->accept();
    const int turn = event->angleDelta().y();
    if (!m->mouseEnabled)
        return;
    if (turn == 0) { // a sideways wheel
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - event->angleDelta().x());
        return;
    }
    // Fine wheels and touch pads send parts of a notch: they zoom when they have made a whole one.
    if (std::abs(turn) < wheelNotch) {
        m->wheelRest = (m->wheelRest < 0) == (turn < 0) ? m->wheelRest + turn : turn;
        if (std::abs(m->wheelRest) < wheelNotch)
            return;
    }
    m->wheelRest = 0;
    if (event->modifiers() & Qt::ControlModifier)
        zoomAbout(event->position(), turn > 0 ? wheelStep : -wheelStep);
    else if (turn > 0)
        ZoomPlus(wheelStep);
    else
        ZoomMinus(wheelStep);
    if (m->drag.kind == Drag::Pan) { // goes on from where the zoom has put the picture
        m->drag.anchorDevice = event->position();
        m->drag.anchorScroll = placement().scroll;
        m->drag.moved = true;
    }
    hover(event->position());
}

void CKestView::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const int dx = key == Qt::Key_Left ? -1 : key == Qt::Key_Right ? 1 : 0;
    const int dy = key == Qt::Key_Up ? -1 : key == Qt::Key_Down ? 1 : 0;
    if (!m->trackerMode || (dx == 0 && dy == 0))
        return QAbstractScrollArea::keyPressEvent(event);
    const int handle = event->modifiers() & Qt::ShiftModifier ? 5 : ormalux::trackerMove;
    moveTracker(ormalux::draggedTracker(m->tracker, handle, dx, dy));
    event->accept();
}

/// Arrow keys are the view's even where a dialog or a shortcut of the host would take them.
bool CKestView::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

bool CKestView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave) {
        m->pointer.reset();
        if (std::exchange(m->hovered, {}).x >= 0)
            Q_EMIT pixelHovered(-1, -1, 0);
    }
    return QAbstractScrollArea::viewportEvent(event);
}
