#include "tools/HistogramDlg.h"

#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "steps/AreaEdit.h"
#include "ui_HistogramDlg.h"

#include <QSignalBlocker>

#include <algorithm>

using ormalux::HistogramTool;
using ormalux::LevelCounts;
using ormalux::LevelCurve;

namespace {

const char* const channelNames[] = {"Gray", "R", "G", "B"};

QString percent(long long count, long long of)
{
    return QString::number(of > 0 ? 100.0 * double(count) / double(of) : 0.0, 'f', 2);
}

} // namespace

CHistogramDlg::CHistogramDlg(ormalux::ToolHost& host, QWidget* parent)
    : ToolDialog(host, nullptr, parent), m_ui(std::make_unique<Ui::HistogramDlg>())
{
    m_ui->setupUi(this);
    attach("CHistogramDlg", m_ui->buttons);
    connectControls();
    showLines();
    showLevel(-1);
}

CHistogramDlg::~CHistogramDlg() = default;

void CHistogramDlg::connectControls()
{
    for (QCheckBox* const box : {m_ui->gray, m_ui->red, m_ui->green, m_ui->blue})
        connect(box, &QCheckBox::toggled, this, &CHistogramDlg::showCurves);
    connect(m_ui->logarithmic, &QCheckBox::toggled, m_ui->plot, &ormalux::HistogramPlot::setLogarithmic);
    connect(m_ui->maskPreview, &QCheckBox::toggled, this, &CHistogramDlg::previewMask);
    connect(m_ui->plot, &ormalux::HistogramPlot::linesMoved, this, [this] {
        showLines();
        previewMask();
    });
    connect(m_ui->plot, &ormalux::HistogramPlot::levelPointed, this, &CHistogramDlg::showLevel);
    const auto moved = [this](int low, int high) {
        m_ui->plot->setLines(low, high);
        showLines();
        previewMask();
    };
    connect(m_ui->low, &QSpinBox::valueChanged, this,
            [this, moved](int low) { moved(low, std::max(low, m_ui->high->value())); });
    connect(m_ui->high, &QSpinBox::valueChanged, this,
            [this, moved](int high) { moved(std::min(high, m_ui->low->value()), high); });
    connect(m_ui->results, &ormalux::ResultTable::resultSelected, this,
            [this](int index) { chooseLevel(m_levels[std::size_t(index)]); });
    connect(&host(), &ormalux::ToolHost::pixelClicked, this, [this](int x, int y) {
        if (!isVisible() || !m_picture)
            return;
        const int level = int(m_picture->GetPixel(x, y));
        const auto found = std::find(m_levels.begin(), m_levels.end(), level);
        m_ui->results->selectResult(found == m_levels.end() ? -1 : int(found - m_levels.begin()));
        chooseLevel(level);
    });
}

const ormalux::Tool& CHistogramDlg::read()
{
    return m_tool;
}

void CHistogramDlg::refresh()
{
    const auto picture = host().grayPicture();
    if (picture != m_picture)
        m_colors = picture ? host().colorPicture() : nullptr;
    m_picture = picture;
    m_curves.clear();
    if (picture)
        count(*picture, host().area());
    for (QCheckBox* const box : {m_ui->red, m_ui->green, m_ui->blue})
        box->setVisible(m_colors != nullptr);
    setMessage(picture ? grayFormNote() : tr("영상이 없습니다."));
    showCurves();
    showList();
    showLines();
    previewMask();
}

void CHistogramDlg::count(const CKestImage& picture, const RECT& area)
{
    m_curves.push_back({LevelCurve::Gray, HistogramTool::run(picture, area)});
    if (!m_colors)
        return;
    const auto channels = HistogramTool::channels(*m_colors, area);
    for (const LevelCurve::Kind kind : {LevelCurve::Red, LevelCurve::Green, LevelCurve::Blue})
        m_curves.push_back({kind, channels[std::size_t(kind) - 1]});
}

std::vector<LevelCurve> CHistogramDlg::chosenCurves() const
{
    const QCheckBox* const boxes[] = {m_ui->gray, m_ui->red, m_ui->green, m_ui->blue};
    std::vector<LevelCurve> chosen;
    for (const LevelCurve& curve : m_curves)
        if (boxes[curve.kind]->isChecked())
            chosen.push_back(curve);
    return chosen;
}

void CHistogramDlg::showCurves()
{
    m_ui->plot->setCurves(chosenCurves());
    QString text = QStringLiteral("<table><tr>");
    for (const QString& title :
         {QString(), tr("Pixels"), tr("Mean"), tr("Std. Deviation"), tr("Min"), tr("Max")})
        text += QStringLiteral("<td align='right' style='padding-left:14px'>%1</td>").arg(title);
    for (const LevelCurve& curve : chosenCurves()) {
        const ormalux::LevelStatistics found = ormalux::statisticsOf(curve.counts);
        text += QStringLiteral("</tr><tr>");
        for (const QString& value :
             {QString::fromLatin1(channelNames[curve.kind]), QString::number(found.pixels),
              QString::number(found.mean, 'f', 3), QString::number(found.deviation, 'f', 3),
              QString::number(found.lowest), QString::number(found.highest)})
            text += QStringLiteral("<td align='right' style='padding-left:14px'>%1</td>").arg(value);
    }
    m_ui->statistics->setText(text + QStringLiteral("</tr></table>"));
}

void CHistogramDlg::showList()
{
    const ormalux::ResultList list = m_curves.empty() ? HistogramTool::list({}) //
                                                      : HistogramTool::list(m_curves[0].counts);
    m_levels.clear();
    for (const auto& row : list.rows)
        m_levels.push_back(int(std::get<long long>(row.values[0])));
    m_ui->results->setResults(list, {tr("Level"), tr("Count"), tr("Percent")});
    m_ui->plot->setMarked(-1);
}

void CHistogramDlg::showLines()
{
    const int low = m_ui->plot->low(), high = m_ui->plot->high();
    for (const auto& [field, level] : {std::pair(m_ui->low, low), std::pair(m_ui->high, high)}) {
        const QSignalBlocker quiet(field);
        field->setValue(level);
    }
    const LevelCounts counts = m_curves.empty() ? LevelCounts{} : m_curves[0].counts;
    const long long inside = ormalux::countBetween(counts, low, high);
    m_ui->between->setText(
        QStringLiteral("%1 (%2 %)").arg(inside).arg(percent(inside, ormalux::countBetween(counts, 0, 255))));
}

void CHistogramDlg::showLevel(int level)
{
    if (level < 0)
        return m_ui->levelInfo->setText(QStringLiteral(" ")); // keeps its line
    QString text = tr("Level %1").arg(level);
    for (const LevelCurve& curve : chosenCurves()) {
        const long count = curve.counts[std::size_t(level)];
        text += QStringLiteral("    %1: %2 (%3 %)")
                    .arg(QLatin1String(channelNames[curve.kind]))
                    .arg(count)
                    .arg(percent(count, ormalux::countBetween(curve.counts, 0, 255)));
    }
    m_ui->levelInfo->setText(text);
}

void CHistogramDlg::chooseLevel(int level)
{
    m_ui->plot->setMarked(level);
    showLevel(level);
}

void CHistogramDlg::previewMask()
{
    if (!isVisible() || !m_ui->maskPreview->isChecked() || !m_picture)
        return host().endPreview(this);
    const CRect area = host().area();
    const int low = m_ui->plot->low(), high = m_ui->plot->high();
    host().preview(
        this,
        [&](CKestImage& image) {
            ormalux::editArea(image, area, [=](CKestImage& part) { part.DoubleThreshold(high, low, 255); });
        },
        nullptr, ormalux::ColorRows::Unpadded);
}

void CHistogramDlg::hideEvent(QHideEvent* event)
{
    m_picture.reset(); // pictures are large
    m_colors.reset();
    ToolDialog::hideEvent(event);
}

void CHistogramDlg::retranslate()
{
    m_ui->retranslateUi(this);
}
