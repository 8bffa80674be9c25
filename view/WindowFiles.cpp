#include "view/WindowFiles.h"

#include "platform/File.h"
#include "image/BmpReader.h"
#include "view/ImageViewWnd.h"
#include "view/PictureImage.h"
#include "view/WindowCommands.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

namespace ormalux {

namespace {

/// A filter ends with the patterns that the toolkit matches; with the details hidden the text before stays.
struct FileDialogTexts
{
    const char* name;
    const char* title;
    const char* filters;
    QFileDialog::AcceptMode mode;
    QFileDialog::FileMode files;
};
constexpr FileDialogTexts opening = {"openFile", QT_TRANSLATE_NOOP("CKestWnd", "그림 파일 열기"),
                                     "Image Files (*.bmp, *.jpg, *.tif, *.png) (*.bmp *.jpg *.tif *.png);;"
                                     "All Files (*.*) (*.bmp *.jpg *.tif *.png)",
                                     QFileDialog::AcceptOpen, QFileDialog::ExistingFile};
constexpr FileDialogTexts saving = {"saveFile", QT_TRANSLATE_NOOP("CKestWnd", "그림 파일 저장"),
                                    "BMP Image Files (*.bmp) (*.bmp *.jpg *.tif *.png);;"
                                    "All Files (*.*) (*.bmp *.jpg *.tif *.png)",
                                    QFileDialog::AcceptSave, QFileDialog::AnyFile};

/// Where the operator opened or saved last, in whichever window.
QString& lastFolder()
{
    static QString folder;
    return folder;
}

/// Why a file was not loaded, found out after it failed.
const char* reasonAgainst(const char* path)
{
    const auto file = readFile(path);
    if (!file)
        return QT_TRANSLATE_NOOP("CKestWnd", "파일을 읽을 수 없습니다.");
    Picture picture;
    switch (readBmp(*file, true, picture)) {
    case BmpOutcome::NotOurs:
        return QT_TRANSLATE_NOOP("CKestWnd", "8비트 또는 24비트 BMP 파일이 아닙니다.");
    case BmpOutcome::Truncated:
        return QT_TRANSLATE_NOOP("CKestWnd", "파일이 중간에 끊겨 있습니다.");
    case BmpOutcome::TooLarge:
        return QT_TRANSLATE_NOOP("CKestWnd", "그림이 너무 큽니다.");
    default:
        return QT_TRANSLATE_NOOP("CKestWnd", "메모리가 부족합니다.");
    }
}

void fail(CKestWnd& window, const FileDialogTexts& texts, const QString& path, const char* reason)
{
    showMessage(window, windowText(texts.title),
                QDir::toNativeSeparators(path) + QStringLiteral("\n\n") + windowText(reason));
}

void open(CKestWnd& window, const QString& path)
{
    const QByteArray name = path.toUtf8();
    if (!window.LoadImage(name.constData()))
        return fail(window, opening, path, reasonAgainst(name.constData()));
    window.ImageUpdate();
    Q_EMIT window.imageOpened(path);
}

void save(CKestWnd& window, const QString& path)
{
    if (!window.SaveImage(path.toUtf8().constData()))
        return fail(window, saving, path,
                    window.GetView()->GetImagePtr()
                        ? QT_TRANSLATE_NOOP("CKestWnd", "파일을 저장할 수 없습니다.")
                        : QT_TRANSLATE_NOOP("CKestWnd", "저장할 그림이 없습니다."));
    Q_EMIT window.imageSaved(path);
}

void ask(CKestWnd& window, const FileDialogTexts& texts, void (*use)(CKestWnd&, const QString&))
{
    const QString name = QString::fromLatin1(texts.name);
    if (auto* const present = window.findChild<QFileDialog*>(name)) {
        present->raise();
        return present->activateWindow();
    }
    auto* const dialog = new QFileDialog(&window, windowText(texts.title));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName(name);
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setAcceptMode(texts.mode);
    dialog->setFileMode(texts.files);
    dialog->setNameFilters(QString::fromLatin1(texts.filters).split(QStringLiteral(";;")));
    dialog->setDefaultSuffix(QStringLiteral("BMP"));
    if (!lastFolder().isEmpty())
        dialog->setDirectory(lastFolder());
    QObject::connect(dialog, &QFileDialog::fileSelected, &window, [&window, use](const QString& path) {
        lastFolder() = QFileInfo(path).absolutePath();
        use(window, path);
    });
    dialog->open();
}

} // namespace

void askToOpen(CKestWnd& window)
{
    ask(window, opening, open);
}

void askToSave(CKestWnd& window)
{
    ask(window, saving, save);
}

void showMessage(QWidget& window, const QString& title, const QString& text)
{
    auto* const box = new QMessageBox(QMessageBox::Warning, title, text, QMessageBox::Ok, &window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setObjectName(QStringLiteral("message"));
    box->open();
}

} // namespace ormalux
