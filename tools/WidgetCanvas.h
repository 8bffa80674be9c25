#pragma once

#include <QImage>
#include <QPainter>

class QWidget;

namespace ormalux {

/// A picture of a widget in the screen's own pixels, so that lines and cells are sharp at every scale, for
/// the life of a paint event; its end shows it.
class WidgetCanvas
{
public:
    WidgetCanvas(QWidget& widget, const QColor& background);
    ~WidgetCanvas();
    WidgetCanvas(const WidgetCanvas&) = delete;
    WidgetCanvas& operator=(const WidgetCanvas&) = delete;

    /// In device pixels, without smoothing.
    QPainter& painter() { return m_painter; }
    int width() const { return m_image.width(); }
    int height() const { return m_image.height(); }
    double scale() const { return m_scale; }
    /// The device pixel at a place of the widget.
    int toDevice(double place) const { return qRound(place * m_scale); }
    /// Writes in the widget's font; the rectangle is the widget's.
    void text(const QRectF& rect, int alignment, const QString& text, const QColor& color);
    /// How thick a thin line is.
    int hair() const { return std::max(1, int(m_scale)); }

private:
    QWidget& m_widget;
    double m_scale;
    QImage m_image;
    QPainter m_painter;
};

} // namespace ormalux
