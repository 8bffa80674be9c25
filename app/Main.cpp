#include "app/MainWindow.h"
#include "app/Options.h"
#include "app/PictureFile.h"
#include "app/ProgramIcon.h"
#include "view/ImageViewWnd.h"

#include <QApplication>

using namespace ormalux::viewer;

namespace {

/// Renders the window as an operator would see it, and ends the program.
int grab(MainWindow& window, const Options& options, bool opened)
{
    QString why;
    QApplication::processEvents();
    if (opened && saveImage(window.grab().toImage(), options.grab, &why))
        return Done;
    if (!why.isEmpty())
        print(BadInput, "ormalux-view: " + why.replace(QLatin1String("\n\n"), QLatin1String(": ")));
    return BadInput;
}

bool open(MainWindow& window, const Options& options)
{
    bool well = options.pictures.isEmpty() || window.openFiles(options.pictures);
    if (!options.overlays.isEmpty())
        well = window.openResultsFile(options.overlays) && well;
    if (options.zoom)
        window.setZoom(*options.zoom);
    if (options.region)
        well = window.setRegion(*options.region) && well;
    return well;
}

/// The toolkit renders to memory, with the system's fonts.
void showNothing()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
#ifdef Q_OS_WIN
    // Without a display the toolkit does not look for them itself.
    if (!qEnvironmentVariableIsSet("QT_QPA_FONTDIR"))
        qputenv("QT_QPA_FONTDIR", qgetenv("WINDIR") + "/Fonts");
#endif
}

int runProgram(int argc, char** argv)
{
    const Options options = parseOptions(programArguments(argc, argv));
    if (options.exit) {
        print(*options.exit, options.text);
        return *options.exit;
    }
    const bool grabbing = !options.grab.isEmpty();
    if (grabbing)
        showNothing();
    // What is wrong with a picture is told by the viewer, in the operator's language.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg)
            print(BadInput, "ormalux-view: " + text);
    });
    int toolkitArguments = 1;
    QApplication application(toolkitArguments, argv);
    QApplication::setOrganizationName(QStringLiteral("Ormalux"));
    QApplication::setApplicationName(QStringLiteral("ormalux-view"));
    QApplication::setApplicationVersion(QStringLiteral(ORMALUX_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("ormalux-view"));
    QApplication::setWindowIcon(programIcon());

    // A rendered window looks the same whatever the operator has chosen before.
    Preferences preferences = grabbing ? Preferences::first() : Preferences::read();
    if (!options.language.isEmpty()) {
        preferences.language = options.language;
        preferences.languageChosen = true;
    }
    if (!options.theme.isEmpty())
        preferences.theme = options.theme;
    MainWindow window(preferences);
    if (!options.size.isEmpty())
        window.resize(options.size);
    if (grabbing)
        window.setReporter([](const QString& message) {
            QString line = message;
            print(BadInput, "ormalux-view: " + line.replace(QLatin1String("\n\n"), QLatin1String(": ")));
        });
    window.show();
    QApplication::processEvents(); // the fit zoom is that of the window's real size
    const bool opened = open(window, options);
    return grabbing ? grab(window, options, opened) : QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    return runProgram(argc, argv);
}
