#include "tools/PointGauageDlg.h"

#include "image/VisionImage.h"
#include "measure/LineWalk.h"
#include "tools/GaugeStrokes.h"
#include "ui_PointGauageDlg.h"

#include <QSignalBlocker>

#include <utility>

using ormalux::PointGaugeTool;
namespace strokes = ormalux::strokes;

CPointGauageDlg::CPointGauageDlg(ormalux::ToolHost& host, QWidget* parent)
    : ToolDialog(host, "POINT_GAUGE", parent), m_ui(std::make_unique<Ui::PointGauageDlg>())
{
    m_ui->setupUi(this);
    m_ui->level->setAutomatic(true);
    attach("CPointGauageDlg", m_ui->buttons, m_ui->results);
    connectLine();
    connect(m_ui->level, &ormalux::ThresholdGroup::changed, this, &CPointGauageDlg::refresh);
    connect(m_ui->blackAndWhite, &QRadioButton::toggled, this, &CPointGauageDlg::refresh);
    connect(m_ui->profile, &ormalux::ProfilePlot::thresholdDragged, this, &CPointGauageDlg::takeLevel);
}

CPointGauageDlg::~CPointGauageDlg() = default;

void CPointGauageDlg::connectLine()
{
    for (QSpinBox* const field : {m_ui->x1, m_ui->y1, m_ui->x2, m_ui->y2})
        connect(field, &QSpinBox::valueChanged, this, [this] {
            m_ofArea = false;
            refresh();
        });
    connect(m_ui->drawLine, &QPushButton::clicked, this, &CPointGauageDlg::pick);
    connect(m_ui->middleLine, &QPushButton::clicked, this, [this] {
        stopPicking();
        m_ofArea = true;
        refresh();
    });
    connect(&host(), &ormalux::ToolHost::linePicked, this, [this](int x1, int y1, int x2, int y2) {
        if (!std::exchange(m_picking, false))
            return;
        m_ofArea = false;
        setLine({x1, y1}, {x2, y2});
        refresh();
    });
}

void CPointGauageDlg::pick()
{
    m_picking = true;
    host().pickLine();
    setMessageOfGrayForm(tr("영상에서 마우스로 선을 그리십시오."));
}

void CPointGauageDlg::stopPicking()
{
    if (std::exchange(m_picking, false))
        host().cancelPick();
}

void CPointGauageDlg::takeLevel(int level)
{
    {
        const QSignalBlocker quiet(m_ui->level);
        m_ui->level->setAutomatic(false);
        m_ui->level->showValue(level);
    }
    refresh();
}

/// Ends outside the picture are drawn to its border.
void CPointGauageDlg::setLine(POINT from, POINT to)
{
    const std::pair<QSpinBox*, int> fields[] = {
        {m_ui->x1, from.x}, {m_ui->y1, from.y}, {m_ui->x2, to.x}, {m_ui->y2, to.y}};
    for (const auto& [field, value] : fields) {
        const QSignalBlocker quiet(field);
        field->setValue(value);
    }
}

void CPointGauageDlg::followArea()
{
    const CSize size = host().size();
    for (QSpinBox* const field : {m_ui->x1, m_ui->x2}) {
        const QSignalBlocker quiet(field);
        field->setRange(0, size.cx - 1);
    }
    for (QSpinBox* const field : {m_ui->y1, m_ui->y2}) {
        const QSignalBlocker quiet(field);
        field->setRange(0, size.cy - 1);
    }
    const CRect area = host().area();
    const LONG row = area.top + (area.bottom - area.top) / 2;
    if (m_ofArea)
        setLine({area.left, row}, {area.right, row});
}

const ormalux::Tool& CPointGauageDlg::read()
{
    m_tool.from = {m_ui->x1->value(), m_ui->y1->value()};
    m_tool.to = {m_ui->x2->value(), m_ui->y2->value()};
    m_tool.edge = {m_ui->blackAndWhite->isChecked() ? BLACK_AND_WHITE : WHITE_AND_BLACK,
                   m_ui->level->isAutomatic(), m_ui->level->value()};
    return m_tool;
}

void CPointGauageDlg::refresh()
{
    const auto picture = host().grayPicture();
    m_chosen = -1;
    m_found = {};
    if (picture) {
        followArea();
        read();
        m_found = m_tool.run(*picture);
        if (m_tool.edge.automatic)
            m_ui->level->showValue(m_found.threshold);
    }
    results()->setResults(m_found.list(), {tr("No."), tr("X"), tr("Y"), tr("Level"), tr("Contrast")});
    showFound(picture ? *picture : CKestImage());
    if (picture)
        setMessageOfGrayForm(m_picking ? tr("영상에서 마우스로 선을 그리십시오.") : verdict());
    else
        setMessage(tr("영상이 없습니다."));
    draw();
}

QString CPointGauageDlg::verdict() const
{
    if (m_found.threshold == 0)
        return m_tool.edge.automatic ? tr("영역에 경계가 없습니다.")
                                     : tr("임계값이 0이면 측정하지 않습니다.");
    return m_found.best < 0 ? tr("선 위에서 경계를 찾지 못했습니다.") : QString();
}

void CPointGauageDlg::showFound(const CKestImage& picture)
{
    std::vector<int> marks;
    const ormalux::LineWalk walk(m_found.from, m_found.to);
    for (const _stPixel& edge : m_found.edges.records())
        marks.push_back(int(walk.stepAt(edge.x, edge.y)));
    m_ui->profile->setProfile(m_tool.profile(picture), m_found.threshold, std::move(marks), m_found.best);
    if (m_found.best < 0)
        return m_ui->best->setText(tr("Best: -"));
    const _stPixel& best = m_found.edges[m_found.best];
    m_ui->best->setText(tr("Best: (%1, %2)   Contrast: %3   Count: %4")
                            .arg(best.x)
                            .arg(best.y)
                            .arg(best.parameter)
                            .arg(m_found.edges.GetCount()));
}

void CPointGauageDlg::draw()
{
    host().clearLayer(layer());
    if (host().size().cx > 0)
        host().addLine(layer(), m_found.from, m_found.to, strokes::scan);
    const auto mark = [this](int index, int arm, ormalux::Stroke stroke) {
        const _stPixel& edge = m_found.edges[index];
        strokes::point(host(), layer(), {edge.x, edge.y}, arm, stroke);
    };
    for (int i = 0; i < m_found.edges.GetCount(); ++i)
        if (i != m_found.best && i != m_chosen)
            mark(i, 4, strokes::edge);
    if (m_found.best >= 0)
        mark(m_found.best, 7, strokes::result);
    if (m_chosen >= 0)
        mark(m_chosen, 7, strokes::chosen);
    host().repaint();
}

void CPointGauageDlg::resultChosen(int index)
{
    m_chosen = index;
    m_ui->profile->setChosen(index);
    draw();
}

void CPointGauageDlg::hideEvent(QHideEvent* event)
{
    stopPicking();
    ToolDialog::hideEvent(event);
}

void CPointGauageDlg::retranslate()
{
    m_ui->retranslateUi(this);
}
