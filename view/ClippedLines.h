#pragma once

#include "view/DeviceCanvas.h"

#include <QLineF>
#include <QVector>

class QPen;

namespace ormalux {

/// Outlines of any size on a painter. Thin ones go straight into the painter's pixels where it has a canvas.
/// Others wait and are drawn many at a time, and what lies far outside the device is cut off first, where the
/// toolkit's own arithmetic would overflow or crawl. What is drawn lies over what was drawn before.
class ClippedLines
{
public:
    explicit ClippedLines(QPainter& painter);

    /// The part of the painter's coordinates that its device shows, right and bottom exclusive.
    const RECT& shown() const { return m_shown; }

    /// The painter's pixels; none when only the painter itself can draw.
    const std::optional<DeviceCanvas>& canvas() const { return m_canvas; }

    /// Draws the lines that wait and selects the pen for the next ones.
    void setPen(const QPen& pen);
    /// The next ones are thin and solid. Only with a canvas.
    void setThin(QRgb color);
    /// Both ends are part of the line.
    void line(double x1, double y1, double x2, double y2);
    /// The outline through both corners, which are in order.
    void rectangle(int left, int top, int right, int bottom);
    /// The outline in the rectangle; both corners belong to it.
    void ellipse(int left, int top, int right, int bottom);
    void flush();

private:
    void arc(double from, double to, int depth);

    QPainter& m_painter;
    std::optional<DeviceCanvas> m_canvas;
    bool m_thin = false;
    QRgb m_color = 0;
    RECT m_shown;
    double m_margin = 1; ///< how far a line's pixels reach from its middle
    QVector<QLineF> m_waiting;
    double m_centerX = 0; ///< the ellipse that arc() walks
    double m_centerY = 0;
    double m_radiusX = 0;
    double m_radiusY = 0;
};

} // namespace ormalux
