#include "tools/DeviceCanvas.h"

#include <QWidget>

#include <cmath>

namespace ormalux {

DeviceCanvas::DeviceCanvas(QWidget& widget, const QColor& background)
    : m_widget(widget), m_scale(widget.devicePixelRatioF()),
      m_image(int(std::ceil(widget.width() * m_scale)), int(std::ceil(widget.height() * m_scale)),
              QImage::Format_RGB32)
{
    m_image.fill(background);
    m_painter.begin(&m_image);
}

DeviceCanvas::~DeviceCanvas()
{
    m_painter.end();
    m_image.setDevicePixelRatio(m_scale);
    QPainter(&m_widget).drawImage(QPoint(0, 0), m_image);
}

} // namespace ormalux
