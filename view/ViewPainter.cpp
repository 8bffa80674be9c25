#include "view/ViewPainter.h"

#include "view/ClippedLines.h"
#include "view/DrawObjArray.h"
#include "view/NearestPixels.h"
#include "view/PenCache.h"
#include "view/ViewTracker.h"
#include "view/XorPainting.h"

#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QPen>

#include <cmath>
#include <vector>

namespace ormalux {

namespace {

constexpr COLORREF levelColor = 0x00FF00FF;
constexpr int levelHeight = 12;

/// The part of the client area, in device coordinates, that the frame shows.
QSize clientOf(const QImage& frame)
{
    return {int(std::ceil(frame.width() / frame.devicePixelRatio())),
            int(std::ceil(frame.height() / frame.devicePixelRatio()))};
}

/// Rectangles much larger than the frame, cut to just outside of it: the toolkit need not walk the rest.
RECT nearFrame(const RECT& rect, QSize client)
{
    constexpr int margin = 64;
    const auto x = [&](int at) { return std::clamp(at, -margin, client.width() + margin); };
    const auto y = [&](int at) { return std::clamp(at, -margin, client.height() + margin); };
    return {x(rect.left), y(rect.top), x(rect.right), y(rect.bottom)};
}

/// A gray level as it stands in its cell, drawn once: thousands of them are visible at a time. Kept for one
/// scale of the screen; only the thread that paints comes here.
const QImage& levelLabel(std::uint8_t level, qreal scale)
{
    static QImage labels[256];
    QImage& label = labels[level];
    const int cell = int(largestZoom);
    if (!label.isNull() && label.devicePixelRatio() == scale)
        return label;
    label = QImage(QSize(cell, cell) * scale, QImage::Format_ARGB32_Premultiplied);
    label.setDevicePixelRatio(scale);
    label.fill(Qt::transparent);
    QPainter painter(&label);
    painter.setFont(cachedFont(levelHeight));
    painter.setPen(toQColor(levelColor));
    painter.drawText(QRect(0, 0, cell, cell), Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip,
                     QString::number(level));
    return label;
}

QPolygon corners(const RECT& rect)
{
    return QPolygon(
        {{rect.left, rect.top}, {rect.right, rect.top}, {rect.right, rect.bottom}, {rect.left, rect.bottom}});
}

} // namespace

void prepareFrame(QImage& frame, QSize client, qreal scale)
{
    const QSize size(int(std::ceil(client.width() * scale)), int(std::ceil(client.height() * scale)));
    if (frame.size() != size)
        frame = QImage(size, QImage::Format_RGB32);
    frame.setDevicePixelRatio(scale);
    frame.fill(Qt::black);
}

void paintPixels(QImage& frame, const PixelSource& picture, const ViewGeometry& geometry)
{
    if (frame.isNull() || picture.empty())
        return;
    const float scale = float(frame.devicePixelRatio());
    std::vector<int> columns(std::size_t(frame.width()));
    std::vector<int> rows(std::size_t(frame.height()));
    for (std::size_t x = 0; x < columns.size(); ++x)
        columns[x] = geometry.columnAt(float(x) / scale);
    for (std::size_t y = 0; y < rows.size(); ++y)
        rows[y] = geometry.rowAt(float(y) / scale);
    copyNearest(picture, columns, rows, reinterpret_cast<std::uint32_t*>(frame.bits()),
                frame.bytesPerLine() / 4);
}

void paintOverlays(QImage& frame, CDrawObjArray& shapes, const ViewGeometry& geometry)
{
    if (frame.isNull() || shapes.GetCount() == 0)
        return;
    QPainter painter(&frame);
    const QPoint start = geometry.center - geometry.scroll;
    const QSize client = clientOf(frame);
    painter.translate(start);
    RECT clip{-start.x(), -start.y(), client.width() - start.x(), client.height() - start.y()};
    shapes.Draw(&painter, geometry.zoom, geometry.zoom, &clip);
}

void paintLevels(QImage& frame, const PixelSource& picture, const ViewGeometry& geometry)
{
    if (frame.isNull() || picture.empty() || picture.bitCount != 8 || geometry.zoom < largestZoom || !qGuiApp)
        return;
    QPainter painter(&frame);
    const QSize client = clientOf(frame);
    const CPoint first = geometry.toImage({0, 0});
    const CPoint last = geometry.toImage({double(client.width()), double(client.height())});
    for (int y = std::max<int>(first.y, 0); y <= std::min<int>(last.y, picture.height - 1); ++y)
        for (int x = std::max<int>(first.x, 0); x <= std::min<int>(last.x, picture.width - 1); ++x) {
            const CPoint corner = geometry.toDevicePoint(x, y);
            painter.drawImage(QPoint(corner.x, corner.y),
                              levelLabel(picture.row(y)[x], frame.devicePixelRatio()));
        }
}

void paintXor(QImage& frame, XorFigure figure, const RECT& rect, COLORREF color)
{
    if (frame.isNull())
        return;
    QPainter painter(&frame);
    QPen pen(toQColor(color), 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
    if (figure == XorFigure::FocusRectangle) {
        pen.setCapStyle(Qt::FlatCap);
        pen.setDashPattern({1, 1});
    }
    const XorPainting inverting(painter, pen);
    if (figure == XorFigure::Line) {
        ClippedLines lines(painter);
        lines.setPen(pen);
        lines.line(rect.left, rect.top, rect.right, rect.bottom);
        return lines.flush();
    }
    const RECT drawn = nearFrame(ordered(rect), clientOf(frame));
    if (drawn.left == drawn.right || drawn.top == drawn.bottom)
        painter.drawLine(drawn.left, drawn.top, drawn.right, drawn.bottom);
    else
        painter.drawPolygon(corners(drawn));
}

void paintTracker(QImage& frame, const RECT& device)
{
    const COLORREF white = RGB(255, 255, 255);
    paintXor(frame, XorFigure::Rectangle, device, white);
    for (int handle = 1; handle <= trackerHandles; ++handle) {
        const CRect square = handleSquare(device, handle);
        paintXor(frame, XorFigure::Rectangle, {square.left, square.top, square.right - 1, square.bottom - 1},
                 white);
    }
}

} // namespace ormalux
