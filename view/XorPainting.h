#pragma once

#include <QPainter>

namespace ormalux {

/// For the life of this object the painter inverts what it draws over: drawing the same twice erases it.
/// Figures must be drawn as one polyline, because two lines that share a corner cancel there.
class XorPainting
{
public:
    XorPainting(QPainter& painter, const QPen& pen) : m_painter(painter)
    {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(pen);
        painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    }
    ~XorPainting() { m_painter.restore(); }
    XorPainting(const XorPainting&) = delete;
    XorPainting& operator=(const XorPainting&) = delete;

private:
    QPainter& m_painter;
};

} // namespace ormalux
