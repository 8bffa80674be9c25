#include "view/ImageView.h"

#include "tools/SourceSaving.h"
#include "view/ViewState.h"
#include "view/ViewTracker.h"

#include <QContextMenuEvent>
#include <QMenu>

#include <array>

using ormalux::ViewState;
using Guard = std::lock_guard<std::recursive_mutex>;

namespace {

enum Command
{
    ConfirmTracker = 3300,
    CancelTracker,
    ToggleOverlays,
    SaveOcrSource,
    SaveMatchSource
};

struct MenuItem
{
    int command; ///< 0 is a separator
    const char* text;
};
constexpr std::array<MenuItem, 5> menuItems{{{ConfirmTracker, "Confirm ROI"},
                                             {CancelTracker, "Cancel ROI"},
                                             {0, nullptr},
                                             {SaveOcrSource, "Save Ocr Source File ..."},
                                             {SaveMatchSource, "Save Match Source File ..."}}};

} // namespace

CKestView::CKestView(QWidget* parent) : QAbstractScrollArea(parent), m(std::make_unique<ViewState>())
{
    setFrameShape(QFrame::NoFrame); // the window draws the frame
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent); // painting covers the whole area
    viewport()->setAutoFillBackground(false);
    layOutBars();
    m->toolHost = std::make_unique<ormalux::ViewToolHost>(*this);
    m->tools = std::make_unique<ormalux::ToolBox>(*m->toolHost, this);
}

CKestView::~CKestView()
{
    m->tools.reset(); // the dialogs clear their drawings from a whole view
}

bool CKestView::OpenTool(int command)
{
    return m->tools->open(command);
}

bool CKestView::HasTool(int command)
{
    return ormalux::ToolBox::has(command);
}

std::recursive_mutex& CKestView::GetLock() const
{
    return m->lock;
}

CDrawObjArray& CKestView::GetOverlays()
{
    return m->overlays;
}

void CKestView::SetOverlayVisible(int visible)
{
    m->overlayVisible = visible == 1;
    requestPaint();
}

int CKestView::IsOverlayVisible() const
{
    return m->overlayVisible;
}

void CKestView::Tool(TOOL_DRAW_SHAPE tool)
{
    m->tool = tool;
}

int CKestView::GetTool() const
{
    return m->tool;
}

void CKestView::SetTrackerMode(int mode)
{
    {
        const Guard guard(m->lock);
        m->trackerMode = mode == 1;
    }
    requestPaint();
    Q_EMIT trackerChanged();
}

int CKestView::IsTrackerMode() const
{
    const Guard guard(m->lock);
    return m->trackerMode;
}

void CKestView::SetTrackerPosition(const CRect& rect)
{
    {
        const Guard guard(m->lock);
        m->tracker = rect;
    }
    requestPaint();
    Q_EMIT trackerChanged();
}

CRect CKestView::GetTrackerRect() const
{
    const Guard guard(m->lock);
    return ormalux::ordered(m->tracker);
}

void CKestView::EnableMouseAction(int enable)
{
    m->mouseEnabled = enable != 0;
}

void CKestView::RegConfirmTrackerProc(KestHostProc proc)
{
    m->confirmProc = proc;
}

void CKestView::RegMouseMoveProc(KestHostProc proc)
{
    m->moveProc = proc;
}

void CKestView::RegMouseUpProc(KestHostProc proc)
{
    m->upProc = proc;
}

bool CKestView::SendCommand(int command)
{
    const auto trackerRegion = [this] {
        const CRect tracker = GetTrackerRect();
        return ormalux::isNothing(tracker) ? CRect(0, 0, -1, -1) : tracker;
    };
    switch (command) {
    case ConfirmTracker: {
        if (!m->trackerMode)
            return true;
        const CRect rect = GetTrackerRect();
        Q_EMIT trackerConfirmed(rect.left, rect.top, rect.right, rect.bottom);
        if (m->confirmProc)
            m->confirmProc(rect.left, rect.top, rect.right, rect.bottom, parentWidget());
        return true;
    }
    case CancelTracker:
        SetTrackerMode(0);
        return true;
    case ToggleOverlays:
        SetOverlayVisible(!m->overlayVisible);
        return true;
    case SaveOcrSource:
        ormalux::saveSource(*m->toolHost, trackerRegion(), ormalux::SourceKind::Character, {}, this);
        return true;
    case SaveMatchSource:
        ormalux::saveSource(*m->toolHost, trackerRegion(), ormalux::SourceKind::Pattern, {}, this);
        return true;
    default:
        return false;
    }
}

/// Opens at the press; the release of the same button may then choose an item.
void CKestView::openMenu(QPoint globalPosition)
{
    delete m->menu;
    m->menu = new QMenu(this);
    m->menu->setAttribute(Qt::WA_DeleteOnClose);
    m->menu->setObjectName(QStringLiteral("viewMenu"));
    for (const MenuItem& item : menuItems) {
        if (item.command == 0) {
            m->menu->addSeparator();
            continue;
        }
        QAction* const action = m->menu->addAction(QString::fromLatin1(item.text));
        action->setObjectName(QStringLiteral("command_%1").arg(item.command));
        connect(action, &QAction::triggered, this, [this, command = item.command] { SendCommand(command); });
    }
    m->menu->popup(globalPosition);
}

/// The menu opened at the press; the toolkit's own request follows it and is dropped. The keyboard's opens
/// the menu.
void CKestView::contextMenuEvent(QContextMenuEvent* event)
{
    event->accept();
    if (event->reason() == QContextMenuEvent::Keyboard && m->mouseEnabled)
        openMenu(event->globalPos());
}
