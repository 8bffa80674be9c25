#include "tools/SearchDlg.h"

#include "image/VisionImage.h"
#include "tools/LatestJob.h"
#include "tools/SourceList.h"
#include "tools/ThresholdGroup.h"
#include "tools/ToolButtonRow.h"

#include <QPushButton>

namespace ormalux {

void SearchDlg::attachSearch(ThresholdGroup* level, SourceList* sources, QPushButton* run,
                             ToolButtonRow* buttons)
{
    m_level = level;
    m_sources = sources;
    connect(level, &ThresholdGroup::changed, this, &SearchDlg::refresh);
    connect(sources, &SourceList::changed, this, [this] {
        if (m_sources->paths().empty())
            forget();
        refresh();
    });
    connect(sources, &SourceList::refused, this, [this](const QString& message) { setMessage(message); });
    connect(run, &QPushButton::clicked, this, [this] {
        if (m_sources->paths().empty())
            return; // Deliberate: results and drawings stay; callers rely on it
        m_sources->reload();
        refresh();
    });
    connect(buttons, &ToolButtonRow::cancelAsked, this, [this] { setMessage(tr("취소했습니다.")); });
}

void SearchDlg::forget()
{
    background().cancel();
    clearFound();
}

void SearchDlg::refresh()
{
    read();
    const auto picture = host().grayPicture();
    const CRect area = host().area();
    if (picture)
        m_level->showValue(levelOf(*picture, area));
    read();
    const bool searches = !m_sources->paths().empty();
    if (!picture && searches)
        forget();
    setMessage(picture ? grayFormNote() : tr("영상이 없습니다."));
    if (!picture || !searches)
        return;
    if (!runSoon(search(picture, area)))
        clearFound(); // what was found before is not what is looked for now
}

} // namespace ormalux
