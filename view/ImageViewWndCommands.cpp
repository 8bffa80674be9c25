#include "view/ImageViewWnd.h"

#include "platform/Stdlib.h"
#include "tools/Script.h"
#include "view/WaitCursor.h"
#include "view/WindowFiles.h"
#include "view/WindowState.h"

#include <QThread>

#include <algorithm>
#include <utility>

using ormalux::CommandKind;

namespace {

struct Handler
{
    int command;
    void (*run)(CKestWnd& window);
};

/// Turns or mirrors, and fits: the operator sees the whole result.
template <void (CKestWnd::*Turn)()>
void turn(CKestWnd& window)
{
    {
        const ormalux::WaitCursor waiting;
        (window.*Turn)();
    }
    window.ZoomFitTo();
    window.ImageUpdate();
}

void fit(CKestWnd& window)
{
    window.ZoomFitTo();
    window.ImageUpdate();
}

constexpr Handler handlers[] = {
    {5500, &ormalux::askToOpen},
    {5501, &ormalux::askToSave},
    {5502, &fit},
    {5503, [](CKestWnd& window) { window.ZoomPlus(); }},
    {5504, [](CKestWnd& window) { window.ZoomMinus(); }},
    {5505, [](CKestWnd& window) { window.Zoom100(); }},
    {6600, [](CKestWnd& window) { window.SetTrackerMode(1); }},
    {6605, &turn<&CKestWnd::Rotate90L>},
    {6606, &turn<&CKestWnd::Rotate90R>},
    {6607, &turn<&CKestWnd::RotateHorzFlip>},
    {6608, &turn<&CKestWnd::RotateVertFlip>},
    {6609, &turn<&CKestWnd::Rotate180>},
};

/// An operation without arguments that a menu item runs.
struct OneStep
{
    int command;
    const char* name; ///< as the script calls it
    void (CKestWnd::*run)();
    bool grayOnly;
};

constexpr OneStep oneSteps[] = {
    {6703, "HistoEqualize", &CKestWnd::HistoEqualize, true},
    {6704, "HistoNormalize", &CKestWnd::HistoNormalize, true},
    {6705, "HistoRoot", &CKestWnd::HistoRoot, true},
    {6706, "HistoLog", &CKestWnd::HistoLog, true},
    {6707, "HistoStretch", &CKestWnd::HistoStretch, true},
    {6617, "Erode", &CKestWnd::Erode, false},
    {6618, "Dilate", &CKestWnd::Dilate, false},
    {6619, "OpenBox", &CKestWnd::OpenBox, false},
    {6620, "CloseBox", &CKestWnd::CloseBox, false},
    {6625, "Sharpen", &CKestWnd::Sharpen, false},
    {6626, "Blur", &CKestWnd::Blur, false},
    {6627, "Soften", &CKestWnd::Soften, false},
    {6628, "Gassian5x5", &CKestWnd::Gassian5x5, false},
    {6629, "Gassian3x3", &CKestWnd::Gassian3x3, false},
    {6630, "Emboss", &CKestWnd::Emboss, false},
    {6631, "Edge", &CKestWnd::Edge, false},
    {6632, "Laplacian", &CKestWnd::Laplacian, false},
};

/// Runs the operation, paints at once and leaves its example program on the clipboard, without a picture too:
/// a host that sends the command wants the program.
void runStep(CKestWnd& window, const OneStep& step)
{
    if (step.grayOnly && window.GetImagePtr() && window.GetBitCount() != 8)
        return ormalux::showMessage(
            window, QString::fromLatin1(step.name),
            ormalux::windowText(QT_TRANSLATE_NOOP("CKestWnd", "흑백 그림에서만 실행할 수 있습니다.")));
    {
        const ormalux::WaitCursor waiting;
        (window.*step.run)();
    }
    window.ImageUpdate();
    CStdlib::CopyToClipboard(&window,
                             ormalux::oneStepScript(window.GetWidth(), window.GetHeight(), step.name));
}

template <class Row>
const Row* rowOf(std::span<const Row> rows, int command)
{
    const auto found = std::ranges::find(rows, command, &Row::command);
    return found == rows.end() ? nullptr : &*found;
}

} // namespace

void CKestWnd::SetCommandHandler(std::function<bool(int command)> handler)
{
    m->handler = std::move(handler);
}

void CKestWnd::EnableCommand(int command, bool enable)
{
    const bool changed = enable ? m->disabled.erase(command) > 0 : m->disabled.insert(command).second;
    if (changed)
        showState();
}

void CKestWnd::SetCommandTip(int command, const QString& tip)
{
    m->toolbar->setTip(command, tip);
}

/// A copy of the handler runs: it may replace itself.
bool CKestWnd::hostRuns(int command) const
{
    const auto handler = m->handler;
    return handler && handler(command);
}

bool CKestWnd::canSend(int command) const
{
    if (m->disabled.count(command) > 0)
        return false;
    switch (ormalux::kindOf(command)) {
    case CommandKind::View:
        return true;
    case CommandKind::Tool:
        return CKestView::HasTool(command) && m->view->GetImagePtr();
    default:
        return m->view->GetImagePtr() != nullptr;
    }
}

bool CKestWnd::SendCommand(int command)
{
    if (QThread::currentThread() != thread())
        return false;
    const CommandKind kind = ormalux::kindOf(command);
    if (hostRuns(command))
        return Q_EMIT commandSent(command), true;
    if (const auto* const handler = rowOf<Handler>(handlers, command))
        handler->run(*this);
    else if (const auto* const step = rowOf<OneStep>(oneSteps, command))
        runStep(*this, *step);
    else if (kind == CommandKind::Menu)
        m->toolbar->openMenu(command);
    else if (kind == CommandKind::Tool)
        m->view->OpenTool(command);
    else if (!m->view->SendCommand(command))
        return false;
    Q_EMIT commandSent(command);
    return true;
}
