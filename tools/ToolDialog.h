#pragma once

#include "tools/Tool.h"

#include <QDialog>

#include <functional>

namespace ormalux {

class LatestJob;
class ResultTable;
class ToolButtonRow;

/// What all tool dialogs have in common: they stay beside the window (never modal), follow its picture and
/// region, keep their place for the session, draw on a layer of their own, and leave neither drawings nor
/// previews behind when they close. Enter applies where there is something to apply and no other button has
/// the focus, Escape closes.
///
/// A dialog's constructor sets up its form, connects its controls and calls attach(); from then on
/// refresh() is called whenever the dialog is shown or the picture or the region has changed while it is.
class ToolDialog : public QDialog
{
    Q_OBJECT

public:
    /// layer: the name of the drawings, null for a tool that draws none. The host outlives the dialog.
    ToolDialog(ToolHost& host, const char* layer, QWidget* parent);
    ~ToolDialog() override;

protected:
    /// Finds the shared controls of the form and takes them over. className is also the object name.
    void attach(const char* className, ToolButtonRow* buttons, ResultTable* results = nullptr);

    /// The tool with the values of the controls.
    virtual const Tool& read() = 0;
    /// Tries the tool on the picture as it is now.
    virtual void refresh() = 0;
    /// Changes the picture; for tools that apply. False, with a message shown, when it cannot.
    virtual bool apply() { return false; }
    /// A result was selected in the list or clicked in the picture; -1: none. Its box is already revealed.
    virtual void resultChosen(int) {}

    ToolHost& host() const { return m_host; }
    /// Runs a part of refresh() off the window's thread; see LatestJob.
    LatestJob& background() { return *m_background; }
    /// Runs a part of refresh() off the window's thread under the wait cursor: what ends within a moment is
    /// delivered before this returns true, what takes longer goes on behind the bar.
    bool runSoon(std::function<std::function<void()>()> job);
    ResultTable* results() const { return m_results; }
    /// Says something in the dialog's message line.
    void setMessage(const QString& message);
    /// The same under the line that says that a colour picture is measured by its gray form.
    void setMessageOfGrayForm(const QString& message);
    /// The line that says that a colour picture is measured by its gray form; empty for a gray one.
    QString grayFormNote() const;
    const char* layer() const { return m_layer; }

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    /// Gives the form its texts again after the language has changed; while it is shown, refresh() follows.
    virtual void retranslate() {}

private:
    QPoint firstPlace() const;
    void leave();
    void askForRecipe();
    void chooseResult(int index);

    ToolHost& m_host;
    const char* m_layer;
    LatestJob* m_background;
    ToolButtonRow* m_buttons = nullptr;
    ResultTable* m_results = nullptr;
    bool m_placed = false;
};

} // namespace ormalux
