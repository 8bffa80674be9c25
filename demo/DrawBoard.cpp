// Draws a circuit board as a camera would see it: parts of a kind in several places, chips with printed
// names, a label, uneven light and noise. The same picture on every machine with the same fonts.

#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QRadialGradient>

#include <array>
#include <cmath>
#include <cstdio>
#include <random>

namespace {

constexpr int width = 800;
constexpr int height = 600;

void drawTraces(QPainter& painter, std::mt19937& random)
{
    painter.setPen(QPen(QColor(38, 112, 62), 3));
    for (int i = 0; i < 60; ++i) {
        int x = int(random() % width), y = int(random() % height);
        for (int bend = 0; bend < 4; ++bend) {
            const int length = 30 + int(random() % 120);
            const int direction = int(random() % 4);
            const std::array<QPoint, 4> steps{QPoint(length, 0), QPoint(0, length), QPoint(length, length),
                                              QPoint(-length, length)};
            const QPoint end = QPoint(x, y) + steps[std::size_t(direction)];
            painter.drawLine(x, y, end.x(), end.y());
            x = end.x();
            y = end.y();
        }
        painter.setBrush(QColor(150, 150, 120));
        painter.drawEllipse(QPoint(x, y), 4, 4);
    }
}

/// A capacitor seen from above: a dark sleeve around a bright lid with a scored cross.
void drawCapacitor(QPainter& painter, QPoint center, int radius)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(24, 26, 30));
    painter.drawEllipse(center, radius + 7, radius + 7);
    QRadialGradient lid(center - QPoint(radius / 3, radius / 3), radius * 1.6);
    lid.setColorAt(0, QColor(242, 242, 240));
    lid.setColorAt(1, QColor(186, 186, 184));
    painter.setBrush(lid);
    painter.drawEllipse(center, radius, radius);
    painter.setPen(QPen(QColor(120, 120, 118), 2));
    painter.drawLine(center - QPoint(radius - 5, 0), center + QPoint(radius - 5, 0));
    painter.drawLine(center - QPoint(0, radius - 5), center + QPoint(0, radius - 5));
}

void drawChip(QPainter& painter, QRect body, const QString& name, int pins)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(205, 205, 198));
    for (int i = 0; i < pins; ++i) {
        const int x = body.left() + (2 * i + 1) * body.width() / (2 * pins) - 3;
        painter.drawRect(x, body.top() - 12, 6, 12);
        painter.drawRect(x, body.bottom() + 1, 6, 12);
    }
    painter.setBrush(QColor(34, 36, 40));
    painter.drawRect(body);
    painter.setBrush(QColor(60, 62, 66));
    painter.drawEllipse(body.topLeft() + QPoint(12, body.height() - 12), 5, 5);
    painter.setPen(QColor(196, 196, 190));
    painter.drawText(body, Qt::AlignCenter, name);
}

void drawResistor(QPainter& painter, QPoint at, bool upright)
{
    const QSize size = upright ? QSize(14, 30) : QSize(30, 14);
    const QRect body(at, size);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(214, 214, 206));
    painter.drawRect(body);
    painter.setBrush(QColor(30, 30, 32));
    painter.drawRect(upright ? body.adjusted(0, 7, 0, -7) : body.adjusted(7, 0, -7, 0));
}

void drawLabel(QPainter& painter)
{
    const QRect label(500, 470, 250, 84);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(232, 232, 226));
    painter.drawRect(label);
    painter.setPen(QColor(20, 20, 22));
    painter.drawText(label.adjusted(0, 6, 0, -42), Qt::AlignCenter, "OL 2408-1");
    painter.drawText(label.adjusted(0, 42, 0, -6), Qt::AlignCenter, "LOT 7035916");
}

/// Uneven light, a little blur of the lens, and the sensor's noise.
QImage photographed(const QImage& scene, std::mt19937& random)
{
    QImage picture(scene.size(), QImage::Format_RGB888);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const double dx = (x - 330.0) / width, dy = (y - 250.0) / height;
            const double light = 1.06 - 0.35 * (dx * dx + dy * dy);
            int sums[3] = {};
            for (int v = -1; v <= 1; ++v)
                for (int u = -1; u <= 1; ++u) {
                    const QRgb pixel =
                        scene.pixel(std::clamp(x + u, 0, width - 1), std::clamp(y + v, 0, height - 1));
                    const int weight = (2 - std::abs(u)) * (2 - std::abs(v));
                    sums[0] += weight * qRed(pixel);
                    sums[1] += weight * qGreen(pixel);
                    sums[2] += weight * qBlue(pixel);
                }
            for (int c = 0; c < 3; ++c) {
                const int noise = int(random() % 13) - 6;
                picture.scanLine(y)[3 * x + c] = uchar(std::clamp(int(sums[c] / 16 * light) + noise, 0, 255));
            }
        }
    return picture;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: ormalux-draw-board OUT.png\n");
        return 2;
    }
    std::mt19937 random(2408);
    QImage scene(width, height, QImage::Format_RGB32);
    scene.fill(QColor(28, 84, 48));
    {
        QPainter painter(&scene);
        painter.setRenderHint(QPainter::Antialiasing);
        QFont font("NanumGothic");
        font.setPixelSize(22);
        font.setBold(true);
        painter.setFont(font);
        drawTraces(painter, random);
        for (const QPoint& at :
             {QPoint(108, 248), QPoint(190, 248), QPoint(272, 252), QPoint(110, 340), QPoint(196, 430),
              QPoint(700, 90), QPoint(700, 180), QPoint(420, 520), QPoint(330, 470)})
            drawCapacitor(painter, at, 16);
        drawCapacitor(painter, {90, 500}, 34);
        drawCapacitor(painter, {620, 60}, 24);
        drawChip(painter, {380, 210, 190, 150}, "ORMALUX\nOX-5500", 12);
        drawChip(painter, {70, 70, 190, 60}, "TLC 1517", 9);
        drawChip(painter, {330, 80, 110, 56}, "M41", 5);
        for (int i = 0; i < 7; ++i)
            drawResistor(painter, {620 + (i % 4) * 44, 270 + (i / 4) * 44}, false);
        for (int i = 0; i < 6; ++i)
            drawResistor(painter, {240 + i * 24, 330}, true);
        drawLabel(painter);
    }
    if (!photographed(scene, random).save(QString::fromLocal8Bit(argv[1]))) {
        std::fprintf(stderr, "ormalux-draw-board: %s cannot be written\n", argv[1]);
        return 2;
    }
    return 0;
}
