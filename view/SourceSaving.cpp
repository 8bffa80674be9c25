#include "view/SourceSaving.h"

#include "image/VisionImage.h"
#include "platform/File.h"
#include "view/ImageView.h"
#include "view/ViewTracker.h"

#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

#include <memory>
#include <new>

namespace ormalux {

namespace {

struct KindTexts
{
    const char* title;
    const char* filter; ///< with the pattern that the toolkit matches behind the text that is shown
    const char* suffix;
    const char* keyLabel;
};
constexpr KindTexts texts[] = {
    {"Match Source", "Match Source Files (*.mcs) (*.mcs);;All Files (*.*) (*.mcs)", "mcs", "Polarity"},
    {"Ocr Source", "Ocr Source Files (*.ocs) (*.ocs);;All Files (*.*) (*.ocs)", "ocs", "Character"}};

const KindTexts& textsOf(SourceKind kind)
{
    return texts[kind == SourceKind::Character];
}

void tell(CKestView& view, const KindTexts& kind, QMessageBox::Icon icon, const char* message)
{
    auto* const box = new QMessageBox(icon, QString::fromUtf8(kind.title), QString::fromUtf8(message),
                                      QMessageBox::Ok, &view);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setObjectName(QStringLiteral("sourceMessage"));
    box->open();
}

std::unique_ptr<CKestImage> regionOf(const CKestView& view)
{
    const CRect area = view.GetTrackerRect();
    if (isNothing(area))
        return nullptr;
    return std::unique_ptr<CKestImage>(
        view.GetImage(area.left, area.top, area.Width() + 1, area.Height() + 1));
}

void save(CKestView& view, const KindTexts& kind, const QString& path, std::uint8_t key)
{
    const auto region = regionOf(view);
    const std::vector<std::uint8_t> bytes = region ? sourceFile(*region, key) : std::vector<std::uint8_t>{};
    const bool saved = !bytes.empty() && writeFile(path.toUtf8().constData(), bytes);
    tell(view, kind, saved ? QMessageBox::Information : QMessageBox::Warning,
         saved ? "저장 되었습니다." : "파일을 저장할 수 없습니다.");
}

void askForFile(CKestView& view, const KindTexts& kind, std::uint8_t key)
{
    auto* const dialog = new QFileDialog(&view, QString::fromUtf8(kind.title));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName(QStringLiteral("sourceFile"));
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QString::fromLatin1(kind.suffix));
    dialog->setNameFilters(QString::fromLatin1(kind.filter).split(QStringLiteral(";;")));
    QObject::connect(dialog, &QFileDialog::fileSelected, &view,
                     [&view, &kind, key](const QString& path) { save(view, kind, path, key); });
    dialog->open();
}

/// A character's first byte; nothing for an empty text.
void acceptKey(CKestView& view, SourceKind kind, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    if (kind == SourceKind::Pattern)
        askForFile(view, textsOf(kind), text.startsWith(QLatin1Char('W')) ? 255 : 0);
    else if (!bytes.isEmpty())
        askForFile(view, textsOf(kind), std::uint8_t(bytes[0]));
}

} // namespace

std::vector<std::uint8_t> sourceFile(const CKestImage& region, std::uint8_t key)
{
    CKestImage image(region);
    const ConstGrayView view = std::as_const(image).view();
    std::vector<std::uint8_t> bytes;
    if (view.empty())
        return bytes;
    const long threshold = image.GetAutoThreshold('A', 1);
    image.Threshold(int(threshold));
    const auto put = [&bytes](std::int64_t value) {
        for (int i = 0; i < 4; ++i)
            bytes.push_back(std::uint8_t(value >> (8 * i)));
    };
    try {
        bytes.reserve(std::size_t(21) + std::size_t(image.GetImageLen()));
        bytes.push_back(key);
        for (const std::int64_t value :
             {std::int64_t(image.GetGrayLevelCount(0)), std::int64_t(image.GetGrayLevelCount(255)),
              std::int64_t(threshold), std::int64_t(image.GetWidth()), std::int64_t(image.GetHeight())})
            put(value);
        bytes.insert(bytes.end(), view.pixels, view.pixels + image.GetImageLen());
    } catch (const std::bad_alloc&) {
        bytes.clear();
    }
    return bytes;
}

void saveTrackerAsSource(CKestView& view, SourceKind kind)
{
    const KindTexts& named = textsOf(kind);
    const auto region = regionOf(view);
    if (!region || region->IsEmpty())
        return tell(view, named, QMessageBox::Warning, "ROI 영역이 없습니다.");
    auto* const dialog = new QInputDialog(&view);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName(QStringLiteral("sourceKey"));
    dialog->setWindowTitle(QString::fromUtf8(named.title));
    dialog->setLabelText(QString::fromUtf8(named.keyLabel));
    if (kind == SourceKind::Pattern)
        dialog->setComboBoxItems({QStringLiteral("Black Object"), QStringLiteral("White Object")});
    QObject::connect(dialog, &QInputDialog::textValueSelected, &view,
                     [&view, kind](const QString& text) { acceptKey(view, kind, text); });
    dialog->open();
}

} // namespace ormalux
