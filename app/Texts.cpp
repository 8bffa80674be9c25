#include "app/Texts.h"

#include "view/Language.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLibraryInfo>
#include <QPointer>
#include <QTranslator>

namespace ormalux::viewer {

namespace {

/// Faces with Latin and Korean letters, those of Windows first.
const QString ownFaces[] = {QStringLiteral("Malgun Gothic"), QStringLiteral("NanumGothic")};

/// Installs a file of texts, or nothing when there is none.
void install(QPointer<QTranslator>& installed, const QStringList& files)
{
    delete installed; // takes its texts away
    auto* const translator = new QTranslator(qApp);
    for (const QString& file : files)
        if (translator->load(file)) {
            installed = translator;
            QCoreApplication::installTranslator(translator);
            return;
        }
    delete translator;
}

/// A system font without Korean mixes two faces in one line; ours has both.
void useOneFace()
{
    QFont font = QApplication::font();
    const auto systems = QFontDatabase::writingSystems(QFontInfo(font).family());
    if (systems.contains(QFontDatabase::Korean))
        return;
    const QStringList present = QFontDatabase::families();
    for (const QString& face : ownFaces)
        if (present.contains(face)) {
            font.setFamily(face);
            return QApplication::setFont(font);
        }
}

} // namespace

void chooseLanguage(const QString& code)
{
    useOneFace();
    static QPointer<QTranslator> toolkit, viewer;
    // The toolkit's texts are English as written; a folder beside the program comes before the system's.
    const QString name = QStringLiteral("/qtbase_%1.qm").arg(code);
    install(toolkit, {QCoreApplication::applicationDirPath() + "/translations" + name,
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath) + name});
    CKestLanguage::Set(code.toUtf8().constData());
    install(viewer, {QStringLiteral(":/ormalux-view/translations/ormalux-view_%1.qm").arg(code)});
}

} // namespace ormalux::viewer
