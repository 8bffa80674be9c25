#include "view/IconPixmap.h"

#include <QPainter>
#include <QPixmapCache>

namespace ormalux {

namespace {

/// The sizes in which the build draws every icon.
constexpr int drawnSizes[] = {24, 30, 36, 42, 48, 60, 72};

/// The drawing of the size itself, or of the next larger one brought down; black on nothing.
QImage drawing(const QString& name, int pixels)
{
    int drawn = drawnSizes[std::size(drawnSizes) - 1];
    for (const int size : drawnSizes)
        if (size >= pixels && size < drawn)
            drawn = size;
    const QImage image(QStringLiteral(":/ormalux/icons/%1.%2.png").arg(name).arg(drawn));
    return drawn == pixels || image.isNull()
               ? image
               : image.scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

QPixmap iconPixmap(const QString& name, const QColor& color, int side, qreal pixelRatio)
{
    const QString key =
        QStringLiteral("ormalux/%1/%2/%3/%4").arg(name, color.name()).arg(side).arg(pixelRatio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    QImage image = drawing(name, qMax(1, qRound(side * pixelRatio)))
                       .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    painter.end();
    pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(pixelRatio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

} // namespace ormalux
