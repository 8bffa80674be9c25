#include "tools/LineGauageDlg.h"

#include "image/VisionImage.h"
#include "tools/GaugeStrokes.h"
#include "ui_LineGauageDlg.h"

#include <algorithm>
#include <cmath>

using ormalux::LineGaugeTool;
namespace strokes = ormalux::strokes;

namespace {

/// More scan lines than this, or lines nearer to each other on the screen, hide the picture; all edges are
/// drawn.
constexpr int readableLines = 24;
constexpr double readableDistance = 12;
/// The crosses of more edges than this run into each other.
constexpr std::size_t readableCrosses = 100;

void enlarge(QLabel* label, double factor)
{
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * factor);
    font.setBold(true);
    label->setFont(font);
}

} // namespace

CLineGauageDlg::CLineGauageDlg(ormalux::ToolHost& host, QWidget* parent)
    : ToolDialog(host, "LINE_GAUGE", parent), m_ui(std::make_unique<Ui::LineGauageDlg>())
{
    m_ui->setupUi(this);
    m_ui->level->setAutomatic(true);
    m_ui->step->setUp(1, 64, 1);
    enlarge(m_ui->angle, 2.2);
    enlarge(m_ui->ends, 1.3);
    attach("CLineGauageDlg", m_ui->buttons, m_ui->results);
    connect(m_ui->level, &ormalux::ThresholdGroup::changed, this, &CLineGauageDlg::refresh);
    connect(m_ui->step, &ormalux::IntegerSlider::valueChanged, this, &CLineGauageDlg::refresh);
    connect(m_ui->blackAndWhite, &QRadioButton::toggled, this, &CLineGauageDlg::refresh);
    connect(m_ui->directionVertical, &QRadioButton::toggled, this, &CLineGauageDlg::refresh);
}

CLineGauageDlg::~CLineGauageDlg() = default;

const ormalux::Tool& CLineGauageDlg::read()
{
    m_tool.edge = {m_ui->blackAndWhite->isChecked() ? BLACK_AND_WHITE : WHITE_AND_BLACK,
                   m_ui->level->isAutomatic(), m_ui->level->value()};
    m_tool.direction = m_ui->directionVertical->isChecked() ? DIRECTION_VERTICAL : DIRECTION_HORIZENTAL;
    m_tool.step = m_ui->step->value();
    return m_tool;
}

void CLineGauageDlg::refresh()
{
    read();
    m_ui->stepBox->setEnabled(m_tool.direction == DIRECTION_HORIZENTAL);
    m_found = {};
    m_lines.clear();
    if (const auto picture = host().grayPicture()) {
        const CRect area = host().area();
        m_found = m_tool.run(*picture, area);
        m_lines = m_tool.scanLines(*picture, area, m_found.threshold);
        if (m_tool.edge.automatic)
            m_ui->level->showValue(m_found.threshold);
        setMessageOfGrayForm(verdict());
    } else {
        setMessage(tr("영상이 없습니다."));
    }
    results()->setResults(m_found.list(), {tr("x1"), tr("y1"), tr("x2"), tr("y2"), tr("Center X"),
                                           tr("Center Y"), tr("Angle")});
    showReadings();
    draw();
}

QString CLineGauageDlg::verdict() const
{
    if (m_found.measured)
        return {};
    if (m_found.threshold == 0)
        return m_tool.edge.automatic ? tr("영역에 경계가 없습니다.")
                                     : tr("임계값이 0이면 측정하지 않습니다.");
    if (m_lines.empty())
        return tr("영역이 너무 작아 측정할 수 없습니다.");
    const bool elsewhere =
        std::any_of(m_lines.begin(), m_lines.end(), [](const auto& line) { return line.hasEdge; });
    return elsewhere ? tr("영역의 중심선 위에 경계가 없습니다.") : tr("경계를 찾지 못했습니다.");
}

void CLineGauageDlg::showReadings()
{
    const auto used =
        std::count_if(m_lines.begin(), m_lines.end(), [](const auto& line) { return line.used; });
    m_ui->lines->setText(tr("Lines: %1 / %2").arg(used).arg(m_lines.size()));
    m_ui->angle->setText(m_found.measured ? tr("%1°").arg(m_found.angle, 0, 'f', 4) : tr("-"));
    m_ui->ends->setText(m_found.measured ? tr("(%1, %2) - (%3, %4)")
                                               .arg(m_found.first.x)
                                               .arg(m_found.first.y)
                                               .arg(m_found.second.x)
                                               .arg(m_found.second.y)
                                         : tr("경계를 찾지 못했습니다."));
}

void CLineGauageDlg::drawScanLines()
{
    if (m_lines.empty())
        return;
    const bool down = m_tool.direction == DIRECTION_HORIZENTAL;
    const auto place = [down](const LineGaugeTool::ScanLine& line) {
        return down ? line.from.x : line.from.y;
    };
    const int whole = place(m_lines.back()) - place(m_lines.front());
    const int apart = std::max(int(std::ceil(readableDistance / host().zoom())), whole / readableLines);
    int next = place(m_lines.front());
    for (const LineGaugeTool::ScanLine& line : m_lines)
        if (place(line) >= next) {
            host().addLine(layer(), line.from, line.to, strokes::scan);
            next = place(line) + apart;
        }
}

void CLineGauageDlg::draw()
{
    host().clearLayer(layer());
    drawScanLines();
    for (const LineGaugeTool::ScanLine& line : m_lines) {
        if (!line.hasEdge)
            continue;
        const ormalux::Stroke stroke = line.used ? strokes::edge : strokes::unused;
        const POINT at = line.edge;
        if (m_lines.size() <= readableCrosses)
            strokes::point(host(), layer(), at, 3, stroke);
        else
            strokes::frame(host(), layer(), {at.x, at.y, at.x, at.y}, stroke);
    }
    if (m_found.measured) {
        host().addLine(layer(), m_found.first, m_found.second, strokes::result);
        strokes::point(host(), layer(), m_found.center, 7, strokes::result);
    }
    host().repaint();
}

void CLineGauageDlg::retranslate()
{
    m_ui->retranslateUi(this);
}
