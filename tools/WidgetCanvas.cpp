#include "tools/WidgetCanvas.h"

#include <QWidget>

#include <cmath>

namespace ormalux {

WidgetCanvas::WidgetCanvas(QWidget& widget, const QColor& background)
    : m_widget(widget), m_scale(widget.devicePixelRatioF()),
      m_image(int(std::ceil(widget.width() * m_scale)), int(std::ceil(widget.height() * m_scale)),
              QImage::Format_RGB32)
{
    m_image.fill(background);
    m_painter.begin(&m_image);
}

void WidgetCanvas::text(const QRectF& rect, int alignment, const QString& text, const QColor& color)
{
    QFont font = m_widget.font();
    font.setPixelSize(QFontInfo(font).pixelSize()); // points would follow the picture's resolution
    m_painter.save();
    m_painter.scale(m_scale, m_scale);
    m_painter.setFont(font);
    m_painter.setPen(color);
    m_painter.drawText(rect, alignment, text);
    m_painter.restore();
}

WidgetCanvas::~WidgetCanvas()
{
    m_painter.end();
    m_image.setDevicePixelRatio(m_scale);
    QPainter(&m_widget).drawImage(QPoint(0, 0), m_image);
}

} // namespace ormalux
