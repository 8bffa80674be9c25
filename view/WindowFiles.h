#pragma once

class CKestWnd;
class QString;
class QWidget;

namespace ormalux {

/// Asks for a picture file and has the window load it as a BMP; says why when that fails. The dialog is open
/// when this returns.
void askToOpen(CKestWnd& window);
/// Asks for a file and has the window save its picture there as a BMP; says so when that fails.
void askToSave(CKestWnd& window);
/// Shows a message and returns while it is open.
void showMessage(QWidget& window, const QString& title, const QString& text);

} // namespace ormalux
