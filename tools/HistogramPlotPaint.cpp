#include "tools/HistogramPlot.h"

#include "tools/WidgetCanvas.h"

#include <algorithm>
#include <cmath>

namespace ormalux {

/// The plot's rectangle in device pixels.
struct PlotFrame
{
    int left, top, right, bottom; ///< right and bottom do not belong to it

    int begin(int level) const { return left + int(std::int64_t(right - left) * level / 256); }
    int middle(int level) const { return (begin(level) + begin(level + 1)) / 2; }
    /// How high a share of the peak is; what occurs is seen.
    int heightOf(double share) const
    {
        return share > 0 ? std::clamp(int(std::lround(share * (bottom - top))), 1, bottom - top) : 0;
    }
};

namespace {

QColor between(const QColor& from, const QColor& to, double part)
{
    return QColor::fromRgbF(float(from.redF() + (to.redF() - from.redF()) * part),
                            float(from.greenF() + (to.greenF() - from.greenF()) * part),
                            float(from.blueF() + (to.blueF() - from.blueF()) * part));
}

/// Lighter on a dark ground.
QColor colorOf(LevelCurve::Kind kind, const QPalette& palette)
{
    static constexpr QRgb onLight[] = {0, 0xffd02020, 0xff10893e, 0xff1c5fd6};
    static constexpr QRgb onDark[] = {0, 0xffff6b6b, 0xff4fd67a, 0xff6ea8ff};
    const QColor ground = palette.color(QPalette::Base);
    const bool dark = ground.lightness() < 128;
    if (kind == LevelCurve::Gray)
        return between(ground, palette.color(QPalette::Text), dark ? 0.55 : 0.45);
    return QColor(dark ? onDark[kind] : onLight[kind]);
}

QString shortCount(double count)
{
    if (count >= 1e6)
        return QString::number(count / 1e6) + QLatin1Char('M');
    return count >= 1e4 ? QString::number(count / 1e3) + QLatin1Char('k') : QString::number(count);
}

/// Round numbers up to the peak, a handful of them.
std::vector<double> ticks(double peak, bool logarithmic)
{
    std::vector<double> found{0};
    if (logarithmic) {
        const int decades = int(std::log10(std::max(peak, 1.0)));
        const int every = decades > 4 ? 2 : 1;
        for (int decade = 1; decade <= decades; decade += every)
            found.push_back(std::pow(10.0, decade));
        return found;
    }
    double step = std::pow(10.0, std::floor(std::log10(std::max(peak, 1.0))));
    for (const double factor : {0.2, 0.5, 1.0})
        if (peak / (step * factor) <= 5 && step * factor >= 1) {
            step *= factor;
            break;
        }
    for (double count = step; count <= peak; count += step)
        found.push_back(count);
    return found;
}

} // namespace

long HistogramPlot::peak() const
{
    long highest = 0;
    for (const LevelCurve& curve : m_curves)
        highest = std::max(highest, *std::max_element(curve.counts.begin(), curve.counts.end()));
    return highest;
}

double HistogramPlot::shareOf(double count) const
{
    const double most = double(std::max(peak(), 1L));
    return m_logarithmic ? std::log1p(count) / std::log1p(most) : count / most;
}

void HistogramPlot::paintEvent(QPaintEvent*)
{
    WidgetCanvas canvas(*this, palette().color(QPalette::Base));
    const QRectF plot = plotRect();
    const PlotFrame frame{canvas.toDevice(plot.left()), canvas.toDevice(plot.top()),
                          canvas.toDevice(plot.right()), canvas.toDevice(plot.bottom())};
    if (frame.right - frame.left < 32 || frame.bottom - frame.top < 8)
        return;
    drawCounts(canvas, frame);
    for (const int level : {m_pointed, m_marked})
        if (level >= 0)
            canvas.painter().fillRect(frame.begin(level), frame.top,
                                      std::max(frame.begin(level + 1) - frame.begin(level), canvas.hair()),
                                      frame.bottom - frame.top, palette().color(QPalette::Highlight));
    for (const LevelCurve& curve : m_curves)
        drawCurve(canvas, frame, curve);
    drawLevels(canvas, frame);
    drawLines(canvas, frame);
    if (hasFocus()) {
        canvas.painter().setPen(QPen(palette().color(QPalette::Highlight), canvas.hair()));
        canvas.painter().drawRect(canvas.hair() / 2, canvas.hair() / 2, canvas.width() - canvas.hair(),
                                  canvas.height() - canvas.hair());
    }
}

void HistogramPlot::drawCounts(WidgetCanvas& canvas, const PlotFrame& frame) const
{
    const QColor ground = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    const double half = QFontMetricsF(font()).height() / 2;
    for (const double count : ticks(double(peak()), m_logarithmic)) {
        const int y = frame.bottom - frame.heightOf(shareOf(count));
        canvas.painter().fillRect(frame.left, y, frame.right - frame.left, canvas.hair(),
                                  between(ground, text, 0.15));
        const double place = y / canvas.scale();
        canvas.text(QRectF(0, place - half, frame.left / canvas.scale() - 4, 2 * half),
                    Qt::AlignRight | Qt::AlignVCenter, shortCount(count), between(ground, text, 0.75));
    }
}

void HistogramPlot::drawLevels(WidgetCanvas& canvas, const PlotFrame& frame) const
{
    const QColor axis = between(palette().color(QPalette::Base), palette().color(QPalette::Text), 0.75);
    const double height = QFontMetricsF(font()).height();
    const int tick = 4 * canvas.hair();
    canvas.painter().fillRect(frame.left, frame.bottom, frame.right - frame.left, canvas.hair(), axis);
    for (const int level : {0, 64, 128, 192, 255}) {
        canvas.painter().fillRect(frame.middle(level), frame.bottom, canvas.hair(), tick, axis);
        const double place = frame.middle(level) / canvas.scale();
        canvas.text(QRectF(place - 30, (frame.bottom + tick) / canvas.scale(), 60, height), Qt::AlignHCenter,
                    QString::number(level), axis);
    }
}

void HistogramPlot::drawCurve(WidgetCanvas& canvas, const PlotFrame& frame, const LevelCurve& curve) const
{
    const QColor color = colorOf(curve.kind, palette());
    QColor fill = color;
    fill.setAlphaF(curve.kind == LevelCurve::Gray ? 1.0f : 0.15f);
    const int thick = canvas.hair();
    int before = frame.bottom;
    for (int level = 0; level < 256; ++level) {
        const int left = frame.begin(level), width = frame.begin(level + 1) - left;
        const int y = frame.bottom - frame.heightOf(shareOf(double(curve.counts[std::size_t(level)])));
        // A plot narrower than the levels shows the higher of those that share a column.
        canvas.painter().fillRect(left, y, std::max(width, 1), frame.bottom - y, fill);
        if (curve.kind != LevelCurve::Gray) {
            canvas.painter().fillRect(left, std::min(y, before), thick, std::abs(y - before) + thick, color);
            canvas.painter().fillRect(left, y, std::max(width, thick), thick, color);
        }
        before = y;
    }
}

void HistogramPlot::drawLines(WidgetCanvas& canvas, const PlotFrame& frame) const
{
    const QColor color = palette().color(QPalette::Text);
    const double height = QFontMetricsF(font()).height();
    for (int line = 0; line < 2; ++line) {
        const bool active = hasFocus() && line == m_active;
        const int thick = (active ? 2 : 1) * canvas.hair();
        const int x = frame.middle(m_lines[line]);
        const int head = 5 * canvas.hair();
        canvas.painter().fillRect(x - thick / 2, frame.top - head, thick, frame.bottom - frame.top + head,
                                  color);
        for (int i = 0; i < head; ++i) // a grip on the line's outer side, where its number stands
            canvas.painter().fillRect(line == 0 ? x - (head - i) : x, frame.top - head + i, head - i, 1,
                                      color);
        const double place = x / canvas.scale();
        const double top = (frame.top - head) / canvas.scale() - height + 4;
        const QRectF number =
            line == 0 ? QRectF(place - 68, top, 60, height) : QRectF(place + 8, top, 60, height);
        canvas.text(number, (line == 0 ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter,
                    QString::number(m_lines[line]), color);
    }
}

} // namespace ormalux
