#include "view/ImageView.h"

#include "platform/Stdlib.h"
#include "view/ViewPainter.h"
#include "view/ViewState.h"
#include "view/ViewTracker.h"
#include "view/XorFigures.h"

#include <QPaintEvent>
#include <QPainter>
#include <QThread>
#include <QTimer>

#include <utility>

using ormalux::Drag;
using ormalux::ViewGeometry;
using ormalux::XorFigure;
using Guard = std::lock_guard<std::recursive_mutex>;

/// The exposed part of the frame as it is saved: picture, overlays and gray levels. Writes the file that was
/// asked for, which needs the whole.
void CKestView::composeFrame(QRect exposed)
{
    const Guard guard(m->lock);
    const QRect whole(QPoint(0, 0), clientSize());
    if (!m->screenFile.empty())
        exposed = whole;
    exposed &= whole;
    const ViewGeometry now = placement();
    const ormalux::PixelSource picture = m->shown().source();
    ormalux::prepareFrame(m->frame, whole.size(), devicePixelRatioF());
    ormalux::paintPixels(m->frame, picture, now, exposed);
    if (m->overlayVisible)
        ormalux::paintOverlays(m->frame, m->overlays, now);
    ormalux::paintLevels(m->frame, picture, now, exposed);
    if (!m->screenFile.empty()) {
        const CString path = std::exchange(m->screenFile, {});
        CStdlib::BitmapToFile(m->frame, path.c_str(), CSize(m->frame.width(), m->frame.height()));
    }
}

/// What never reaches a file: the tracker and what is being dragged. Drawn inverting, so that it shows on any
/// picture.
void CKestView::paintFigures()
{
    const ViewGeometry now = placement();
    if (m->trackerMode && !ormalux::isNothing(m->tracker))
        ormalux::paintTracker(m->frame, now.toDeviceRect(m->tracker));
    const ormalux::DragState& drag = m->drag;
    if (!drag.moved)
        return;
    if (drag.kind == Drag::Tracker)
        ormalux::paintXor(m->frame, XorFigure::FocusRectangle, now.toDeviceRect(drag.tracker),
                          RGB(255, 255, 255));
    if (drag.kind == Drag::RubberBand) {
        const CPoint from = now.toDevicePoint(drag.anchorImage.x, drag.anchorImage.y);
        const CPoint to = now.toDevicePoint(drag.currentImage.x, drag.currentImage.y);
        ormalux::paintXor(m->frame, m->tool == TOOL_RECTANGLE ? XorFigure::Rectangle : XorFigure::Line,
                          {from.x, from.y, to.x, to.y}, RGB(255, 0, 0));
    }
}

void CKestView::paintEvent(QPaintEvent* event)
{
    composeFrame(event->region().boundingRect());
    paintFigures();
    QPainter painter(viewport());
    painter.setClipRegion(event->region());
    painter.drawImage(QPoint(0, 0), m->frame);
    if (m->pointer) // what lies under it may be another pixel now
        QTimer::singleShot(0, this, [this] {
            if (m->pointer)
                hover(*m->pointer, true);
        });
}

void CKestView::OnDraw(CDC* dc)
{
    composeFrame(QRect(QPoint(0, 0), clientSize()));
    paintFigures();
    if (dc && dc->isActive())
        dc->drawImage(QPoint(0, 0), m->frame);
}

QImage CKestView::GetScreen()
{
    composeFrame(QRect(QPoint(0, 0), clientSize()));
    return m->frame;
}

void CKestView::ImageUpdate()
{
    askOnce(m->asked.update, [this] { updateNow(); });
}

void CKestView::updateNow()
{
    viewport()->repaint();
    Q_EMIT imageEdited(); // a linked buffer changes without a call
    const Guard guard(m->lock);
    if (!m->screenFile.empty()) // a hidden view does not paint
        composeFrame(QRect(QPoint(0, 0), clientSize()));
}

void CKestView::ScreenToFile(const CString& path)
{
    const Guard guard(m->lock);
    m->screenFile = path;
}

void CKestView::requestPaint()
{
    askOnce(m->asked.paint, [this] { viewport()->update(); });
}

void CKestView::pictureChanged()
{
    askOnce(m->asked.change, [this] {
        updateScrollSizes();
        viewport()->update();
        Q_EMIT imageChanged();
    });
}

void CKestView::tellEdited()
{
    askOnce(m->asked.edited, [this] { Q_EMIT imageEdited(); });
}

/// Done at once on the view's thread. From another it is queued once, however often it is asked for: a camera
/// may be faster than the screen.
void CKestView::askOnce(std::atomic<bool>& asked, const std::function<void()>& action)
{
    if (QThread::currentThread() == thread())
        return action();
    if (asked.exchange(true))
        return;
    const auto run = [&asked, action] {
        asked = false;
        action();
    };
    QMetaObject::invokeMethod(this, run, Qt::QueuedConnection);
}
