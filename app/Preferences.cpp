#include "app/Preferences.h"

#include <QLocale>
#include <QSettings>

namespace ormalux::viewer {

namespace {

constexpr int recentFiles = 10;

const QStringList languages{"ko", "en"};

QString oneOf(const QSettings& settings, const char* key, const QStringList& known, const QString& otherwise)
{
    const QString value = settings.value(QLatin1String(key)).toString();
    return known.contains(value) ? value : otherwise;
}

/// The first language that the desktop asks for.
QString languageOfDesktop()
{
    const QString wanted = QLocale::system().uiLanguages().value(0).toLower();
    return wanted == QLatin1String("ko") || wanted.startsWith(QLatin1String("ko-")) ? "ko" : "en";
}

} // namespace

Preferences Preferences::first()
{
    Preferences first;
    first.language = languageOfDesktop();
    return first;
}

Preferences Preferences::read()
{
    const QSettings settings;
    Preferences read = first();
    read.m_kept = true;
    read.languageChosen = languages.contains(settings.value("language").toString());
    read.language = oneOf(settings, "language", languages, read.language);
    read.theme = oneOf(settings, "theme", {"system", "light", "dark"}, read.theme);
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
    if (languageChosen)
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
