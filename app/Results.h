#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

class CKestWnd;

namespace ormalux::viewer {

/// Results of the command line program, one JSON object a picture, to be drawn over the pictures that they
/// belong to.
class Results
{
public:
    /// Reads a file: one JSON object, or one a line. False with the results as they were when it cannot be
    /// read; why then says it in the operator's language and names the file.
    bool read(const QString& path, QString* why);
    bool empty() const { return m_pictures.isEmpty(); }

    /// Replaces what is drawn over a window by the results of its picture, told by the file's name. Results
    /// of a single picture are drawn over any. Returns how many records are drawn.
    int draw(CKestWnd& window, const QString& picture) const;

private:
    QList<QJsonObject> m_pictures;
};

} // namespace ormalux::viewer
