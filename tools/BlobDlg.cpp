#include "tools/BlobDlg.h"

#include "image/VisionImage.h"
#include "tools/GaugeStrokes.h"
#include "tools/LatestJob.h"
#include "tools/SourceSaving.h"
#include "ui_BlobDlg.h"

#include <QAction>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

using ormalux::BlobTool;
using ormalux::ResultList;
namespace strokes = ormalux::strokes;

namespace {

constexpr int listedBlobs = 100000;
constexpr std::size_t drawnBoxes = 10000;

} // namespace

CBlobDlg::CBlobDlg(ormalux::ToolHost& host, QWidget* parent)
    : ToolDialog(host, "BLOB", parent), m_ui(std::make_unique<Ui::BlobDlg>())
{
    m_ui->setupUi(this);
    m_ui->level->setAutomatic(true);
    setUpSizes();
    addSaving();
    attach("CBlobDlg", m_ui->buttons, m_ui->results);
    connect(m_ui->level, &ormalux::ThresholdGroup::changed, this, &CBlobDlg::refresh);
    connect(m_ui->objectWhite, &QRadioButton::toggled, this, &CBlobDlg::refresh);
    connect(m_ui->sort, &QComboBox::currentIndexChanged, this, &CBlobDlg::refresh);
    connect(m_ui->buttons, &ormalux::ToolButtonRow::cancelAsked, this, [this] {
        forget();
        setMessageOfGrayForm(tr("취소했습니다."));
    });
}

CBlobDlg::~CBlobDlg() = default;

void CBlobDlg::setUpSizes()
{
    const std::pair<QSpinBox*, int> fields[] = {{m_ui->minWidth, m_tool.minWidth},
                                                {m_ui->maxWidth, m_tool.maxWidth},
                                                {m_ui->minHeight, m_tool.minHeight},
                                                {m_ui->maxHeight, m_tool.maxHeight}};
    for (const auto& [field, value] : fields) {
        field->setRange(1, BlobTool::maxSize);
        field->setValue(value);
        connect(field, &QSpinBox::valueChanged, this, &CBlobDlg::refresh);
    }
}

void CBlobDlg::addSaving()
{
    const std::tuple<const char*, QString, ormalux::SourceKind> items[] = {
        {"saveOcrSource", tr("Save Ocr Source File ..."), ormalux::SourceKind::Character},
        {"saveMatchSource", tr("Save Match Source File ..."), ormalux::SourceKind::Pattern}};
    for (const auto& [name, text, kind] : items) {
        auto* const action = new QAction(text, m_ui->results);
        action->setObjectName(QLatin1String(name));
        connect(action, &QAction::triggered, this, [this, kind = kind] { saveChosen(kind); });
        m_ui->results->addAction(action);
    }
}

/// The chosen blob's box as a source at the level by which the blob was found.
void CBlobDlg::saveChosen(ormalux::SourceKind kind)
{
    const int index = m_ui->results->selectedResult();
    if (index >= 0)
        ormalux::saveSource(host(), results()->results().rows[std::size_t(index)].box, kind,
                            m_ui->level->value(), this);
}

const ormalux::Tool& CBlobDlg::read()
{
    m_tool.automatic = m_ui->level->isAutomatic();
    m_tool.level = m_ui->level->value();
    m_tool.white = m_ui->objectWhite->isChecked();
    m_tool.minWidth = m_ui->minWidth->value();
    m_tool.maxWidth = m_ui->maxWidth->value();
    m_tool.minHeight = m_ui->minHeight->value();
    m_tool.maxHeight = m_ui->maxHeight->value();
    m_tool.order = m_ui->sort->currentIndex();
    return m_tool;
}

void CBlobDlg::refresh()
{
    read();
    const auto picture = host().grayPicture();
    if (!picture) {
        background().cancel();
        forget();
        return setMessage(tr("영상이 없습니다."));
    }
    const bool shown = runSoon([this, picture, tool = m_tool, area = host().area()] {
        auto found = std::make_shared<BlobTool::Found>(tool.run(*picture, area));
        auto list = std::make_shared<ResultList>(BlobTool::list(found->blobs, listedBlobs));
        return [this, found, list] { showFound(*found, std::move(*list)); };
    });
    if (!shown)
        forget(); // what was found before is not what is looked for now
}

void CBlobDlg::showFound(const BlobTool::Found& found, ResultList list)
{
    m_chosen = -1;
    if (m_tool.automatic)
        m_ui->level->showValue(found.threshold);
    results()->setResults(std::move(list), {tr("No."), tr("Left"), tr("Top"), tr("Right"), tr("Bottom"),
                                            tr("Width"), tr("Height"), tr("Pixels")});
    m_ui->summary->setText(tr("Threshold: %1   Count: %2   Pixels: %3")
                               .arg(found.threshold)
                               .arg(std::max(0ll, found.count))
                               .arg(found.pixels));
    setMessageOfGrayForm(verdict(found));
    draw();
}

QString CBlobDlg::verdict(const BlobTool::Found& found) const
{
    if (found.count < 0)
        return tr("메모리가 부족합니다.");
    if (m_tool.automatic && found.threshold == 0)
        return tr("영역에 경계가 없습니다.");
    if (m_tool.minWidth > m_tool.maxWidth || m_tool.minHeight > m_tool.maxHeight)
        return tr("최소 크기가 최대 크기보다 큽니다.");
    if (found.count == 0)
        return tr("찾은 것이 없습니다.");
    if (found.count > BlobTool::maxFound)
        return tr("너무 많아 목록에 싣지 않았습니다. 크기 범위를 좁히십시오.");
    if (found.count > listedBlobs)
        return tr("처음 %1개만 목록에, 처음 %2개만 영상에 표시합니다.").arg(listedBlobs).arg(drawnBoxes);
    if (found.count > (long long)drawnBoxes)
        return tr("처음 %1개만 영상에 표시합니다.").arg(drawnBoxes);
    return {};
}

/// Nothing is known of the picture.
void CBlobDlg::forget()
{
    m_chosen = -1;
    results()->setResults({});
    m_ui->summary->clear();
    draw();
}

void CBlobDlg::draw()
{
    const auto& rows = results()->results().rows;
    host().clearLayer(layer());
    const std::size_t drawn = std::min(rows.size(), drawnBoxes);
    for (std::size_t i = 0; i < drawn; ++i)
        strokes::frame(host(), layer(), rows[i].box, strokes::blob);
    drawNumbers();
    if (m_chosen >= 0)
        strokes::frame(host(), layer(), rows[std::size_t(m_chosen)].box, strokes::chosen);
    host().repaint();
}

/// The chosen blob's number first: it takes its place before the others do.
void CBlobDlg::drawNumbers()
{
    const auto& rows = results()->results().rows;
    const auto draw = [&](std::size_t i, COLORREF color) {
        const CRect& box = rows[i].box;
        host().addLabel(layer(), {box.left, box.top, box.right + 1, box.bottom + 1},
                        ormalux::LabelPlace::Above, std::to_string(i + 1), color);
    };
    if (m_chosen >= 0)
        draw(std::size_t(m_chosen), strokes::chosen.color);
    for (std::size_t i = 0; i < std::min(rows.size(), drawnBoxes); ++i)
        if (int(i) != m_chosen)
            draw(i, strokes::blob.color);
}

void CBlobDlg::resultChosen(int index)
{
    m_chosen = index;
    draw();
}

void CBlobDlg::retranslate()
{
    m_ui->retranslateUi(this);
}
