#pragma once

#include "view/TipWindow.h"

#include <QPointer>
#include <QPushButton>

/// A flat button of the window's strip that draws itself in the colours of its palette: an icon or a short
/// caption on nothing, a veil under the mouse and while pressed, an outlined veil while checked, a ring
/// around it with the keyboard's focus, paler while disabled. A corner mark says that a menu opens.
///
/// A click does not take the focus from the view; Tab reaches the button, the arrow keys its neighbours,
/// Space and Enter press it, the arrow down opens its menu. Clicks never change what is checked: that shows a
/// state of the window.
class CDrawButton2 : public QPushButton
{
    Q_OBJECT

public:
    /// The height of a button and its width where there is room.
    static constexpr int Size = 28;
    /// The width of a button where room is scarce.
    static constexpr int NarrowWidth = 24;

    explicit CDrawButton2(QWidget* parent);

    /// Shows the icon of this name, or the caption where it is null, and takes the name of its command.
    void Init(const char* icon, const char* caption, int command);
    int GetCommand() const { return m_command; }
    /// What the tip window says and assistive tools read; keys may be empty.
    void SetTooltipText(const QString& text, const QString& keys = {});
    /// Where the tips appear.
    void SetTipWindow(CTipWnd* tip) { m_tip = tip; }
    /// Opens at the press, at the lower left corner; either mouse button then chooses.
    void SetPopupMenu(QMenu* menu);
    void OpenMenu();

    QSize sizeHint() const override { return {Size, Size}; }
    QSize minimumSizeHint() const override { return {NarrowWidth, Size}; }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void nextCheckState() override {}

private:
    void drawBack(QPainter& painter, const QColor& ink) const;
    void drawFace(QPainter& painter, const QColor& ink) const;
    void showTip();
    void hideTip();

    QString m_icon;
    QString m_keys;
    int m_command = 0;
    QPointer<CTipWnd> m_tip;
};
