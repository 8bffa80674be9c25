#include "tools/DoubleThresholdDlg.h"

#include "ui_DoubleThresholdDlg.h"

using ormalux::IntegerSlider;

CDoubleThresholdDlg::CDoubleThresholdDlg(ormalux::ToolHost& host, QWidget* parent)
    : EffectDlg(host, nullptr, parent), m_ui(std::make_unique<Ui::DoubleThresholdDlg>())
{
    m_ui->setupUi(this);
    m_ui->upper->setUp(0, 255, m_tool.upper);
    m_ui->lower->setUp(0, 255, m_tool.lower);
    m_ui->value->setUp(0, 255, m_tool.value);
    attach("CDoubleThresholdDlg", m_ui->buttons);
    // The bounds stay in order: the one that is moved takes the other along.
    connect(m_ui->upper, &IntegerSlider::valueChanged, this, [this](int upper) {
        if (m_ui->lower->value() > upper)
            m_ui->lower->setValue(upper);
        else
            refresh();
    });
    connect(m_ui->lower, &IntegerSlider::valueChanged, this, [this](int lower) {
        if (m_ui->upper->value() < lower)
            m_ui->upper->setValue(lower);
        else
            refresh();
    });
    connect(m_ui->value, &IntegerSlider::valueChanged, this, &CDoubleThresholdDlg::refresh);
}

CDoubleThresholdDlg::~CDoubleThresholdDlg() = default;

const ormalux::EffectTool& CDoubleThresholdDlg::effect()
{
    m_tool.upper = m_ui->upper->value();
    m_tool.lower = m_ui->lower->value();
    m_tool.value = m_ui->value->value();
    return m_tool;
}

void CDoubleThresholdDlg::retranslate()
{
    m_ui->retranslateUi(this);
}
