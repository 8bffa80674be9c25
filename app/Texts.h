#pragma once

#include <QString>

namespace ormalux::viewer {

/// Gives the application, the image window and the toolkit's own dialogs their texts in a language: "ko", the
/// texts as they are written, or "en". Open windows learn of it by their LanguageChange event.
void chooseLanguage(const QString& code);

} // namespace ormalux::viewer
