#include "view/TipWindow.h"

#include <QPainter>
#include <QScreen>

namespace {

constexpr int margin = 7;
constexpr int gap = 4;          ///< between anchor and tip
constexpr int keysGap = 12;     ///< between text and keys
constexpr int widestText = 300; ///< longer texts are wrapped

} // namespace

CTipWnd::CTipWnd(QWidget* owner)
    : QWidget(owner, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput)
{
    setObjectName(QStringLiteral("tip"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void CTipWnd::ShowTip(const QWidget& anchor, const QString& text, const QString& keys)
{
    if (text.isEmpty())
        return hide();
    m_anchor = &anchor;
    m_text = text;
    m_keys = keys;
    setGeometry(place(anchor));
    update();
    show();
    raise();
}

void CTipWnd::HideTip(const QWidget& anchor)
{
    if (m_anchor == &anchor)
        hide();
}

QRect CTipWnd::place(const QWidget& anchor) const
{
    const QFontMetrics metrics = fontMetrics();
    QSize size =
        metrics.boundingRect(QRect(0, 0, widestText, 10000), Qt::TextWordWrap, m_text).size() + QSize(1, 0);
    if (!m_keys.isEmpty())
        size.rwidth() += keysGap + metrics.horizontalAdvance(m_keys);
    size += QSize(2 * margin, 2 * margin - 2);
    const QRect screen = anchor.screen()->availableGeometry();
    const QPoint corner = anchor.mapToGlobal(QPoint(0, anchor.height() + gap));
    QRect place(corner, size);
    if (place.bottom() > screen.bottom())
        place.moveBottom(anchor.mapToGlobal(QPoint(0, -gap)).y());
    place.moveLeft(qMax(screen.left(), qMin(place.left(), screen.right() + 1 - size.width())));
    return place;
}

void CTipWnd::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QPalette colors = palette();
    QColor text = colors.color(QPalette::ToolTipText);
    painter.fillRect(rect(), colors.color(QPalette::ToolTipBase));
    QColor line = text;
    line.setAlphaF(0.35f);
    painter.setPen(line);
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    const QRect inside = rect().adjusted(margin, margin - 1, -margin, 1 - margin);
    painter.setPen(text);
    painter.drawText(inside, Qt::TextWordWrap | Qt::AlignVCenter | Qt::AlignLeft, m_text);
    text.setAlphaF(0.6f);
    painter.setPen(text);
    painter.drawText(inside, Qt::AlignVCenter | Qt::AlignRight, m_keys);
}
