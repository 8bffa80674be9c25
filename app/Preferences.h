#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace ormalux::viewer {

/// What the viewer remembers of its operator from one start to the next.
struct Preferences
{
    QString language = QStringLiteral("ko");
    QString theme = QStringLiteral("system");
    QByteArray geometry;
    bool toolBar = true;
    bool statusBar = true;
    QString folder;     ///< where files were last opened
    QStringList recent; ///< the latest first

    /// From the operator's settings; what stands there wrongly counts as absent. Only preferences read this
    /// way are ever written.
    static Preferences read();
    void write() const;

    /// Puts a file on top of the recent ones, of which there are at most ten.
    void addRecent(const QString& file);

private:
    bool m_kept = false;
};

} // namespace ormalux::viewer
