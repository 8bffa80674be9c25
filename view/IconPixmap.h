#pragma once

#include <QColor>
#include <QPixmap>

namespace ormalux {

/// A drawing of res/icons in one colour, side logical pixels wide and high, as sharp as a screen of this
/// device pixel ratio shows it. Null for an unknown name.
QPixmap iconPixmap(const QString& name, const QColor& color, int side, qreal pixelRatio);

} // namespace ormalux
