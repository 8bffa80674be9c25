#include "tools/PatternEditView.h"

#include "platform/Stdlib.h"
#include "tools/WidgetCanvas.h"

#include <QScrollBar>

#include <algorithm>

using ormalux::WidgetCanvas;

namespace {

constexpr QRgb colorOf(COLORREF color)
{
    return qRgb(GetRValue(color), GetGValue(color), GetBValue(color));
}

constexpr QRgb background = colorOf(0xFFFFFF);
constexpr QRgb gridColor = colorOf(0xC0C0C0);
constexpr QRgb frameColor = colorOf(0x800000);
constexpr QRgb centerColor = colorOf(128);

/// A stretch of cells along one side.
struct Cells
{
    int size;   ///< of a cell, in units of the widget
    int scroll; ///< of the view
    int count;
    int first, end; ///< those that can be seen
    const WidgetCanvas& canvas;

    Cells(int cell, int scrolled, int cells, int shown, const WidgetCanvas& on)
        : size(cell), scroll(scrolled), count(cells), first(std::min(scrolled / cell, cells)),
          end(std::min((scrolled + shown) / cell + 1, cells)), canvas(on)
    {}
    /// The device pixel where a cell begins.
    int begin(int cell) const { return canvas.toDevice(cell * size - scroll); }
    int middle() const { return canvas.toDevice(count * size / 2 - scroll); }
};

Cells columnsOf(const CPatternEditView& view, const WidgetCanvas& canvas)
{
    return {CPatternEditView::cellWidth, view.horizontalScrollBar()->value(), view.pattern().width,
            view.viewport()->width(), canvas};
}

Cells rowsOf(const CPatternEditView& view, const WidgetCanvas& canvas)
{
    return {view.cellHeight(), view.verticalScrollBar()->value(), view.pattern().height,
            view.viewport()->height(), canvas};
}

} // namespace

void CPatternEditView::paintEvent(QPaintEvent*)
{
    WidgetCanvas canvas(*viewport(), QColor(background));
    if (!pattern().pixels.empty()) {
        drawCells(canvas);
        drawLines(canvas);
        if (hasFocus())
            drawCursor(canvas);
    }
    if (m_cross.x() >= 0)
        CStdlib::DrawFocusCrossLine(&canvas.painter(), 0, 0, canvas.width(), canvas.height(),
                                    canvas.toDevice(m_cross.x()), canvas.toDevice(m_cross.y()));
}

void CPatternEditView::drawCells(WidgetCanvas& canvas) const
{
    const Cells columns = columnsOf(*this, canvas);
    const Cells rows = rowsOf(*this, canvas);
    for (int y = rows.first; y < rows.end; ++y)
        for (int x = columns.first; x < columns.end; ++x) {
            const int value = pattern().at(x, y);
            if (value < 255)
                canvas.painter().fillRect(QRect(columns.begin(x), rows.begin(y),
                                                columns.begin(x + 1) - columns.begin(x),
                                                rows.begin(y + 1) - rows.begin(y)),
                                          QColor(value, value, value));
        }
}

void CPatternEditView::drawLines(WidgetCanvas& canvas) const
{
    const Cells columns = columnsOf(*this, canvas);
    const Cells rows = rowsOf(*this, canvas);
    const int thick = canvas.hair();
    const int left = columns.begin(0), right = columns.begin(columns.count);
    const int top = rows.begin(0), bottom = rows.begin(rows.count);
    const auto upright = [&](int x, QRgb color) {
        canvas.painter().fillRect(x, top, thick, bottom - top + thick, QColor(color));
    };
    const auto level = [&](int y, QRgb color) {
        canvas.painter().fillRect(left, y, right - left + thick, thick, QColor(color));
    };
    for (int x = columns.first; x <= columns.end; ++x)
        upright(columns.begin(x), gridColor);
    for (int y = rows.first; y <= rows.end; ++y)
        level(rows.begin(y), gridColor);
    upright(columns.middle(), centerColor);
    level(rows.middle(), centerColor);
    for (const int x : {left, right})
        upright(x, frameColor);
    for (const int y : {top, bottom})
        level(y, frameColor);
}

/// A frame in the highlight's colour within a white one, to be seen on black and on white.
void CPatternEditView::drawCursor(WidgetCanvas& canvas) const
{
    const Cells columns = columnsOf(*this, canvas);
    const Cells rows = rowsOf(*this, canvas);
    const int thick = canvas.hair();
    QRect cell(QPoint(columns.begin(m_cursor.x()), rows.begin(m_cursor.y())),
               QPoint(columns.begin(m_cursor.x() + 1) + thick - 1, rows.begin(m_cursor.y() + 1) + thick - 1));
    const auto frame = [&](const QColor& color, int width) {
        for (int i = 0; i < width; ++i, cell.adjust(1, 1, -1, -1)) {
            canvas.painter().setPen(color);
            canvas.painter().drawRect(cell.adjusted(0, 0, -1, -1));
        }
    };
    frame(palette().color(QPalette::Active, QPalette::Highlight), 2 * thick);
    frame(Qt::white, thick);
}
