#include "tools/PatternEditView.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollBar>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using ormalux::PatternRead;
using ormalux::PatternTemplate;

namespace {

constexpr QPoint nowhere{-1, -1};

/// As high as looks square on a screen of square picture elements stretched to these proportions.
int cellHeightOn(const QScreen* screen)
{
    const QSize size = screen ? screen->size() : QSize(1, 1);
    const double proportion = double(size.width()) / std::max(size.height(), 1);
    return std::clamp(int(proportion * CPatternEditView::cellWidth - 1), 1, 10 * CPatternEditView::cellWidth);
}

int floorDivide(int value, int by)
{
    return value >= 0 ? value / by : -((-value + by - 1) / by);
}

/// What the held buttons paint: the left one black, else the right one white; -1 for none.
int valueOf(Qt::MouseButtons buttons)
{
    return buttons & Qt::LeftButton ? 0 : buttons & Qt::RightButton ? 255 : -1;
}

} // namespace

CPatternEditView::CPatternEditView(QWidget* parent) : QAbstractScrollArea(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setContextMenuPolicy(Qt::NoContextMenu);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setCursor(Qt::CrossCursor);
    m_cellHeight = cellHeightOn(QGuiApplication::primaryScreen());
}

PatternRead CPatternEditView::load(const QString& path)
{
    auto [how, pattern] = ormalux::readPattern(path.toUtf8().constData());
    m_history.restart(std::move(pattern));
    markSaved();
    m_cellHeight = cellHeightOn(screen());
    m_cursor = {0, 0};
    m_cross = nowhere;
    m_stroke = false;
    setScrollRange();
    shown();
    return how;
}

template <class Change>
void CPatternEditView::step(const Change& change)
{
    endStroke();
    m_history.beginStep();
    change(m_history.edited());
    m_history.endStep();
    shown();
}

void CPatternEditView::setKey(std::uint8_t key)
{
    step([key](PatternTemplate& pattern) { pattern.key = key; });
}

void CPatternEditView::flipLeftRight()
{
    step([](PatternTemplate& pattern) { pattern.flipLeftRight(); });
}

void CPatternEditView::flipUpDown()
{
    step([](PatternTemplate& pattern) { pattern.flipUpDown(); });
}

bool CPatternEditView::resizePattern(int width, int height)
{
    bool resized = false;
    step([&](PatternTemplate& pattern) { resized = pattern.resize(width, height); });
    return resized;
}

void CPatternEditView::undo()
{
    endStroke();
    m_history.undo();
    shown();
}

void CPatternEditView::redo()
{
    endStroke();
    m_history.redo();
    shown();
}

void CPatternEditView::shown()
{
    setScrollRange();
    moveCursor(m_cursor);
    viewport()->update();
    Q_EMIT patternChanged();
}

void CPatternEditView::setScrollRange()
{
    const QSize part = viewport()->size();
    const auto set = [](QScrollBar* bar, int length, int shownLength, int cell) {
        bar->setRange(0, std::max(0, length + 1 - shownLength)); // the frame's last line can be seen
        bar->setPageStep(shownLength);
        bar->setSingleStep(cell);
    };
    set(horizontalScrollBar(), pattern().width * cellWidth, part.width(), cellWidth);
    set(verticalScrollBar(), pattern().height * m_cellHeight, part.height(), m_cellHeight);
}

QPoint CPatternEditView::cellAt(QPoint position) const
{
    return {floorDivide(position.x() + horizontalScrollBar()->value(), cellWidth),
            floorDivide(position.y() + verticalScrollBar()->value(), m_cellHeight)};
}

/// Every cell between two, both included; those outside the template are left out.
void CPatternEditView::paintLine(QPoint from, QPoint to, std::uint8_t value)
{
    const QPoint way = to - from;
    const int steps = std::max(std::abs(way.x()), std::abs(way.y()));
    for (int i = 0; i <= steps; ++i) {
        const double part = steps > 0 ? double(i) / steps : 0.0;
        m_history.edited().set(from.x() + int(std::lround(way.x() * part)),
                               from.y() + int(std::lround(way.y() * part)), value);
    }
    viewport()->update();
    Q_EMIT patternChanged();
}

void CPatternEditView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton && event->button() != Qt::RightButton)
        return;
    if (!m_stroke)
        m_history.beginStep();
    m_stroke = true;
    m_cross = nowhere;
    m_lastCell = cellAt(event->position().toPoint());
    if (pattern().contains(m_lastCell.x(), m_lastCell.y()))
        m_cursor = m_lastCell;
    paintLine(m_lastCell, m_lastCell, event->button() == Qt::LeftButton ? 0 : 255);
}

void CPatternEditView::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event); // a fast second click paints, too
}

void CPatternEditView::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint position = event->position().toPoint();
    const int value = valueOf(event->buttons());
    if (m_stroke && value >= 0) {
        const QPoint cell = cellAt(position);
        paintLine(m_lastCell, cell, std::uint8_t(value));
        m_lastCell = cell;
    }
    moveCross(position);
}

void CPatternEditView::mouseReleaseEvent(QMouseEvent*)
{
    moveCross(nowhere);
    endStroke();
}

void CPatternEditView::endStroke()
{
    if (!m_stroke)
        return;
    m_stroke = false;
    m_history.endStep();
    Q_EMIT patternChanged();
}

bool CPatternEditView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave)
        moveCross(nowhere);
    return QAbstractScrollArea::viewportEvent(event);
}

void CPatternEditView::moveCross(QPoint position)
{
    m_cross = position;
    viewport()->update();
}

void CPatternEditView::moveCursor(QPoint cell)
{
    m_cursor = {std::clamp(cell.x(), 0, std::max(pattern().width - 1, 0)),
                std::clamp(cell.y(), 0, std::max(pattern().height - 1, 0))};
    viewport()->update();
}

void CPatternEditView::keyPressEvent(QKeyEvent* event)
{
    const PatternTemplate& shownNow = pattern();
    const int page = std::max(viewport()->height() / m_cellHeight - 1, 1);
    const struct
    {
        int key;
        QPoint to;
    } moves[] = {
        {Qt::Key_Left, m_cursor - QPoint(1, 0)},      {Qt::Key_Right, m_cursor + QPoint(1, 0)},
        {Qt::Key_Up, m_cursor - QPoint(0, 1)},        {Qt::Key_Down, m_cursor + QPoint(0, 1)},
        {Qt::Key_Home, QPoint(0, m_cursor.y())},      {Qt::Key_End, QPoint(shownNow.width - 1, m_cursor.y())},
        {Qt::Key_PageUp, m_cursor - QPoint(0, page)}, {Qt::Key_PageDown, m_cursor + QPoint(0, page)}};
    const auto paint = [this](QPoint from, int value) {
        if (!m_stroke)
            m_history.beginStep();
        paintLine(from, m_cursor, std::uint8_t(value));
        if (!m_stroke)
            m_history.endStep();
        Q_EMIT patternChanged();
    };
    for (const auto& move : moves) {
        if (event->key() != move.key)
            continue;
        const QPoint from = m_cursor;
        moveCursor(move.to);
        if (event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier))
            paint(from, event->modifiers() & Qt::ShiftModifier ? 0 : 255);
        const auto see = [](QScrollBar* bar, int start, int length, int shownLength) {
            bar->setValue(std::clamp(bar->value(), start + length + 1 - shownLength, start));
        };
        see(horizontalScrollBar(), m_cursor.x() * cellWidth, cellWidth, viewport()->width());
        see(verticalScrollBar(), m_cursor.y() * m_cellHeight, m_cellHeight, viewport()->height());
        return;
    }
    const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (plain && (event->key() == Qt::Key_Space || event->key() == Qt::Key_B))
        return paint(m_cursor, 0);
    if (plain && event->key() == Qt::Key_W)
        return paint(m_cursor, 255);
    event->ignore(); // the dialog's
}

void CPatternEditView::resizeEvent(QResizeEvent*)
{
    setScrollRange();
}

void CPatternEditView::focusInEvent(QFocusEvent*)
{
    viewport()->update();
}

void CPatternEditView::focusOutEvent(QFocusEvent*)
{
    viewport()->update();
}

void CPatternEditView::scrollContentsBy(int, int)
{
    moveCross(nowhere);
}
