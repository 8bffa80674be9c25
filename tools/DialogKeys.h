#pragma once

#include <QFocusFrame>
#include <QObject>
#include <QPointer>

class QDialog;

namespace ormalux {

/// What makes a dialog usable by keys alone, beyond what the toolkit does: Enter presses the button that has
/// the focus, never another one, and a list or text that has the focus shows it by a frame.
class DialogKeys : public QObject
{
    Q_OBJECT

public:
    /// To be made when the dialog has its controls; goes with the dialog.
    explicit DialogKeys(QDialog& dialog);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void frame(QWidget* focused);

    QDialog& m_dialog;
    QPointer<QFocusFrame> m_frame;
};

} // namespace ormalux
