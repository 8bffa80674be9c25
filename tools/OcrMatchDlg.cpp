#include "tools/OcrMatchDlg.h"

#include "image/VisionImage.h"
#include "ui_OcrMatchDlg.h"

#include <QScrollBar>

using ormalux::OcrMatchTool;

namespace {

constexpr const char* characterLayer = "OCR_MATCH";
constexpr COLORREF boxColor = RGB(64, 160, 255);
constexpr COLORREF chosenColor = RGB(255, 230, 0);
constexpr COLORREF textColor = 255;
constexpr int characterColumn = 1;
constexpr int textLines = 2; ///< of the text read that are seen without scrolling

} // namespace

COcrMatchDlg::COcrMatchDlg(ormalux::ToolHost& host, QWidget* parent)
    : SearchDlg(host, characterLayer, parent), m_ui(std::make_unique<Ui::OcrMatchDlg>())
{
    m_ui->setupUi(this);
    m_ui->level->setAutomatic(true);
    m_ui->characters->setKind(ormalux::SourceKind::Character);
    m_ui->text->setFixedHeight(textLines * m_ui->text->fontMetrics().lineSpacing() +
                               m_ui->text->horizontalScrollBar()->sizeHint().height() + 12);
    attach("COcrMatchDlg", m_ui->buttons, m_ui->results);
    attachSearch(m_ui->level, m_ui->characters, m_ui->run, m_ui->buttons);
    results()->setResults(OcrMatchTool::list({}), titles());
    for (QSpinBox* const size : {m_ui->minWidth, m_ui->maxWidth, m_ui->minHeight, m_ui->maxHeight})
        connect(size, &QSpinBox::valueChanged, this, [this] { refresh(); });
}

COcrMatchDlg::~COcrMatchDlg() = default;

const ormalux::Tool& COcrMatchDlg::read()
{
    m_tool.sources = m_ui->characters->paths();
    m_tool.automatic = m_ui->level->isAutomatic();
    m_tool.level = m_ui->level->value();
    m_tool.minWidth = m_ui->minWidth->value();
    m_tool.maxWidth = m_ui->maxWidth->value();
    m_tool.minHeight = m_ui->minHeight->value();
    m_tool.maxHeight = m_ui->maxHeight->value();
    return m_tool;
}

int COcrMatchDlg::levelOf(const CKestImage& picture, const CRect& area) const
{
    return m_tool.levelOf(picture, area);
}

ormalux::SearchDlg::Search COcrMatchDlg::search(std::shared_ptr<const CKestImage> picture, const CRect& area)
{
    return [this, tool = m_tool, picture, area] {
        return [this, found = tool.run(*picture, area)] { showFound(found); };
    };
}

void COcrMatchDlg::showFound(const OcrMatchTool::Found& found)
{
    clearFound();
    const ormalux::ResultList list = OcrMatchTool::list(found);
    results()->setResults(list, titles());
    m_ui->text->setPlainText(QString::fromStdString(OcrMatchTool::text(found)));
    draw(-1);
    if (!found.refused.empty())
        setMessage(ormalux::refusedMessage(found.refused)); // the others have been read
    else if (m_tool.minWidth > m_tool.maxWidth || m_tool.minHeight > m_tool.maxHeight)
        setMessage(tr("최소 크기가 최대 크기보다 큽니다."));
    else if (list.rows.empty())
        setMessage(m_tool.automatic && m_tool.level == 0 ? tr("영역에 경계가 없습니다.")
                                                         : tr("찾은 글자가 없습니다."));
}

void COcrMatchDlg::resultChosen(int index)
{
    host().clearLayer(characterLayer);
    draw(index);
}

/// The chosen character's box is drawn over its neighbours'.
void COcrMatchDlg::draw(int chosen)
{
    const auto& rows = results()->results().rows;
    for (const auto& row : rows) {
        host().addRectangle(characterLayer, row.box, {boxColor});
        host().addLabel(characterLayer, row.box, ormalux::LabelPlace::Below, // the character stays seen
                        std::get<std::string>(row.values[characterColumn]), textColor);
    }
    if (chosen >= 0 && std::size_t(chosen) < rows.size())
        host().addRectangle(characterLayer, rows[std::size_t(chosen)].box, {chosenColor, 3});
    host().repaint();
}

QStringList COcrMatchDlg::titles() const
{
    return {tr("No."),    tr("Char"),   tr("Left"),  tr("Top"),         tr("Right"),
            tr("Bottom"), tr("Pixels"), tr("Yield"), tr("Black Yield"), tr("White Yield")};
}

void COcrMatchDlg::clearFound()
{
    results()->setResults(OcrMatchTool::list({}), titles());
    m_ui->text->clear();
    host().clearLayer(characterLayer);
    host().repaint();
}

void COcrMatchDlg::retranslate()
{
    m_ui->retranslateUi(this);
    m_ui->characters->retranslate();
    if (m_ui->characters->paths().empty())
        results()->setResults(OcrMatchTool::list({}), titles()); // no search will
}
