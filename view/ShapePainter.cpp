#include "view/ShapePainter.h"

#include "view/ClippedLines.h"
#include "view/LabelPlacer.h"
#include "view/PenCache.h"
#include "view/ShapeList.h"
#include "view/TextMasks.h"
#include "view/ThinShapes.h"

#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <new>
#include <numbers>
#include <vector>

namespace ormalux {

namespace {

/// A box of device pixels, all four sides inclusive.
struct Box
{
    std::int64_t left;
    std::int64_t top;
    std::int64_t right;
    std::int64_t bottom;

    bool meets(const RECT& clip) const
    {
        return left < clip.right && right >= clip.left && top < clip.bottom && bottom >= clip.top;
    }
};

/// One run over the list: the painter with what is selected into it, and the lines that wait for it.
class ShapeRun
{
public:
    ShapeRun(const ShapeList& list, QPainter& painter, float zoomX, float zoomY, const RECT* clip)
        : m_list(list), m_painter(painter), m_zoomX(zoomX), m_zoomY(zoomY), m_lines(painter),
          m_clip(clip ? *clip : m_lines.shown())
    {}

    void draw()
    {
        for (const Shape& shape : m_list.shapes()) {
            const Box box = boxOf(shape);
            if (!box.meets(m_clip))
                continue;
            if (shape.kind != ShapeKind::Label)
                drawOne(shape, box);
            else if (m_labels.size() < LabelPlacer::tried)
                m_labels.push_back({&shape, {int(box.left), int(box.top), int(box.right), int(box.bottom)}});
        }
        m_lines.flush();
        if (!m_labels.empty() && qGuiApp)
            drawLabels();
    }

private:
    Box boxOf(const Shape& shape) const
    {
        const int x = toDevice(shape.x1, m_zoomX);
        const int y = toDevice(shape.y1, m_zoomY);
        if (shape.kind == ShapeKind::Cross) {
            const int arm = std::abs(shape.extent);
            return {std::int64_t(x) - arm, std::int64_t(y) - arm, std::int64_t(x) + arm,
                    std::int64_t(y) + arm};
        }
        if (shape.kind == ShapeKind::Text) {
            const double line = 1.2 * std::abs(shape.extent ? shape.extent : 12);
            return {x, y, x + std::int64_t(line * shape.textLength), y + std::int64_t(line)};
        }
        const int x2 = toDevice(shape.x2, m_zoomX);
        const int y2 = toDevice(shape.y2, m_zoomY);
        return {std::min(x, x2), std::min(y, y2), std::max(x, x2), std::max(y, y2)};
    }

    void drawOne(const Shape& shape, const Box& box)
    {
        if (shape.kind == ShapeKind::Text)
            return drawText(shape, box);
        if (shape.kind == ShapeKind::Cross && shape.extent == 0)
            return drawDot(shape, box);
        select(shape);
        switch (shape.kind) {
        case ShapeKind::Line:
            return addShaft(shape);
        case ShapeKind::Arrow:
            addShaft(shape);
            return addHead(shape);
        case ShapeKind::Rectangle:
            return m_lines.rectangle(int(box.left), int(box.top), int(box.right), int(box.bottom));
        case ShapeKind::Ellipse:
            return m_lines.ellipse(int(box.left), int(box.top), int(box.right), int(box.bottom));
        default:
            m_lines.line(double(box.left), double(box.top), double(box.right), double(box.bottom));
            return m_lines.line(double(box.right), double(box.top), double(box.left), double(box.bottom));
        }
    }

    void select(const Shape& shape)
    {
        if (m_selected && m_style == shape.style && m_width == shape.width && m_color == shape.color)
            return;
        m_style = shape.style;
        m_width = shape.width;
        m_color = shape.color;
        m_selected = true;
        if (m_lines.canvas() && isThinPen(m_style, m_width))
            m_lines.setThin(qRgb(GetRValue(m_color), GetGValue(m_color), GetBValue(m_color)));
        else
            m_lines.setPen(cachedPen(m_style, m_width, m_color));
    }

    void addShaft(const Shape& shape)
    {
        m_lines.line(toDevice(shape.x1, m_zoomX), toDevice(shape.y1, m_zoomY), toDevice(shape.x2, m_zoomX),
                     toDevice(shape.y2, m_zoomY));
    }

    void addHead(const Shape& shape)
    {
        // The direction of the unrounded shaft: a short one still points the right way.
        const double dx = (double(shape.x1) - shape.x2) * m_zoomX;
        const double dy = (double(shape.y1) - shape.y2) * m_zoomY;
        if ((dx == 0 && dy == 0) || shape.extent == 0)
            return;
        const double tipX = toDevice(shape.x2, m_zoomX);
        const double tipY = toDevice(shape.y2, m_zoomY);
        const double length = std::hypot(dx, dy);
        const double backX = shape.extent * std::numbers::sqrt3 / 2 * dx / length;
        const double backY = shape.extent * std::numbers::sqrt3 / 2 * dy / length;
        const double sideX = shape.extent * dy / length / 2;
        const double sideY = -shape.extent * dx / length / 2;
        m_lines.line(tipX, tipY, std::round(tipX + backX + sideX), std::round(tipY + backY + sideY));
        m_lines.line(tipX, tipY, std::round(tipX + backX - sideX), std::round(tipY + backY - sideY));
    }

    void drawDot(const Shape& shape, const Box& box)
    {
        m_lines.flush();
        if (m_lines.canvas())
            return thinLine(*m_lines.canvas(), box.left, box.top, box.left, box.top,
                            toQColor(shape.color).rgb());
        m_painter.fillRect(int(box.left), int(box.top), 1, 1, toQColor(shape.color));
    }

    void drawText(const Shape& shape, const Box& box)
    {
        if (!qGuiApp)
            return;
        m_lines.flush();
        write(m_list.text(shape), shape.extent, double(box.left), double(box.top), toQColor(shape.color));
    }

    /// The text with its left top corner at the point.
    void write(std::string_view text, int extent, double x, double y, const QColor& color)
    {
        const int height = std::abs(extent);
        if (m_lines.canvas() && height <= tallestMask) {
            const DeviceCanvas& canvas = *m_lines.canvas();
            const auto mask = textMask(text, height, canvas.scale);
            return blendMask(canvas, canvas.column(x) + mask->left, canvas.row(y) + mask->top, *mask,
                             color.rgb());
        }
        m_selected = false;
        m_painter.setPen(color);
        if (m_painter.font() != cachedFont(extent))
            m_painter.setFont(cachedFont(extent));
        m_painter.drawText(QPointF(x, y + fontAscent(extent)),
                           QString::fromUtf8(text.data(), qsizetype(text.size())));
    }

    /// Over everything else, where they disturb neither each other nor other boxes.
    void drawLabels()
    {
        const QFontMetrics metrics(cachedFont(LabelPlacer::letters));
        LabelPlacer placer(shownPart());
        for (const Label& label : m_labels)
            placer.addBox(label.box);
        for (std::size_t i = 0; i < m_labels.size() && !placer.full(); ++i) {
            const Shape& shape = *m_labels[i].shape;
            const std::string_view text = m_list.text(shape);
            const SIZE size{widthOf(text, metrics), metrics.height()};
            if (const auto at = placer.place(i, size, LABEL_PLACE(shape.style)))
                writeWithHalo(text, *at, toQColor(shape.color));
        }
    }

    /// From the mask that is drawn and kept, where there is one: measuring a text takes longer than placing
    /// it.
    int widthOf(std::string_view text, const QFontMetrics& metrics) const
    {
        if (!m_lines.canvas())
            return metrics.horizontalAdvance(QString::fromUtf8(text.data(), qsizetype(text.size())));
        const double scale = m_lines.canvas()->scale;
        const auto mask = textMask(text, LabelPlacer::letters, scale);
        return int(std::ceil((mask->left + mask->width) / scale));
    }

    void writeWithHalo(std::string_view text, POINT at, const QColor& color)
    {
        const QColor halo = qGray(color.rgb()) < 128 ? Qt::white : Qt::black;
        if (m_lines.canvas()) {
            const DeviceCanvas& canvas = *m_lines.canvas();
            const auto mask = haloMask(text, LabelPlacer::letters, canvas.scale, canvas.nib());
            blendMask(canvas, canvas.column(at.x) + mask->left, canvas.row(at.y) + mask->top, *mask,
                      halo.rgb());
        } else {
            for (const int down : {-1, 0, 1})
                for (const int right : {-1, 0, 1})
                    write(text, LabelPlacer::letters, at.x + right, at.y + down, halo);
        }
        write(text, LabelPlacer::letters, at.x, at.y, color);
    }

    /// The clip as far as the device shows it.
    RECT shownPart() const
    {
        const RECT& device = m_lines.shown();
        return {std::max(m_clip.left, device.left), std::max(m_clip.top, device.top),
                std::min(m_clip.right, device.right), std::min(m_clip.bottom, device.bottom)};
    }

    struct Label
    {
        const Shape* shape;
        RECT box;
    };

    const ShapeList& m_list;
    QPainter& m_painter;
    const float m_zoomX;
    const float m_zoomY;
    ClippedLines m_lines;
    const RECT m_clip;
    std::vector<Label> m_labels; ///< wait until all else is drawn
    bool m_selected = false;
    int m_style = 0;
    int m_width = 0;
    COLORREF m_color = 0;
};

} // namespace

void drawShapes(const ShapeList& list, QPainter* painter, float zoomX, float zoomY, const RECT* clip)
{
    if (!painter || !painter->isActive() || list.count() == 0)
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setBrush(Qt::NoBrush);
    painter->setBackgroundMode(Qt::TransparentMode);
    try {
        ShapeRun(list, *painter, zoomX, zoomY, clip).draw();
    } catch (const std::bad_alloc&) { // what is drawn so far is all
    }
    painter->restore();
}

} // namespace ormalux
