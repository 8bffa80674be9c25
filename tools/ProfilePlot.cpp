#include "tools/ProfilePlot.h"

#include "tools/GaugeStrokes.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace ormalux {

namespace {

constexpr int topLevel = 255;

QColor colorOf(const Stroke& stroke)
{
    return QColor(int(stroke.color & 255), int(stroke.color >> 8 & 255), int(stroke.color >> 16 & 255));
}

} // namespace

ProfilePlot::ProfilePlot(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setCursor(Qt::CrossCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::MinimumExpanding);
}

void ProfilePlot::setProfile(std::vector<PointGaugeTool::Sample> samples, int threshold,
                             std::vector<int> marks, int best)
{
    m_samples = std::move(samples);
    m_threshold = threshold;
    m_marks = std::move(marks);
    m_best = best;
    m_chosen = -1;
    m_hovered = std::min(m_hovered, int(m_samples.size()) - 1);
    update();
}

void ProfilePlot::setChosen(int mark)
{
    m_chosen = mark;
    update();
}

QSize ProfilePlot::sizeHint() const
{
    return {360, 7 * fontMetrics().height()};
}

QSize ProfilePlot::minimumSizeHint() const
{
    return {160, 5 * fontMetrics().height()};
}

/// Beside it is room for the ends of the scale.
QRect ProfilePlot::plotArea() const
{
    const int label = fontMetrics().horizontalAdvance(QStringLiteral("255")) + 6;
    return rect().adjusted(label, 4, -2, -3);
}

int ProfilePlot::toX(int sample) const
{
    const QRect area = plotArea();
    const int last = std::max(1, int(m_samples.size()) - 1);
    return area.left() + int(std::int64_t(sample) * (area.width() - 1) / last);
}

int ProfilePlot::toY(int level) const
{
    const QRect area = plotArea();
    return area.bottom() - level * (area.height() - 1) / topLevel;
}

int ProfilePlot::sampleAt(int x) const
{
    const QRect area = plotArea();
    const int last = int(m_samples.size()) - 1;
    if (last < 0 || area.width() < 2)
        return -1;
    const std::int64_t from = std::clamp(x, area.left(), area.right()) - area.left();
    return int((from * last + (area.width() - 1) / 2) / (area.width() - 1));
}

void ProfilePlot::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect area = plotArea();
    painter.fillRect(area, palette().base());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int label = area.left() - 5, line = fontMetrics().height();
    painter.drawText(QRect(0, 0, label, line), Qt::AlignRight | Qt::AlignTop, QStringLiteral("255"));
    painter.drawText(QRect(0, height() - line, label, line), Qt::AlignRight | Qt::AlignBottom,
                     QStringLiteral("0"));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(area);
    if (m_samples.empty())
        return;
    paintProfile(painter);
    paintMarks(painter);
    paintReading(painter);
}

/// Where several samples share a column, the column shows all their levels.
void ProfilePlot::paintProfile(QPainter& painter) const
{
    painter.setPen(palette().color(QPalette::Text));
    QPoint before(toX(0), toY(m_samples[0].level));
    const int count = int(m_samples.size());
    for (int i = 0; i < count;) {
        const int x = toX(i);
        int low = m_samples[std::size_t(i)].level, high = low, last = low;
        painter.drawLine(before, {x, toY(low)});
        for (; i < count && toX(i) == x; ++i) {
            last = m_samples[std::size_t(i)].level;
            low = std::min(low, last);
            high = std::max(high, last);
        }
        painter.drawLine(x, toY(low), x, toY(high));
        before = {x, toY(last)};
    }
}

void ProfilePlot::paintMarks(QPainter& painter) const
{
    const QRect area = plotArea();
    for (int i = 0; i < int(m_marks.size()); ++i) {
        const bool best = i == m_best, chosen = i == m_chosen;
        painter.setPen(QPen(colorOf(chosen ? strokes::chosen
                                    : best ? strokes::result
                                           : strokes::edge),
                            best || chosen ? 2 : 1, best || chosen ? Qt::SolidLine : Qt::DotLine));
        const int sample = m_marks[std::size_t(i)], x = toX(sample);
        painter.drawLine(x, area.top() + 1, x, area.bottom() - 1);
        painter.fillRect(x - 2, toY(m_samples[std::size_t(sample)].level) - 2, 5, 5, painter.pen().color());
    }
    if (m_threshold == 0)
        return;
    painter.setPen(QPen(colorOf(strokes::scan).darker(115), 1, Qt::DashLine));
    painter.drawLine(area.left() + 1, toY(m_threshold), area.right() - 1, toY(m_threshold));
}

void ProfilePlot::paintReading(QPainter& painter) const
{
    if (m_hovered < 0)
        return;
    const QRect area = plotArea();
    const PointGaugeTool::Sample& sample = m_samples[std::size_t(m_hovered)];
    const int x = toX(m_hovered);
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawLine(x, area.top() + 1, x, area.bottom() - 1);
    const QString text = tr("(%1, %2): %3").arg(sample.at.x).arg(sample.at.y).arg(sample.level);
    QRect box = fontMetrics().boundingRect(text).adjusted(-4, -2, 4, 2);
    // On the side of the line that has the room, away from the profile's level.
    const bool leftward = x > area.center().x();
    box.moveTopLeft({leftward ? x - box.width() - 3 : x + 4,
                     sample.level > topLevel / 2 ? area.bottom() - box.height() - 2 : area.top() + 3});
    painter.fillRect(box, palette().toolTipBase());
    painter.setPen(palette().color(QPalette::ToolTipText));
    painter.drawText(box, Qt::AlignCenter, text);
}

void ProfilePlot::dragTo(int y)
{
    const QRect area = plotArea();
    if (m_samples.empty() || area.height() < 2)
        return;
    const int up = area.bottom() - std::clamp(y, area.top(), area.bottom());
    Q_EMIT thresholdDragged(std::min(topLevel, (up * topLevel + area.height() - 2) / (area.height() - 1)));
}

void ProfilePlot::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        dragTo(int(event->position().y()));
}

void ProfilePlot::mouseMoveEvent(QMouseEvent* event)
{
    m_hovered = sampleAt(int(event->position().x()));
    if (event->buttons() & Qt::LeftButton)
        dragTo(int(event->position().y()));
    update();
}

void ProfilePlot::leaveEvent(QEvent*)
{
    m_hovered = -1;
    update();
}

} // namespace ormalux
