#pragma once

#include <QDialog>
#include <QSize>

#include <memory>

class CPatternEditView;

namespace Ui {
class PatternEditDlg;
}

/// Corrects a match source pixel by pixel and saves it to its file or to another one. Never modal; nothing
/// is written but by saving, and closing asks before changes are lost.
class CPatternEditDlg : public QDialog
{
    Q_OBJECT

public:
    explicit CPatternEditDlg(const QString& path, QWidget* parent = nullptr);
    ~CPatternEditDlg() override;

    /// The file that the dialog was opened with.
    const QString& path() const { return m_path; }
    CPatternEditView* view() const;

    void reject() override;

Q_SIGNALS:
    /// A file has been written, this one's or another.
    void saved(const QString& path);

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectControls();
    void load();
    void showPattern();
    void showKey();
    void takeKey(const QString& text);
    void resizeToFields();
    void save();
    void askAndSaveAs();
    /// False, with a message shown, when the file is as it was.
    bool write(const QString& path);
    void askBeforeClosing();
    void setMessage(const QString& message);

    std::unique_ptr<Ui::PatternEditDlg> m_ui;
    QString m_path;
    QSize m_shownSize;      ///< what the size fields were last given
    bool m_refused = false; ///< the file holds something that is not to be overwritten
    bool m_closing = false; ///< what has not been saved is to be lost
};
