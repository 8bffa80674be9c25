#include "tools/ThresholdDlg.h"

#include "image/VisionImage.h"
#include "ui_ThresholdDlg.h"

using ormalux::ThresholdTool;

CThresholdDlg::CThresholdDlg(ormalux::ToolHost& host, QWidget* parent)
    : ToolDialog(host, nullptr, parent), m_ui(std::make_unique<Ui::ThresholdDlg>())
{
    m_ui->setupUi(this);
    m_ui->level->setAutomatic(true);
    m_ui->step->setUp(1, 32, 1);
    attach("CThresholdDlg", m_ui->buttons);
    connect(m_ui->level, &ormalux::ThresholdGroup::changed, this, &CThresholdDlg::refresh);
    connect(m_ui->step, &ormalux::IntegerSlider::valueChanged, this, &CThresholdDlg::refresh);
}

CThresholdDlg::~CThresholdDlg() = default;

const ormalux::Tool& CThresholdDlg::read()
{
    m_tool.automatic = m_ui->level->isAutomatic();
    m_tool.level = m_ui->level->value();
    m_tool.step = m_ui->step->value();
    return m_tool;
}

void CThresholdDlg::refresh()
{
    read();
    const auto picture = host().grayPicture();
    if (!picture)
        return setMessage(tr("영상이 없습니다."));
    const CRect area = host().area();
    const int level = m_tool.run(*picture, area);
    m_ui->level->showValue(level);
    setMessage(m_tool.automatic && level == 0 ? tr("영역에 경계가 없습니다.") : grayFormNote());
    host().preview(
        this, [&](CKestImage& image) { ThresholdTool::effect(image, area, level); }, nullptr,
        ormalux::ColorRows::Unpadded);
}

bool CThresholdDlg::apply()
{
    read();
    const auto picture = host().grayPicture();
    const CRect area = host().area();
    const int level = picture ? m_tool.run(*picture, area) : 0;
    const bool run = host().apply([&](CKestImage& image) { ThresholdTool::effect(image, area, level); },
                                  nullptr, ormalux::ColorRows::Unpadded);
    if (!run)
        setMessage(picture ? tr("이 기능은 8비트 회색조 영상에만 적용할 수 있습니다.")
                           : tr("영상이 없습니다."));
    return run;
}

void CThresholdDlg::retranslate()
{
    m_ui->retranslateUi(this);
}
