#include "tools/MatchDlg.h"

#include "image/VisionImage.h"
#include "ui_MatchDlg.h"

using ormalux::MatchTool;

namespace {

constexpr const char* patternLayer = "PATTERN_MATCH";
constexpr COLORREF boxColor = RGB(255, 230, 0);
constexpr COLORREF textColor = 255;

} // namespace

CMatchDlg::CMatchDlg(ormalux::ToolHost& host, QWidget* parent)
    : SearchDlg(host, patternLayer, parent), m_ui(std::make_unique<Ui::MatchDlg>())
{
    m_ui->setupUi(this);
    m_ui->level->setAutomatic(true);
    m_ui->pattern->setKind(ormalux::SourceKind::Pattern);
    attach("CMatchDlg", m_ui->buttons, m_ui->results);
    attachSearch(m_ui->level, m_ui->pattern, m_ui->run, m_ui->buttons);
    results()->setResults(MatchTool::list({}, {}), titles());
    m_ui->areaNote->hide();
    const auto again = [this] { refresh(); };
    connect(m_ui->below, &QSpinBox::valueChanged, this, again);
    connect(m_ui->above, &QSpinBox::valueChanged, this, again);
    connect(m_ui->thresholdRange, &QCheckBox::toggled, this, [this](bool range) {
        m_ui->below->setEnabled(range);
        m_ui->above->setEnabled(range);
        refresh();
    });
}

CMatchDlg::~CMatchDlg() = default;

const ormalux::Tool& CMatchDlg::read()
{
    m_tool.sources = m_ui->pattern->paths();
    m_tool.automatic = m_ui->level->isAutomatic();
    m_tool.level = m_ui->level->value();
    m_tool.range = m_ui->thresholdRange->isChecked();
    m_tool.below = m_ui->below->value();
    m_tool.above = m_ui->above->value();
    return m_tool;
}

int CMatchDlg::levelOf(const CKestImage& picture, const CRect& area) const
{
    return m_tool.levelOf(picture, area);
}

ormalux::SearchDlg::Search CMatchDlg::search(std::shared_ptr<const CKestImage> picture, const CRect& area)
{
    m_ui->areaNote->setVisible(!ormalux::sceneOf(host()).wholePicture());
    return [this, tool = m_tool, picture, area] {
        return [this, area, found = tool.run(*picture, area)] { showFound(found, area); };
    };
}

void CMatchDlg::showFound(const MatchTool::Found& found, const CRect& area)
{
    clearFound();
    if (!found.refused.empty())
        return setMessage(ormalux::refusedMessage(found.refused));
    if (!found.best)
        return setMessage(m_tool.automatic && m_tool.level == 0 ? tr("영역에 경계가 없습니다.")
                                                                : tr("찾은 패턴이 없습니다."));
    const ormalux::ResultList list = MatchTool::list(found, area);
    results()->setResults(list, titles());
    const CRect& box = list.rows.front().box;
    host().addRectangle(patternLayer, box, {boxColor});
    host().addLabel(patternLayer, box, ormalux::LabelPlace::Corner,
                    QStringLiteral("%1 %").arg(100 * ormalux::yieldOf(*found.best), 0, 'f', 1).toStdString(),
                    textColor);
    host().repaint();
}

QStringList CMatchDlg::titles() const
{
    return {tr("No."),    tr("Left"),       tr("Top"),        tr("Right"),
            tr("Bottom"), tr("Right-Left"), tr("Bottom-Top"), tr("Yield")};
}

void CMatchDlg::clearFound()
{
    results()->setResults(MatchTool::list({}, {}), titles());
    host().clearLayer(patternLayer);
    host().repaint();
}

void CMatchDlg::retranslate()
{
    m_ui->retranslateUi(this);
    m_ui->pattern->retranslate();
    if (m_ui->pattern->paths().empty())
        results()->setResults(MatchTool::list({}, {}), titles()); // no search will
}
