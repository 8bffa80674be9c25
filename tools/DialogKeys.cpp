#include "tools/DialogKeys.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

namespace ormalux {

namespace {

/// Around its widget; the toolkit masks the middle away.
class Frame : public QFocusFrame
{
public:
    using QFocusFrame::QFocusFrame;

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), palette().highlight()); }
};

} // namespace

DialogKeys::DialogKeys(QDialog& dialog) : QObject(&dialog), m_dialog(dialog)
{
    const auto buttons = dialog.findChildren<QPushButton*>();
    const bool main = std::any_of(buttons.begin(), buttons.end(), [](auto* b) { return b->isDefault(); });
    // Beside a main button the one with the focus takes over its looks and the Enter key. Without one the
    // toolkit would choose any for the Enter that ends the input of a number.
    for (QPushButton* const button : buttons)
        button->setAutoDefault(main);
    dialog.installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { frame(now); });
}

void DialogKeys::frame(QWidget* focused)
{
    auto* const list = qobject_cast<QAbstractScrollArea*>(focused);
    const bool here = list && list->window() == &m_dialog;
    if (here && !m_frame)
        m_frame = new Frame(&m_dialog);
    if (m_frame)
        m_frame->setWidget(here ? list : nullptr);
}

bool DialogKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        auto* const button = qobject_cast<QPushButton*>(m_dialog.focusWidget());
        if (button && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
            button->click();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace ormalux
