#include "app/Preferences.h"

#include <QSettings>

namespace ormalux::viewer {

namespace {

constexpr int recentFiles = 10;

QString oneOf(const QSettings& settings, const char* key, const QStringList& known)
{
    const QString value = settings.value(QLatin1String(key)).toString();
    return known.contains(value) ? value : known.first();
}

} // namespace

Preferences Preferences::read()
{
    const QSettings settings;
    Preferences read;
    read.m_kept = true;
    read.language = oneOf(settings, "language", {"ko", "en"});
    read.theme = oneOf(settings, "theme", {"system", "light", "dark"});
    read.geometry = settings.value("geometry").toByteArray();
    read.toolBar = settings.value("toolBar", true).toBool();
    read.statusBar = settings.value("statusBar", true).toBool();
    read.folder = settings.value("folder").toString();
    read.recent = settings.value("recent").toStringList().mid(0, recentFiles);
    read.recent.removeAll(QString());
    return read;
}

void Preferences::write() const
{
    if (!m_kept)
        return;
    QSettings settings;
    settings.setValue("language", language);
    settings.setValue("theme", theme);
    settings.setValue("geometry", geometry);
    settings.setValue("toolBar", toolBar);
    settings.setValue("statusBar", statusBar);
    settings.setValue("folder", folder);
    settings.setValue("recent", recent);
}

void Preferences::addRecent(const QString& file)
{
    recent.removeAll(file);
    recent.prepend(file);
    recent = recent.mid(0, recentFiles);
    write();
}

} // namespace ormalux::viewer
