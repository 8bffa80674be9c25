#include "view/ViewPainter.h"

#include "view/DrawObjArray.h"
#include "view/NearestPixels.h"
#include "view/PenCache.h"
#include "view/TextMasks.h"

#include <QGuiApplication>
#include <QPainter>

#include <array>
#include <cmath>
#include <span>
#include <string>
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

/// The device pixels that show a part of the client area.
QRect deviceRect(const QImage& frame, const QRect& exposed)
{
    const qreal scale = frame.devicePixelRatio();
    const QRectF device(QPointF(exposed.topLeft()) * scale, QSizeF(exposed.size()) * scale);
    return device.toAlignedRect() & frame.rect();
}

DeviceCanvas canvasOf(QImage& frame)
{
    return {reinterpret_cast<std::uint32_t*>(frame.bits()),
            frame.bytesPerLine() / 4,
            {0, 0, frame.width(), frame.height()}};
}

/// What is left black of a row or a whole frame: the entries before and behind those that name a pixel.
struct Margins
{
    explicit Margins(std::span<const int> entries)
    {
        const auto shows = [](int entry) { return entry != noPixel; };
        before = std::ranges::find_if(entries, shows) - entries.begin();
        behind = std::find_if(entries.rbegin(), entries.rend() - before, shows) - entries.rbegin();
    }
    std::ptrdiff_t before;
    std::ptrdiff_t behind;
};

/// Blackens what copyNearest left of an area.
void paintBeside(std::uint32_t* out, std::ptrdiff_t stride, std::span<const int> columns,
                 std::span<const int> rows)
{
    constexpr std::uint32_t black = 0xff000000u;
    const auto width = std::ptrdiff_t(columns.size());
    const Margins sides(columns);
    for (const int row : rows) {
        if (row == noPixel) {
            std::fill_n(out, width, black);
        } else {
            std::fill_n(out, sides.before, black);
            std::fill_n(out + width - sides.behind, sides.behind, black);
        }
        out += stride;
    }
}

} // namespace

void prepareFrame(QImage& frame, QSize client, qreal scale)
{
    const QSize size(int(std::ceil(client.width() * scale)), int(std::ceil(client.height() * scale)));
    if (frame.size() != size || !frame.isDetached())
        frame = QImage(size, QImage::Format_RGB32);
    frame.setDevicePixelRatio(scale);
}

void paintPixels(QImage& frame, const PixelSource& picture, const ViewGeometry& geometry,
                 const QRect& exposed)
{
    const QRect area = deviceRect(frame, exposed);
    if (area.isEmpty())
        return;
    const float scale = float(frame.devicePixelRatio());
    std::vector<int> columns(std::size_t(area.width()), noPixel);
    std::vector<int> rows(std::size_t(area.height()), noPixel);
    if (!picture.empty()) {
        for (std::size_t x = 0; x < columns.size(); ++x)
            columns[x] = geometry.columnAt(float(area.left() + int(x)) / scale);
        for (std::size_t y = 0; y < rows.size(); ++y)
            rows[y] = geometry.rowAt(float(area.top() + int(y)) / scale);
    }
    const DeviceCanvas canvas = canvasOf(frame);
    std::uint32_t* const out = canvas.at(area.left(), area.top());
    copyNearest(picture, columns, rows, out, canvas.stride);
    paintBeside(out, canvas.stride, columns, rows);
}

void paintOverlays(QImage& frame, CDrawObjArray& shapes, const ViewGeometry& geometry)
{
    if (frame.isNull() || shapes.GetCount() == 0)
        return;
    QPainter painter(&frame);
    const QPoint start = geometry.center - geometry.scroll;
    painter.translate(start);
    const QRect shown = QRect(QPoint(0, 0), clientOf(frame)).translated(-start);
    RECT clip{shown.left(), shown.top(), shown.left() + shown.width(), shown.top() + shown.height()};
    shapes.Draw(&painter, geometry.zoom, geometry.zoom, &clip);
}

void paintLevels(QImage& frame, const PixelSource& picture, const ViewGeometry& geometry,
                 const QRect& exposed)
{
    if (frame.isNull() || picture.empty() || picture.bitCount != 8 || geometry.zoom < largestZoom || !qGuiApp)
        return;
    const DeviceCanvas canvas = canvasOf(frame);
    const qreal scale = frame.devicePixelRatio();
    const CPoint first = geometry.toImage(exposed.topLeft());
    const CPoint last = geometry.toImage(exposed.bottomRight() + QPoint(1, 1));
    const QRgb color = toQColor(levelColor).rgb();
    std::array<std::shared_ptr<const TextMask>, 256> masks; // thousands of levels are visible at a time
    for (int y = std::max<int>(first.y, 0); y <= std::min<int>(last.y, picture.height - 1); ++y)
        for (int x = std::max<int>(first.x, 0); x <= std::min<int>(last.x, picture.width - 1); ++x) {
            const std::uint8_t level = picture.row(y)[x];
            auto& mask = masks[level];
            if (!mask)
                mask = textMask(std::to_string(level), levelHeight, scale);
            const CPoint corner = geometry.toDevicePoint(x, y);
            const double half = geometry.zoom / 2.0; // a small picture fits at more than the largest zoom
            blendMask(canvas, std::int64_t(std::floor((corner.x + half) * scale - mask->width / 2.0)),
                      std::int64_t(std::floor((corner.y + half) * scale - mask->height / 2.0)), *mask, color);
        }
}

} // namespace ormalux
