#include "tools/LightenDlg.h"

#include "ui_LightenDlg.h"

using ormalux::IntegerSlider;

CLightenDlg::CLightenDlg(ormalux::ToolHost& host, QWidget* parent)
    : EffectDlg(host, nullptr, parent), m_ui(std::make_unique<Ui::LightenDlg>())
{
    m_ui->setupUi(this);
    m_ui->brightness->setUp(-255, 255, m_tool.brightness);
    m_ui->contrast->setUp(-100, 100, m_tool.contrast);
    attach("CLightenDlg", m_ui->buttons);
    connect(m_ui->brightness, &IntegerSlider::valueChanged, this, &CLightenDlg::refresh);
    connect(m_ui->contrast, &IntegerSlider::valueChanged, this, &CLightenDlg::refresh);
}

CLightenDlg::~CLightenDlg() = default;

const ormalux::EffectTool& CLightenDlg::effect()
{
    m_tool.brightness = m_ui->brightness->value();
    m_tool.contrast = m_ui->contrast->value();
    return m_tool;
}

void CLightenDlg::retranslate()
{
    m_ui->retranslateUi(this);
}
