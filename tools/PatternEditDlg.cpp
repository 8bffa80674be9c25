#include "tools/PatternEditDlg.h"

#include "tools/DialogKeys.h"
#include "ui_PatternEditDlg.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QRegularExpressionValidator>
#include <QShortcut>

using ormalux::PatternRead;
using ormalux::PatternTemplate;

namespace {

const char* const readMessages[] = {
    "", // Done
    QT_TRANSLATE_NOOP("CPatternEditDlg", "파일을 열 수 없습니다: %1"),
    QT_TRANSLATE_NOOP("CPatternEditDlg", "소스 파일이 아니거나 손상된 파일입니다: %1"),
    QT_TRANSLATE_NOOP("CPatternEditDlg", "편집하기에 너무 큰 소스입니다: %1"),
    QT_TRANSLATE_NOOP("CPatternEditDlg", "메모리 부족 !!"),
};

/// A key shown as one character; none for the byte 0.
QString characterOf(std::uint8_t key)
{
    return key ? QString(QLatin1Char(char(key))) : QString();
}

QString native(const QString& path)
{
    return QDir::toNativeSeparators(path);
}

} // namespace

CPatternEditDlg::CPatternEditDlg(const QString& path, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::PatternEditDlg>()), m_path(path)
{
    m_ui->setupUi(this);
    setObjectName(QStringLiteral("CPatternEditDlg"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    m_ui->key->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[\\x{20}-\\x{FF}]")), m_ui->key));
    m_ui->preview->setPattern(m_ui->pixels->pattern());
    new ormalux::DialogKeys(*this);
    connectControls();
    load();
    m_ui->pixels->setFocus();
}

CPatternEditDlg::~CPatternEditDlg() = default;

CPatternEditView* CPatternEditDlg::view() const
{
    return m_ui->pixels;
}

void CPatternEditDlg::connectControls()
{
    CPatternEditView* const pixels = m_ui->pixels;
    connect(pixels, &CPatternEditView::patternChanged, this, &CPatternEditDlg::showPattern);
    const auto button = [this](QPushButton* pushed, auto action) {
        connect(pushed, &QPushButton::clicked, this, [this, action] {
            setMessage({});
            action();
        });
    };
    button(m_ui->flipLeftRight, [pixels] { pixels->flipLeftRight(); });
    button(m_ui->flipUpDown, [pixels] { pixels->flipUpDown(); });
    button(m_ui->resize, [this] { resizeToFields(); });
    button(m_ui->undo, [pixels] { pixels->undo(); });
    button(m_ui->redo, [pixels] { pixels->redo(); });
    button(m_ui->save, [this] { save(); });
    button(m_ui->saveAs, [this] { askAndSaveAs(); });
    button(m_ui->close, [this] { close(); });
    connect(m_ui->key, &QLineEdit::textEdited, this, &CPatternEditDlg::takeKey);
    connect(m_ui->key, &QLineEdit::editingFinished, this, &CPatternEditDlg::showKey);
    connect(m_ui->polarity, &QComboBox::activated, pixels,
            [pixels](int white) { pixels->setKey(white ? 255 : 0); });
    const auto keys = [this](std::initializer_list<QKeySequence> sequences, QPushButton* pushed) {
        for (const QKeySequence& sequence : sequences)
            connect(new QShortcut(sequence, this), &QShortcut::activated, pushed, &QPushButton::click);
    };
    keys({Qt::CTRL | Qt::Key_Z}, m_ui->undo);
    keys({Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z}, m_ui->redo);
    keys({Qt::CTRL | Qt::Key_S}, m_ui->save);
    for (QSpinBox* const field : {m_ui->width, m_ui->height})
        field->installEventFilter(this);
}

void CPatternEditDlg::load()
{
    const PatternRead how = m_ui->pixels->load(m_path);
    // A file that holds something else must not be lost to an empty template.
    m_refused = how != PatternRead::Done && how != PatternRead::NoFile;
    showPattern();
    if (how != PatternRead::Done)
        setMessage(tr(readMessages[int(how)]).replace(QLatin1String("%1"), native(m_path)));
}

void CPatternEditDlg::showPattern()
{
    const CPatternEditView& view = *m_ui->pixels;
    const PatternTemplate& pattern = view.pattern();
    const int least = pattern.pixels.empty() ? 0 : 1;
    const auto show = [least](QSpinBox* field, int shown, int now) {
        field->setMinimum(least);
        if (shown != now) // a size that the operator is typing stays
            field->setValue(now);
    };
    show(m_ui->width, m_shownSize.width(), pattern.width);
    show(m_ui->height, m_shownSize.height(), pattern.height);
    m_shownSize = {pattern.width, pattern.height};
    if (!m_ui->key->hasFocus())
        showKey();
    m_ui->counts->setText(tr("Black: %1   White: %2").arg(pattern.blackCount()).arg(pattern.whiteCount()));
    m_ui->file->setText(native(m_path) + (view.isModified() ? QStringLiteral(" *") : QString()));
    m_ui->undo->setEnabled(view.canUndo());
    m_ui->redo->setEnabled(view.canRedo());
    m_ui->save->setEnabled(!m_refused && !pattern.pixels.empty());
    m_ui->saveAs->setEnabled(!pattern.pixels.empty());
    m_ui->preview->update();
}

void CPatternEditDlg::showKey()
{
    const std::uint8_t key = m_ui->pixels->pattern().key;
    m_ui->key->setText(characterOf(key));
    m_ui->keyByte->setText(QStringLiteral("= %1 (0x%2)").arg(key).arg(key, 2, 16, QLatin1Char('0')));
    m_ui->polarity->setCurrentIndex(key == 0 ? 0 : key == 255 ? 1 : -1);
}

/// An emptied field leaves the key as it is: the polarity bytes of a pattern are not lost unnoticed.
void CPatternEditDlg::takeKey(const QString& text)
{
    if (!text.isEmpty())
        m_ui->pixels->setKey(std::uint8_t(text[0].toLatin1()));
    showKey();
}

void CPatternEditDlg::resizeToFields()
{
    const int width = m_ui->width->value();
    const int height = m_ui->height->value();
    if (!PatternTemplate::isSize(width, height))
        return setMessage(tr("크기를 %1 x %2 (으)로 바꿀 수 없습니다.").arg(width).arg(height));
    if (!m_ui->pixels->resizePattern(width, height))
        return setMessage(tr("메모리 부족 !!"));
    m_ui->pixels->setFocus();
}

void CPatternEditDlg::save()
{
    if (!write(m_path))
        return;
    m_closing = true;
    close();
}

void CPatternEditDlg::askAndSaveAs()
{
    auto* const dialog = new QFileDialog(this, tr("다른 이름으로 저장"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName(QStringLiteral("saveAsFile"));
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("OCS"));
    dialog->setDirectory(QDir::current());
    // With the pattern that the toolkit matches behind the text that is shown.
    dialog->setNameFilters(
        {QStringLiteral("Ocr Source Files (*.ocs) (*.ocs)"), QStringLiteral("All Files (*.*) (*.ocs)")});
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
        if (write(path))
            setMessage(tr("저장 되었습니다: %1").arg(native(path)));
    });
    dialog->open();
}

bool CPatternEditDlg::write(const QString& path)
{
    if (!m_ui->pixels->pattern().save(path.toUtf8().constData())) {
        setMessage(tr("파일을 저장할 수 없습니다: %1").arg(native(path)));
        return false;
    }
    m_ui->pixels->markSaved();
    showPattern();
    Q_EMIT saved(path);
    return true;
}

void CPatternEditDlg::reject()
{
    close(); // Escape asks as closing does
}

void CPatternEditDlg::closeEvent(QCloseEvent* event)
{
    if (m_closing || !m_ui->pixels->isModified()) {
        event->accept();
        return QDialog::reject();
    }
    event->ignore();
    askBeforeClosing();
}

void CPatternEditDlg::askBeforeClosing()
{
    auto* const box = new QMessageBox(QMessageBox::Question, windowTitle(),
                                      tr("저장하지 않은 변경이 있습니다. 저장하시겠습니까?"),
                                      QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setObjectName(QStringLiteral("unsavedChanges"));
    box->button(QMessageBox::Save)->setText(tr("저장"));
    box->button(QMessageBox::Save)->setEnabled(m_ui->save->isEnabled());
    box->button(QMessageBox::Discard)->setText(tr("저장 안 함"));
    box->button(QMessageBox::Cancel)->setText(tr("취소"));
    connect(box, &QMessageBox::finished, this, [this](int answer) {
        if (answer == QMessageBox::Save)
            return save();
        m_closing = answer == QMessageBox::Discard;
        if (m_closing)
            close();
    });
    box->open();
}

void CPatternEditDlg::setMessage(const QString& message)
{
    m_ui->message->setText(message);
    m_ui->message->setVisible(!message.isEmpty());
}

bool CPatternEditDlg::eventFilter(QObject* watched, QEvent* event)
{
    const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : 0;
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return QDialog::eventFilter(watched, event);
    if (auto* const field = qobject_cast<QSpinBox*>(watched))
        field->interpretText();
    m_ui->resize->click();
    return true;
}

void CPatternEditDlg::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        m_ui->retranslateUi(this);
        showPattern();
    }
    QDialog::changeEvent(event);
}
