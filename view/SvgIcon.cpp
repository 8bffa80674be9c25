#include "view/SvgIcon.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace ormalux {

QPixmap iconPixmap(const QString& name, const QColor& color, int side, qreal pixelRatio)
{
    const QString key =
        QStringLiteral("ormalux/%1/%2/%3/%4").arg(name, color.name()).arg(side).arg(pixelRatio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    QFile file(QStringLiteral(":/ormalux/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    // The renderer knows no colour of its surroundings.
    QSvgRenderer drawing(file.readAll().replace("currentColor", color.name().toLatin1()));
    const int pixels = qMax(1, qRound(side * pixelRatio));
    pixmap = QPixmap(pixels, pixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    drawing.render(&painter, QRectF(0, 0, pixels, pixels));
    painter.end();
    pixmap.setDevicePixelRatio(pixelRatio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

} // namespace ormalux
