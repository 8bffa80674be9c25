#include "tools/RotateDlg.h"

#include "ui_RotateDlg.h"

#include <QSignalBlocker>

namespace {

constexpr char centerLayer[] = "ROTATE";
constexpr int crossArm = 12;
constexpr COLORREF crossColor = RGB(255, 0, 0);
constexpr int farthest = 99999; ///< a centre may lie outside the picture

} // namespace

CRotateDlg::CRotateDlg(ormalux::ToolHost& host, QWidget* parent)
    : EffectDlg(host, centerLayer, parent), m_ui(std::make_unique<Ui::RotateDlg>())
{
    m_ui->setupUi(this);
    m_ui->angle->setUp(-180, 180, 2, m_tool.angle);
    m_ui->fill->setUp(0, 255, m_tool.fill);
    for (QSpinBox* const field : {m_ui->centerX, m_ui->centerY}) {
        field->setRange(-farthest, farthest);
        connect(field, &QSpinBox::valueChanged, this, [this] {
            m_ownCenter = true;
            refresh();
        });
    }
    attach("CRotateDlg", m_ui->buttons);
    connect(m_ui->angle, &ormalux::RealSlider::valueChanged, this, &CRotateDlg::refresh);
    connect(m_ui->fill, &ormalux::IntegerSlider::valueChanged, this, &CRotateDlg::refresh);
    connect(m_ui->pictureCenter, &QAbstractButton::clicked, this, [this] {
        m_ownCenter = false;
        refresh();
    });
    connect(&host, &ormalux::ToolHost::pixelClicked, this, &CRotateDlg::pick);
}

CRotateDlg::~CRotateDlg() = default;

const ormalux::EffectTool& CRotateDlg::effect()
{
    followPicture();
    m_tool.centerX = m_ui->centerX->value();
    m_tool.centerY = m_ui->centerY->value();
    m_tool.angle = m_ui->angle->value();
    m_tool.fill = m_ui->fill->value();
    return m_tool;
}

/// The middle of another picture is another one.
void CRotateDlg::followPicture()
{
    const CSize size = host().size();
    if (size.cx != m_seen.cx || size.cy != m_seen.cy)
        m_ownCenter = false;
    m_seen = size;
    if (!m_ownCenter)
        setCenter(size.cx / 2, size.cy / 2);
}

void CRotateDlg::setCenter(int x, int y)
{
    const QSignalBlocker quietX(m_ui->centerX), quietY(m_ui->centerY);
    m_ui->centerX->setValue(x);
    m_ui->centerY->setValue(y);
}

void CRotateDlg::refresh()
{
    EffectDlg::refresh();
    host().clearLayer(layer());
    if (host().size().cx > 0)
        host().addCross(layer(), {m_tool.centerX, m_tool.centerY}, crossArm, {crossColor});
    host().repaint();
}

void CRotateDlg::pick(int x, int y)
{
    if (!isVisible() || !m_ui->pickCenter->isChecked())
        return;
    m_ui->pickCenter->setChecked(false);
    m_ownCenter = true;
    setCenter(x, y);
    refresh();
}

void CRotateDlg::retranslate()
{
    m_ui->retranslateUi(this);
}
