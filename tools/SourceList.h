#pragma once

#include "tools/SourceFile.h"

#include <QWidget>

class QPushButton;
class QTableWidget;

namespace ormalux {

/// The match sources of a dialog: the list `sources`, whose column 5 holds each file's path behind what the
/// file says of the source, with `addSource`, `removeSource`, `editPattern`, `sourceUp` and `sourceDown`.
/// Files that cannot be loaded do not get into the list.
class SourceList : public QWidget
{
    Q_OBJECT

public:
    static constexpr int pathColumn = 5;

    explicit SourceList(QWidget* parent = nullptr);

    /// To be called once, at the beginning.
    void setKind(SourceKind kind);
    /// From the first row to the last.
    std::vector<std::string> paths() const;
    /// Appends the sources of the files; names those that are refused in refused().
    void add(const QStringList& files);
    /// Shows what the files hold now.
    void reload();
    /// Gives the controls their texts again.
    void retranslate();

Q_SIGNALS:
    /// Other files, another order, or other contents of a file.
    void changed();
    /// Says which files are no sources.
    void refused(const QString& message);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPushButton* addButton(const char* name, void (SourceList::*act)());
    void askForFiles();
    void removeSelected();
    void editSelected();
    void moveUp() { moveSelected(-1); }
    void moveDown() { moveSelected(1); }
    void moveSelected(int step);
    void showRow(int row, const std::string& path);
    void enableButtons();

    SourceKind m_kind = SourceKind::Pattern;
    QTableWidget* m_list;
    QPushButton* m_add;
    QPushButton* m_remove;
    QPushButton* m_edit;
    QPushButton* m_up;
    QPushButton* m_down;
};

/// The message that names files that are missing, too short, or no match sources.
QString refusedMessage(const std::vector<std::string>& files);

} // namespace ormalux
