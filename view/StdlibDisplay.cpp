#include "platform/Stdlib.h"

#include "view/ClippedLines.h"
#include "view/PenCache.h"
#include "view/PicturePainters.h"
#include "view/PictureWriter.h"

#include <QClipboard>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPolygon>

#include <algorithm>

using ormalux::ClippedLines;

namespace {

/// A painter whose state comes back at the end; empty when there is nothing to paint on.
class Canvas
{
public:
    explicit Canvas(QPainter* painter) : m_painter(painter && painter->isActive() ? painter : nullptr)
    {
        if (!m_painter)
            return;
        m_painter->save();
        m_painter->setRenderHint(QPainter::Antialiasing, false);
        m_painter->setBrush(Qt::NoBrush);
    }
    ~Canvas()
    {
        if (m_painter)
            m_painter->restore();
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    explicit operator bool() const { return m_painter; }
    QPainter* operator->() const { return m_painter; }
    QPainter& operator*() const { return *m_painter; }

private:
    QPainter* m_painter;
};

/// The part of a rectangle (right and bottom exclusive) that the painter shows.
RECT shownPart(QPainter& painter, const RECT& rect)
{
    const RECT shown = ClippedLines(painter).shown();
    return {std::max(rect.left, shown.left), std::max(rect.top, shown.top), std::min(rect.right, shown.right),
            std::min(rect.bottom, shown.bottom)};
}

int between(int from, int to, std::int64_t at, std::int64_t last)
{
    return last > 0 ? int(from + (std::int64_t(to) - from) * at / last) : from;
}

} // namespace

void CStdlib::DrawLine(CDC* dc, int x1, int y1, int x2, int y2, COLORREF color)
{
    DrawLine(dc, x1, y1, x2, y2, color, 1);
}

void CStdlib::DrawLine(CDC* dc, int x1, int y1, int x2, int y2, COLORREF color, int width)
{
    if (const Canvas canvas{dc}) {
        ClippedLines lines(*canvas);
        lines.setPen(ormalux::cachedPen(0, width, color));
        lines.line(x1, y1, x2, y2);
        lines.flush();
    }
}

void CStdlib::DrawRectLine(CDC* dc, int left, int top, int right, int bottom, COLORREF color, int width)
{
    if (const Canvas canvas{dc}) {
        ClippedLines lines(*canvas);
        lines.setPen(ormalux::cachedPen(0, width, color));
        lines.rectangle(std::min(left, right), std::min(top, bottom), std::max(left, right),
                        std::max(top, bottom));
        lines.flush();
    }
}

void CStdlib::DrawTextA(CDC* dc, int x, int y, const char* text, int height, int weight, int italic,
                        COLORREF color, const char* face)
{
    const Canvas canvas{dc};
    if (!canvas || !text || !qGuiApp)
        return;
    QFont font = ormalux::cachedFont(height, face);
    font.setWeight(QFont::Weight(weight <= 0 ? 400 : std::min(weight, 1000)));
    font.setItalic(italic != 0);
    canvas->setFont(font);
    canvas->setPen(ormalux::toQColor(color));
    canvas->drawText(QPointF(x, double(y) + QFontMetrics(font).ascent()), QString::fromUtf8(text));
}

void CStdlib::FillSolidRect(CDC* dc, const RECT& rect, COLORREF color)
{
    if (const Canvas canvas{dc}) {
        const RECT part = shownPart(*canvas, rect);
        canvas->fillRect(QRect(QPoint(part.left, part.top), QPoint(part.right - 1, part.bottom - 1)),
                         ormalux::toQColor(color));
    }
}

void CStdlib::FillPolygon(CDC* dc, const POINT* points, int count, COLORREF color)
{
    const Canvas canvas{dc};
    if (!canvas || !points || count < 1)
        return;
    QPolygonF polygon;
    for (int i = 0; i < count; ++i)
        polygon.append(QPointF(points[i].x, points[i].y));
    canvas->setBrush(ormalux::toQColor(color));
    canvas->setPen(ormalux::cachedPen(0, 1, color));
    canvas->drawPolygon(polygon, Qt::OddEvenFill);
}

void CStdlib::DrawFocusCrossLine(CDC* dc, int left, int top, int right, int bottom, int x, int y)
{
    const Canvas canvas{dc};
    if (!canvas)
        return;
    const RECT part = shownPart(*canvas, {left, top, right, bottom});
    QList<QPoint> dots;
    if (y >= part.top && y < part.bottom)
        for (int i = part.left; i < part.right; ++i)
            if (i != x && ((i ^ y) & 1) == 0)
                dots.append({i, y});
    if (x >= part.left && x < part.right)
        for (int i = part.top; i < part.bottom; ++i)
            if (((i ^ x) & 1) == 0)
                dots.append({x, i});
    canvas->setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    canvas->setPen(ormalux::cachedPen(0, 1, RGB(255, 255, 255)));
    canvas->drawPoints(dots.constData(), int(dots.size()));
}

void CStdlib::DrawGradationTB(CDC* dc, RECT rect, COLORREF top, COLORREF bottom)
{
    const Canvas canvas{dc};
    if (!canvas)
        return;
    const RECT part = shownPart(*canvas, rect);
    const std::int64_t last = std::int64_t(rect.bottom) - rect.top - 1;
    for (int y = part.top; y < part.bottom && part.left < part.right; ++y) {
        const std::int64_t at = std::int64_t(y) - rect.top;
        canvas->fillRect(part.left, y, part.right - part.left, 1,
                         QColor(between(GetRValue(top), GetRValue(bottom), at, last),
                                between(GetGValue(top), GetGValue(bottom), at, last),
                                between(GetBValue(top), GetBValue(bottom), at, last)));
    }
}

void CStdlib::DrawBitmap(CDC* dc, CRect rect, unsigned char* bits, int width, int height, int bit_count)
{
    if (!bits || width < 1 || height < 1)
        return;
    const std::ptrdiff_t stride = ormalux::paddedRow(width, bit_count);
    ormalux::paintPicture(dc, rect, {bits + stride * (height - 1), width, height, -stride, bit_count});
}

int CStdlib::BitmapToFile(const QImage& bitmap, const char* path, CSize size)
{
    const int width = size.cx > 0 ? std::min<int>(size.cx, bitmap.width()) : bitmap.width();
    const int height = size.cy > 0 ? std::min<int>(size.cy, bitmap.height()) : bitmap.height();
    if (bitmap.isNull())
        return 0;
    return ormalux::writeBmp(path, bitmap.copy(0, 0, width, height)) ? 1 : 0;
}

int CStdlib::CopyToClipboard(CWnd*, const CString& text)
{
    QClipboard* const clipboard = qGuiApp ? QGuiApplication::clipboard() : nullptr;
    if (!clipboard)
        return 0;
    clipboard->setText(QString::fromStdString(text));
    return 1;
}
