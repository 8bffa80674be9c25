#include "tools/MatchSrcDlg.h"

#include "ui_MatchSrcDlg.h"

#include <QPushButton>

CMatchSrcDlg::CMatchSrcDlg(const CKestImage& region, std::optional<int> level, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::MatchSrcDlg>())
{
    m_ui->setupUi(this);
    setObjectName(QStringLiteral("CMatchSrcDlg"));
    m_ui->source->setRegion(region, level);
    m_ui->choice->button(QDialogButtonBox::Ok)->setText(tr("확인"));
    m_ui->choice->button(QDialogButtonBox::Cancel)->setText(tr("취소"));
    const auto showKey = [this] {
        m_ui->key->setText(m_ui->whiteObject->isChecked() ? QStringLiteral("255") : QStringLiteral("0"));
    };
    connect(m_ui->whiteObject, &QRadioButton::toggled, this, showKey);
    showKey();
}

CMatchSrcDlg::~CMatchSrcDlg() = default;

std::optional<std::uint8_t> CMatchSrcDlg::key() const
{
    const int key = m_ui->key->text().toInt();
    return key == 0 || key == 255 ? std::optional(std::uint8_t(key)) : std::nullopt;
}

int CMatchSrcDlg::level() const
{
    return m_ui->source->level();
}
