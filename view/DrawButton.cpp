#include "view/DrawButton.h"

#include "view/IconPixmap.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr int iconSide = 24; ///< the grid on which the icons are drawn: their edges fall on whole pixels
constexpr double corner = 4;

QColor veil(QColor color, double strength)
{
    color.setAlphaF(float(strength));
    return color;
}

} // namespace

CDrawButton2::CDrawButton2(QWidget* parent) : QPushButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setAutoDefault(false); // Enter in a host's dialog is not ours
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::ArrowCursor);
    resize(Size, Size);
}

void CDrawButton2::Init(const char* icon, const char* caption, int command)
{
    m_icon = QString::fromLatin1(icon);
    setText(QString::fromUtf8(caption));
    m_command = command;
    setObjectName(QStringLiteral("command_%1").arg(command));
}

void CDrawButton2::SetTooltipText(const QString& text, const QString& keys)
{
    m_keys = keys;
    setToolTip(text);
    setAccessibleName(text);
    setAccessibleDescription(keys);
}

void CDrawButton2::SetPopupMenu(QMenu* menu)
{
    setMenu(menu);
    // The base would open it in an event loop of its own, which holds up its caller.
    disconnect(this, &QPushButton::pressed, this, nullptr);
    connect(this, &QPushButton::clicked, this, &CDrawButton2::OpenMenu);
    menu->installEventFilter(this);
    connect(menu, &QMenu::aboutToHide, this, [this] { setDown(false); });
}

void CDrawButton2::OpenMenu()
{
    if (!menu())
        return;
    hideTip();
    setDown(true);
    menu()->popup(mapToGlobal(QPoint(0, height())));
}

/// The press that closes the menu must not open it again when it falls on the button.
bool CDrawButton2::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == menu() && event->type() == QEvent::MouseButtonPress) {
        const QPoint at = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
        menu()->setAttribute(Qt::WA_NoMouseReplay, rect().contains(mapFromGlobal(at)));
    }
    return QPushButton::eventFilter(watched, event);
}

bool CDrawButton2::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::ToolTip:
        showTip();
        return true;
    case QEvent::Leave:
    case QEvent::Hide:
    case QEvent::MouseButtonPress:
    case QEvent::WindowDeactivate:
        hideTip();
        break;
    default:
        break;
    }
    return QPushButton::event(event);
}

void CDrawButton2::mousePressEvent(QMouseEvent* event)
{
    if (menu() && event->button() == Qt::LeftButton)
        return OpenMenu();
    QPushButton::mousePressEvent(event);
}

void CDrawButton2::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (key == Qt::Key_Escape && m_tip && m_tip->isVisible())
        return hideTip();
    if (menu() && (enter || key == Qt::Key_Space || key == Qt::Key_Down))
        return OpenMenu();
    if (enter)
        return click();
    QPushButton::keyPressEvent(event);
}

void CDrawButton2::focusInEvent(QFocusEvent* event)
{
    QPushButton::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        showTip();
}

void CDrawButton2::focusOutEvent(QFocusEvent* event)
{
    hideTip();
    QPushButton::focusOutEvent(event);
}

void CDrawButton2::showTip()
{
    if (m_tip && !(menu() && menu()->isVisible()))
        m_tip->ShowTip(*this, toolTip(), m_keys);
}

void CDrawButton2::hideTip()
{
    if (m_tip)
        m_tip->HideTip(*this);
}

void CDrawButton2::drawBack(QPainter& painter, const QColor& ink) const
{
    const QColor accent = palette().color(QPalette::Highlight);
    const bool hovered = underMouse() && isEnabled();
    painter.setPen(Qt::NoPen);
    painter.setBrush(isDown()      ? veil(ink, 0.24)
                     : isChecked() ? veil(accent, hovered ? 0.4 : 0.28)
                     : hovered     ? veil(ink, 0.11)
                                   : QColor(Qt::transparent));
    painter.drawRoundedRect(QRectF(rect()), corner, corner);
    painter.setBrush(Qt::NoBrush);
    if (hasFocus())
        painter.setPen(QPen(accent, 2));
    else if (isChecked())
        painter.setPen(QPen(accent, 1));
    else
        return;
    const double inset = painter.pen().widthF() / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), corner - 1, corner - 1);
}

void CDrawButton2::drawFace(QPainter& painter, const QColor& ink) const
{
    if (!m_icon.isEmpty()) {
        const QPoint at((width() - iconSide) / 2, (height() - iconSide) / 2);
        painter.drawPixmap(at, ormalux::iconPixmap(m_icon, ink, iconSide, devicePixelRatioF()));
        return;
    }
    QFont face = font();
    face.setPixelSize(14);
    face.setBold(true);
    painter.setFont(face);
    painter.setPen(ink);
    painter.drawText(rect().adjusted(0, 0, 0, -3), Qt::AlignCenter, text());
    const double middle = width() / 2.0;
    const double base = height() - 6;
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawPolygon(QPolygonF({{middle - 3, base}, {middle + 3, base}, {middle, base + 3}}));
}

void CDrawButton2::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ink = palette().color(QPalette::Active, QPalette::WindowText);
    drawBack(painter, ink);
    painter.setOpacity(isEnabled() ? 1 : 0.35);
    drawFace(painter, ink);
}
