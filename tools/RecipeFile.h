#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

namespace ormalux {

/// Appends steps to a recipe that `ormalux run` replays; a file that is not there yet becomes a recipe of
/// these steps. What stands in the file, comments included, stays; match sources beside the recipe or below
/// are named relative to it. The file is written whole or not at all. Returns an empty text, or says what is
/// wrong with the file.
QString appendToRecipe(const QString& path, const QList<QJsonObject>& steps);

} // namespace ormalux
