#pragma once

#include <QGuiApplication>
#include <QThread>

namespace ormalux {

/// Shows the wait cursor while it lives; nothing happens on other threads than the application's.
class WaitCursor
{
public:
    WaitCursor() : m_shown(qGuiApp && QThread::currentThread() == qGuiApp->thread())
    {
        if (m_shown)
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ~WaitCursor()
    {
        if (m_shown)
            QGuiApplication::restoreOverrideCursor();
    }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    bool m_shown;
};

} // namespace ormalux
