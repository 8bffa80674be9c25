#include "tools/OcrSrcDlg.h"

#include "ui_OcrSrcDlg.h"

#include <QPushButton>
#include <QRegularExpressionValidator>

COcrSrcDlg::COcrSrcDlg(const CKestImage& region, std::optional<int> level, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::OcrSrcDlg>())
{
    m_ui->setupUi(this);
    setObjectName(QStringLiteral("COcrSrcDlg"));
    m_ui->source->setRegion(region, level);
    // A key is one byte of the file: letters of more bytes have none.
    m_ui->key->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[ -~]{0,3}")), this));
    QPushButton* const ok = m_ui->choice->button(QDialogButtonBox::Ok);
    ok->setText(tr("확인"));
    ok->setEnabled(false);
    m_ui->choice->button(QDialogButtonBox::Cancel)->setText(tr("취소"));
    connect(m_ui->key, &QLineEdit::textChanged, ok,
            [ok](const QString& text) { ok->setEnabled(!text.isEmpty()); });
    m_ui->key->setFocus();
}

COcrSrcDlg::~COcrSrcDlg() = default;

std::optional<std::uint8_t> COcrSrcDlg::key() const
{
    const QByteArray text = m_ui->key->text().toUtf8();
    return text.isEmpty() ? std::nullopt : std::optional(std::uint8_t(text[0]));
}

int COcrSrcDlg::level() const
{
    return m_ui->source->level();
}
