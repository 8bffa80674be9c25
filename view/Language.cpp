#include "view/Language.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTranslator>

#include <cstring>

namespace {

/// The translator in use; it belongs to the application and goes with it.
QPointer<QTranslator>& english()
{
    static QPointer<QTranslator> translator;
    return translator;
}

} // namespace

bool CKestLanguage::Set(const char* language)
{
    if (!language || !QCoreApplication::instance())
        return false;
    if (std::strcmp(language, "ko") == 0) {
        delete english();
        return true;
    }
    if (std::strcmp(language, "en") != 0)
        return false;
    if (english())
        return true;
    auto* const translator = new QTranslator(QCoreApplication::instance());
    if (!translator->load(QStringLiteral(":/ormalux/translations/ormalux_en.qm"))) {
        delete translator;
        return false;
    }
    english() = translator;
    return QCoreApplication::installTranslator(translator);
}

const char* CKestLanguage::Get()
{
    return english() ? "en" : "ko";
}
