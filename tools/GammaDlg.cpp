#include "tools/GammaDlg.h"

#include "ui_GammaDlg.h"

CGammaDlg::CGammaDlg(ormalux::ToolHost& host, QWidget* parent)
    : EffectDlg(host, nullptr, parent), m_ui(std::make_unique<Ui::GammaDlg>())
{
    m_ui->setupUi(this);
    m_ui->gamma->setUp(0.1, 5, 2, m_tool.gamma);
    attach("CGammaDlg", m_ui->buttons);
    connect(m_ui->gamma, &ormalux::RealSlider::valueChanged, this, &CGammaDlg::refresh);
}

CGammaDlg::~CGammaDlg() = default;

const ormalux::EffectTool& CGammaDlg::effect()
{
    m_tool.gamma = m_ui->gamma->value();
    return m_tool;
}

void CGammaDlg::retranslate()
{
    m_ui->retranslateUi(this);
}
