#include "view/XorFigures.h"

#include "view/ClippedLines.h"
#include "view/DeviceCanvas.h"
#include "view/PenCache.h"
#include "view/ViewTracker.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace ormalux {

namespace {

using Coordinate = std::int64_t;

DeviceCanvas canvasOf(QImage& frame)
{
    return {reinterpret_cast<std::uint32_t*>(frame.bits()),
            frame.bytesPerLine() / 4,
            {0, 0, frame.width(), frame.height()},
            frame.devicePixelRatio()};
}

/// Device pixels; right and bottom do not belong to it.
struct Block
{
    Coordinate left;
    Coordinate top;
    Coordinate right;
    Coordinate bottom;
};

/// Inverts the block's pixels that are on the canvas and that covers(x, y) names.
template <class Covers>
void invert(const DeviceCanvas& canvas, const Block& block, QRgb ink, Covers covers)
{
    const Coordinate left = std::max<Coordinate>(block.left, canvas.bounds.left);
    const Coordinate right = std::min<Coordinate>(block.right, canvas.bounds.right);
    const Coordinate bottom = std::min<Coordinate>(block.bottom, canvas.bounds.bottom);
    for (Coordinate y = std::max<Coordinate>(block.top, canvas.bounds.top); y < bottom; ++y)
        for (Coordinate x = left; x < right; ++x)
            if (covers(x, y))
                *canvas.at(x, y) ^= ink;
}

/// The outline in four bands that share no pixel: the toolkit's own draws corners twice where it clips them.
void invertOutline(const DeviceCanvas& canvas, const RECT& rect, QRgb ink, bool everyOther)
{
    const int nib = canvas.nib();
    const Block all{canvas.column(rect.left), canvas.row(rect.top), canvas.column(rect.right) + nib,
                    canvas.row(rect.bottom) + nib};
    const Block inside{all.left + nib, all.top + nib, std::max(all.left + nib, all.right - nib),
                       std::max(all.top + nib, all.bottom - nib)};
    // Steps along a side, counted in the corners' coordinates: a dot is as long as the outline is wide.
    const auto step = [&](Coordinate pixel, int first, int last) {
        return std::clamp<Coordinate>(Coordinate(std::floor(double(pixel) / canvas.scale)), first, last) -
               first;
    };
    const Coordinate down = Coordinate(rect.bottom) - rect.top;
    const Coordinate across = Coordinate(rect.right) - rect.left;
    const auto alongRow = [&](Coordinate from) {
        return [&, from](Coordinate x, Coordinate) {
            return !everyOther || (from + step(x, rect.left, rect.right)) % 2 == 0;
        };
    };
    const auto alongColumn = [&](Coordinate from) {
        return [&, from](Coordinate, Coordinate y) {
            return !everyOther || (from + step(y, rect.top, rect.bottom)) % 2 == 0;
        };
    };
    invert(canvas, {all.left, all.top, all.right, inside.top}, ink, alongRow(0));
    invert(canvas, {all.left, inside.bottom, all.right, all.bottom}, ink, alongRow(down));
    invert(canvas, {all.left, inside.top, inside.left, inside.bottom}, ink, alongColumn(0));
    invert(canvas, {inside.right, inside.top, all.right, inside.bottom}, ink, alongColumn(across));
}

void invertLine(QImage& frame, const RECT& ends, COLORREF color)
{
    QPainter painter(&frame);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    ClippedLines lines(painter);
    lines.setPen(QPen(toQColor(color), 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    lines.line(ends.left, ends.top, ends.right, ends.bottom);
    lines.flush();
}

} // namespace

void paintXor(QImage& frame, XorFigure figure, const RECT& rect, COLORREF color)
{
    if (frame.isNull())
        return;
    if (figure == XorFigure::Line)
        return invertLine(frame, rect, color);
    invertOutline(canvasOf(frame), ordered(rect), toQColor(color).rgb() & 0x00ffffffu,
                  figure == XorFigure::FocusRectangle);
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
