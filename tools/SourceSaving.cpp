#include "tools/SourceSaving.h"

#include "image/VisionImage.h"
#include "tools/MatchSrcDlg.h"
#include "tools/OcrSrcDlg.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QMessageBox>

#include <algorithm>
#include <functional>

namespace ormalux {

namespace {

struct KindTexts
{
    const char* title;
    const char* filter; ///< with the pattern that the toolkit matches behind the text that is shown
    const char* suffix;
};
constexpr KindTexts texts[] = {
    {"Match Source", "Match Source Files (*.mcs) (*.mcs);;All Files (*.*) (*.mcs)", "MCS"},
    {"Ocr Source", "Ocr Source Files (*.ocs) (*.ocs);;All Files (*.*) (*.ocs)", "OCS"}};

QString text(const char* source)
{
    return QCoreApplication::translate("ormalux::SourceSaving", source);
}

void tell(QWidget* parent, const KindTexts& kind, QMessageBox::Icon icon, const QString& message)
{
    auto* const box = new QMessageBox(icon, text(kind.title), message, QMessageBox::Ok, parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setObjectName(QStringLiteral("sourceMessage"));
    box->open();
}

/// Null for a rectangle beside the picture.
std::shared_ptr<const CKestImage> regionOf(ToolHost& host, const RECT& rect)
{
    const auto picture = host.grayPicture();
    if (!picture)
        return nullptr;
    const RECT inside{std::max<LONG>(rect.left, 0), std::max<LONG>(rect.top, 0),
                      std::min<LONG>(rect.right, picture->GetWidth() - 1),
                      std::min<LONG>(rect.bottom, picture->GetHeight() - 1)};
    if (inside.left > inside.right || inside.top > inside.bottom)
        return nullptr;
    const auto region = std::make_shared<CKestImage>(*picture);
    region->SetROIPlacement(inside);
    return region->IsEmpty() ? nullptr : region;
}

using Write = std::function<bool(const std::string& path)>;

void askForFile(QWidget* parent, const KindTexts& kind, const Write& write)
{
    auto* const dialog = new QFileDialog(parent, text(kind.title));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName(QStringLiteral("sourceFile"));
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QString::fromLatin1(kind.suffix));
    dialog->setNameFilters(text(kind.filter).split(QStringLiteral(";;")));
    QObject::connect(dialog, &QFileDialog::fileSelected, parent, [parent, &kind, write](const QString& path) {
        if (write(path.toStdString()))
            return tell(parent, kind, QMessageBox::Information, text("저장 되었습니다."));
        tell(parent, kind, QMessageBox::Warning, text("파일을 저장할 수 없습니다: %1").arg(path));
    });
    dialog->open();
}

template <class Dialog>
void askForKey(const std::shared_ptr<const CKestImage>& region, std::optional<int> level,
               const KindTexts& kind, QWidget* parent)
{
    auto* const dialog = new Dialog(*region, level, parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QDialog::accepted, parent, [dialog, region, &kind, parent] {
        if (const auto key = dialog->key())
            askForFile(parent, kind, [region, key, level = dialog->level()](const std::string& path) {
                return writeSource(path, *region, level, *key);
            });
    });
    dialog->open();
}

} // namespace

void saveSource(ToolHost& host, const RECT& rect, SourceKind kind, std::optional<int> level, QWidget* parent)
{
    const KindTexts& named = texts[kind == SourceKind::Character];
    const auto region = regionOf(host, rect);
    if (!region)
        return tell(parent, named, QMessageBox::Warning, text("ROI 영역이 없습니다."));
    if (kind == SourceKind::Pattern)
        askForKey<CMatchSrcDlg>(region, level, named, parent);
    else
        askForKey<COcrSrcDlg>(region, level, named, parent);
}

} // namespace ormalux
