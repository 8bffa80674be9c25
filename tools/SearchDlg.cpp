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
    connect(sources, &SourceList::changed, this, &SearchDlg::refresh);
    connect(sources, &SourceList::refused, this, [this](const QString& message) { setMessage(message); });
    connect(run, &QPushButton::clicked, this, [this] {
        m_sources->reload();
        refresh();
    });
    connect(buttons, &ToolButtonRow::cancelAsked, this, [this] { setMessage(tr("취소했습니다.")); });
}

void SearchDlg::refresh()
{
    read();
    const auto picture = host().grayPicture();
    const CRect area = host().area();
    if (picture)
        m_level->showValue(levelOf(*picture, area));
    read();
    if (!picture || m_sources->paths().empty()) {
        background().cancel();
        clearFound();
        return setMessage(picture ? grayFormNote() : tr("영상이 없습니다."));
    }
    setMessage(grayFormNote());
    if (!runSoon(search(picture, area)))
        clearFound(); // what was found before is not what is looked for now
}

} // namespace ormalux
