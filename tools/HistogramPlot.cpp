#include "tools/HistogramPlot.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ormalux {

namespace {

constexpr double grip = 8;    ///< how far from a line the mouse still takes it
constexpr int eitherLine = 2; ///< the mouse has taken two lines on the same level

} // namespace

HistogramPlot::HistogramPlot(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(300, 160);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void HistogramPlot::setCurves(std::vector<LevelCurve> curves)
{
    m_curves = std::move(curves);
    update();
}

void HistogramPlot::setLogarithmic(bool logarithmic)
{
    m_logarithmic = logarithmic;
    update();
}

void HistogramPlot::setLines(int low, int high)
{
    m_lines[0] = std::clamp(std::min(low, high), 0, 255);
    m_lines[1] = std::clamp(std::max(low, high), 0, 255);
    update();
}

void HistogramPlot::setMarked(int level)
{
    m_marked = level;
    update();
}

/// Room for the counts on the left, the lines' numbers above, the levels below.
QRectF HistogramPlot::plotRect() const
{
    const QFontMetricsF metrics(font());
    const double number = metrics.horizontalAdvance(QStringLiteral("0000k"));
    return QRectF(rect()).adjusted(number + 6, metrics.height() + 6, -0.9 * number - 4,
                                   -metrics.height() - 8);
}

double HistogramPlot::placeOf(int level) const
{
    const QRectF plot = plotRect();
    return plot.left() + (level + 0.5) * plot.width() / 256;
}

int HistogramPlot::levelAt(double x) const
{
    const QRectF plot = plotRect();
    return int(std::floor((x - plot.left()) * 256 / std::max(plot.width(), 1.0)));
}

int HistogramPlot::lineNear(double x) const
{
    const double toLow = std::abs(x - placeOf(low()));
    const double toHigh = std::abs(x - placeOf(high()));
    if (std::min(toLow, toHigh) > grip)
        return -1;
    return low() == high() ? eitherLine : toLow <= toHigh ? 0 : 1;
}

void HistogramPlot::moveLine(int line, int level)
{
    m_active = line;
    level = line == 0 ? std::clamp(level, 0, high()) : std::clamp(level, low(), 255);
    update();
    if (std::exchange(m_lines[line], level) != level)
        Q_EMIT linesMoved(low(), high());
}

void HistogramPlot::point(int level)
{
    level = level >= 0 && level <= 255 ? level : -1;
    if (std::exchange(m_pointed, level) == level)
        return;
    update();
    Q_EMIT levelPointed(level);
}

void HistogramPlot::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_dragged = lineNear(event->position().x());
    if (m_dragged == 0 || m_dragged == 1)
        m_active = m_dragged;
    update();
}

void HistogramPlot::mouseMoveEvent(QMouseEvent* event)
{
    const double x = event->position().x();
    if (m_dragged == eitherLine && levelAt(x) != low()) // where the mouse goes says which
        m_dragged = levelAt(x) < low() ? 0 : 1;
    const bool moves = m_dragged == 0 || m_dragged == 1;
    if (moves)
        moveLine(m_dragged, levelAt(x));
    setCursor(m_dragged >= 0 || lineNear(x) >= 0 ? Qt::SplitHCursor : Qt::ArrowCursor);
    point(moves ? m_lines[m_dragged] : levelAt(x));
}

void HistogramPlot::mouseReleaseEvent(QMouseEvent*)
{
    m_dragged = -1;
}

void HistogramPlot::leaveEvent(QEvent*)
{
    point(-1);
}

void HistogramPlot::keyPressEvent(QKeyEvent* event)
{
    const int at = m_lines[m_active];
    const int fast = event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier) ? 8 : 1;
    switch (event->key()) {
    case Qt::Key_Left:
        return moveLine(m_active, at - fast);
    case Qt::Key_Right:
        return moveLine(m_active, at + fast);
    case Qt::Key_PageDown:
        return moveLine(m_active, at - 16);
    case Qt::Key_PageUp:
        return moveLine(m_active, at + 16);
    case Qt::Key_Home:
        return moveLine(m_active, 0);
    case Qt::Key_End:
        return moveLine(m_active, 255);
    case Qt::Key_Up:
    case Qt::Key_Down:
        m_active = 1 - m_active;
        return update();
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace ormalux
