#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace ormalux::viewer {

/// What the viewer remembers of its operator from one start to the next.
struct Preferences
{
    QString language = QStringLiteral("ko");
    bool languageChosen = false; ///< by the operator; else it is the desktop's
    QString theme = QStringLiteral("system");
    QByteArray geometry;
    bool toolBar = true;
    bool statusBar = true;
    QString folder;     ///< where files were last opened
    QStringList recent; ///< the latest first

    /// An operator's who has chosen nothing yet: the texts are Korean on a Korean desktop, else English.
    static Preferences first();
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
