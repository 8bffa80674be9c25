#include "view/ImageViewWnd.h"

#include "view/PenCache.h"
#include "view/WindowState.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QThread>

using ormalux::WindowState;

namespace {

constexpr int stripHeight = 40; ///< above the view
constexpr int stripLine = 36;   ///< the row of the line under the buttons
constexpr COLORREF frameColor = 0x00675F52;
constexpr int trackerCommand = 6600;

/// A key as the shortcuts name it: plus and minus wherever they are on the keyboard.
QKeyCombination plainKey(const QKeyEvent& event)
{
    const int key = event.key() == Qt::Key_Equal ? int(Qt::Key_Plus) : event.key();
    Qt::KeyboardModifiers keys = event.modifiers() & ~Qt::KeypadModifier;
    if (key == Qt::Key_Plus || key == Qt::Key_Minus)
        keys &= ~Qt::ShiftModifier;
    return QKeyCombination(keys, Qt::Key(key));
}

} // namespace

CKestWnd::CKestWnd(QWidget* parent) : QFrame(parent), m(std::make_unique<WindowState>())
{
    setFrameShape(QFrame::NoFrame); // the frame is drawn here
    setAttribute(Qt::WA_OpaquePaintEvent);
    m->toolbar.emplace(*this, [this](int command) { SendCommand(command); });
    UserCreateView(&CKestView::staticMetaObject);
}

CKestWnd::~CKestWnd()
{
    delete m->view; // it tells of its end, which the window still understands
}

CKestView* CKestWnd::GetView() const
{
    return m->view;
}

CView* CKestWnd::UserCreateView(CRuntimeClass* type)
{
    if (!type || !type->inherits(&CKestView::staticMetaObject) || QThread::currentThread() != thread())
        return nullptr;
    auto* const view = qobject_cast<CKestView*>(type->newInstance(Q_ARG(QWidget*, this)));
    if (view)
        adoptView(view);
    return view;
}

void CKestWnd::adoptView(CKestView* view)
{
    if (m->view) {
        m->view->hide();
        m->view->deleteLater(); // it may be what is calling
    }
    m->view = view;
    view->setObjectName(QStringLiteral("pane_59648"));
    setFocusProxy(view);
    connect(view, &CKestView::trackerChanged, this, [this] { showState(); });
    connect(view, &CKestView::imageChanged, this, [this] { showState(); });
    placeView();
    view->setVisible(true);
    showState();
}

/// The buttons follow the view.
void CKestWnd::showState()
{
    m->toolbar->enable([this](int command) { return canSend(command); });
    m->toolbar->setChecked(trackerCommand, m->view->IsTrackerMode() == 1);
}

void CKestWnd::placeView()
{
    const int top = m->toolbarVisible ? stripHeight : 1;
    m->view->setGeometry(1, top, qMax(0, width() - 2), qMax(0, height() - 1 - top));
    m->toolbar->layOut(m->toolbarVisible ? QSize(width(), stripLine) : QSize());
}

/// What touches widgets happens on the window's thread: at once there, queued from any other.
void CKestWnd::onOwnThread(const std::function<void(CKestView&)>& action)
{
    if (QThread::currentThread() == thread())
        action(*m->view);
    else
        QMetaObject::invokeMethod(
            this, [this, action] { action(*m->view); }, Qt::QueuedConnection);
}

void CKestWnd::ZoomFitTo()
{
    onOwnThread([](CKestView& view) { view.ZoomFitTo(); });
}

void CKestWnd::Zoom100()
{
    onOwnThread([](CKestView& view) { view.Zoom100(); });
}

void CKestWnd::ZoomPlus()
{
    onOwnThread([](CKestView& view) { view.ZoomPlus(); });
}

void CKestWnd::ZoomMinus()
{
    onOwnThread([](CKestView& view) { view.ZoomMinus(); });
}

void CKestWnd::ImageUpdate()
{
    m->view->ImageUpdate();
}

void CKestWnd::ScreenToFile(const CString& path)
{
    m->view->ScreenToFile(path);
}

void CKestWnd::EnableMouseAction(int enable)
{
    onOwnThread([enable](CKestView& view) { view.EnableMouseAction(enable); });
}

void CKestWnd::RegConfirmTrackerProc(KestHostProc proc)
{
    onOwnThread([proc](CKestView& view) { view.RegConfirmTrackerProc(proc); });
}

void CKestWnd::RegMouseMoveProc(KestHostProc proc)
{
    onOwnThread([proc](CKestView& view) { view.RegMouseMoveProc(proc); });
}

void CKestWnd::RegMouseUpProc(KestHostProc proc)
{
    onOwnThread([proc](CKestView& view) { view.RegMouseUpProc(proc); });
}

void CKestWnd::SetTrackerMode(int mode)
{
    onOwnThread([mode](CKestView& view) { view.SetTrackerMode(mode); });
}

void CKestWnd::SetTrackerPosition(const CRect& rect)
{
    onOwnThread([rect](CKestView& view) { view.SetTrackerPosition(rect); });
}

int CKestWnd::IsTrackerMode() const
{
    return m->view->IsTrackerMode();
}

CRect CKestWnd::GetTrackerRect() const
{
    return m->view->GetTrackerRect();
}

void CKestWnd::Tool(TOOL_DRAW_SHAPE tool)
{
    onOwnThread([tool](CKestView& view) { view.Tool(tool); });
}

void CKestWnd::ViewToolBar(int visible)
{
    onOwnThread([this, visible](CKestView&) {
        m->toolbarVisible = visible == 1;
        placeView();
        update();
    });
}

int CKestWnd::IsViewToolBar() const
{
    return m->toolbarVisible;
}

void CKestWnd::ParentThreadMode(int mode)
{
    CKestView::SetParentThreadMode(mode);
}

QSize CKestWnd::sizeHint() const
{
    return {760, 560};
}

QSize CKestWnd::minimumSizeHint() const
{
    return {120, 90};
}

void CKestWnd::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    // The frame is what the rest leaves of the whole: no seam where pixels of the screen are broken.
    painter.fillRect(rect(), ormalux::toQColor(frameColor));
    if (!m->toolbarVisible)
        return;
    const QColor ground = palette().color(QPalette::Window);
    painter.fillRect(1, 1, width() - 2, stripLine - 1, ground);
    painter.fillRect(1, stripLine + 1, width() - 2, stripHeight - stripLine - 1, ground);
}

void CKestWnd::resizeEvent(QResizeEvent*)
{
    placeView();
}

/// Comes here when neither the view nor a shortcut of the host has taken the key.
void CKestWnd::keyPressEvent(QKeyEvent* event)
{
    for (const ormalux::ToolbarCommand& command : ormalux::toolbarCommands()) {
        if (!command.shortcut || !canSend(command.command))
            continue;
        if (QKeySequence(QString::fromLatin1(command.shortcut))[0] == plainKey(*event)) {
            SendCommand(command.command);
            return event->accept();
        }
    }
    QFrame::keyPressEvent(event);
}

void CKestWnd::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && m->toolbar)
        m->toolbar->translate();
}
