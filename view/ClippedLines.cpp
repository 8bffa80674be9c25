#include "view/ClippedLines.h"

#include "view/ThinShapes.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ormalux {

namespace {

/// Coordinates up to here are left to the toolkit.
constexpr double safe = 16000;

bool isSafe(double a, double b, double c, double d)
{
    return std::max({std::abs(a), std::abs(b), std::abs(c), std::abs(d)}) <= safe;
}

/// Narrows the part [first, last] of a line to where start + t * step lies in [low, high].
bool narrow(double start, double step, double low, double high, double& first, double& last)
{
    if (step == 0)
        return start >= low && start <= high;
    const double a = (low - start) / step;
    const double b = (high - start) / step;
    first = std::max(first, std::min(a, b));
    last = std::min(last, std::max(a, b));
    return first <= last;
}

bool cut(QLineF& line, const RECT& shown, double margin)
{
    double first = 0;
    double last = 1;
    if (!narrow(line.x1(), line.dx(), shown.left - margin, shown.right + margin, first, last) ||
        !narrow(line.y1(), line.dy(), shown.top - margin, shown.bottom + margin, first, last))
        return false;
    const QLineF whole = line;
    line = QLineF(std::round(whole.x1() + first * whole.dx()), std::round(whole.y1() + first * whole.dy()),
                  std::round(whole.x1() + last * whole.dx()), std::round(whole.y1() + last * whole.dy()));
    return true;
}

} // namespace

ClippedLines::ClippedLines(QPainter& painter)
    : m_painter(painter), m_canvas(canvasOf(painter)), m_shown{0, 0, 0, 0}
{
    if (!painter.device())
        return;
    const QRectF device(0, 0, painter.device()->width(), painter.device()->height());
    bool invertible = false;
    const QTransform back = painter.transform().inverted(&invertible);
    if (!invertible)
        return;
    const QRect shown = back.mapRect(device).toAlignedRect();
    m_shown = {shown.left(), shown.top(), shown.left() + shown.width(), shown.top() + shown.height()};
}

void ClippedLines::setPen(const QPen& pen)
{
    flush();
    m_thin = false;
    m_margin = pen.widthF() + 2;
    m_painter.setPen(pen);
}

void ClippedLines::setThin(QRgb color)
{
    flush();
    m_thin = true;
    m_margin = 3;
    m_color = color;
}

void ClippedLines::line(double x1, double y1, double x2, double y2)
{
    QLineF line(x1, y1, x2, y2);
    if (!isSafe(x1, y1, x2, y2) && !cut(line, m_shown, m_margin))
        return;
    if (m_thin)
        thinLine(*m_canvas, int(line.x1()), int(line.y1()), int(line.x2()), int(line.y2()), m_color);
    else
        m_waiting.append(line);
}

void ClippedLines::rectangle(int left, int top, int right, int bottom)
{
    if (m_thin)
        return thinRectangle(*m_canvas, left, top, right, bottom, m_color);
    if (isSafe(left, top, right, bottom)) {
        flush();
        if (left == right || top == bottom)
            m_painter.drawLine(left, top, right, bottom);
        else
            m_painter.drawRect(left, top, right - left, bottom - top);
        return;
    }
    line(left, top, right, top);
    line(right, top, right, bottom);
    line(right, bottom, left, bottom);
    line(left, bottom, left, top);
}

void ClippedLines::ellipse(int left, int top, int right, int bottom)
{
    if (m_thin)
        return thinEllipse(*m_canvas, left, top, right, bottom, m_color);
    if (isSafe(left, top, right, bottom)) {
        flush();
        if (left == right || top == bottom)
            m_painter.drawLine(left, top, right, bottom);
        else
            m_painter.drawEllipse(left, top, right - left, bottom - top);
        return;
    }
    m_centerX = (double(left) + right) / 2;
    m_centerY = (double(top) + bottom) / 2;
    m_radiusX = (double(right) - left) / 2;
    m_radiusY = (double(bottom) - top) / 2;
    for (int quarter = 0; quarter < 4; ++quarter)
        arc(quarter * std::numbers::pi / 2, (quarter + 1) * std::numbers::pi / 2, 0);
}

/// Halves an arc within one quarter until its pieces are all but straight, and leaves out what is not shown.
void ClippedLines::arc(double from, double to, int depth)
{
    const QLineF chord(m_centerX + m_radiusX * std::cos(from), m_centerY + m_radiusY * std::sin(from),
                       m_centerX + m_radiusX * std::cos(to), m_centerY + m_radiusY * std::sin(to));
    const double margin = m_margin + 1;
    if (std::max(chord.x1(), chord.x2()) < m_shown.left - margin ||
        std::min(chord.x1(), chord.x2()) > m_shown.right + margin ||
        std::max(chord.y1(), chord.y2()) < m_shown.top - margin ||
        std::min(chord.y1(), chord.y2()) > m_shown.bottom + margin)
        return;
    const double sagitta = std::max(m_radiusX, m_radiusY) * (1 - std::cos((to - from) / 2));
    if (sagitta < 0.25 || depth >= 40)
        return line(std::round(chord.x1()), std::round(chord.y1()), std::round(chord.x2()),
                    std::round(chord.y2()));
    const double middle = (from + to) / 2;
    arc(from, middle, depth + 1);
    arc(middle, to, depth + 1);
}

void ClippedLines::flush()
{
    if (m_waiting.isEmpty())
        return;
    m_painter.drawLines(m_waiting);
    m_waiting.clear();
}

} // namespace ormalux
