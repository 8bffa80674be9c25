#include "cli/pictures/Drawing.h"

#include "view/PictureWriter.h"

#include <QImage>
#include <QPainter>

#include <algorithm>

namespace ormalux::cli {

namespace {
constexpr int barWidth = 3;
constexpr int plotHeight = 300;
constexpr int margin = 40;
} // namespace

bool writeHistogramPlot(const char* path, const long* counts, std::string* error)
{
    const double largest = double(std::max(1L, *std::max_element(counts, counts + 256)));
    QImage canvas(2 * margin + 256 * barWidth, 2 * margin + plotHeight, QImage::Format_RGB32);
    canvas.fill(Qt::white);
    {
        QPainter painter(&canvas);
        QFont font("NanumGothic");
        font.setPixelSize(12);
        painter.setFont(font);
        const int floor = margin + plotHeight;
        for (int level = 0; level < 256; ++level) {
            const int height = int(double(counts[level]) / largest * plotHeight + 0.5);
            painter.fillRect(margin + level * barWidth, floor - height, barWidth, height,
                             QColor(70, 110, 160));
        }
        painter.setPen(QColor(90, 90, 90));
        painter.drawLine(margin, floor, margin + 256 * barWidth, floor);
        for (int level = 0; level <= 255; level += level == 224 ? 31 : 32) {
            const int x = margin + level * barWidth + barWidth / 2;
            painter.drawLine(x, floor, x, floor + 5);
            painter.drawText(QRect(x - 30, floor + 8, 60, 20), Qt::AlignHCenter | Qt::AlignTop,
                             QString::number(level));
        }
        painter.drawText(QRect(margin, 8, 400, 20), Qt::AlignLeft,
                         QString::number(qint64(largest)) + " pixels");
    }
    return writePicture(path, canvas, error);
}

} // namespace ormalux::cli
