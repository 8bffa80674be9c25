#include "tools/ToolBox.h"

#include "tools/BlobDlg.h"
#include "tools/DoubleThresholdDlg.h"
#include "tools/GammaDlg.h"
#include "tools/HistogramDlg.h"
#include "tools/LightenDlg.h"
#include "tools/LineGauageDlg.h"
#include "tools/MatchDlg.h"
#include "tools/OcrMatchDlg.h"
#include "tools/PointGauageDlg.h"
#include "tools/RotateDlg.h"
#include "tools/ThresholdDlg.h"
#include "tools/UserFilterDlg.h"

namespace ormalux {

namespace {

template <class Dialog>
QWidget* make(ToolHost& host, QWidget* parent)
{
    return new Dialog(host, parent);
}

struct Entry
{
    int command;
    QWidget* (*make)(ToolHost&, QWidget*);
};

// clang-format off
/// By rising command, a line each.
constexpr Entry entries[] = {
    {6601, make<CBlobDlg>},
    {6602, make<CHistogramDlg>},
    {6603, make<CThresholdDlg>},
    {6604, make<CDoubleThresholdDlg>},
    {6610, make<CRotateDlg>},
    {6633, make<CUserFilterDlg>},
    {6701, make<CGammaDlg>},
    {6702, make<CLightenDlg>},
    {6709, make<CPointGauageDlg>},
    {6710, make<CLineGauageDlg>},
    {6711, make<COcrMatchDlg>},
    {6712, make<CMatchDlg>},
};
// clang-format on

const Entry* find(int command)
{
    for (const Entry& entry : entries)
        if (entry.command == command)
            return &entry;
    return nullptr;
}

} // namespace

ToolBox::~ToolBox()
{
    for (const QPointer<QWidget>& dialog : std::as_const(m_dialogs))
        delete dialog;
}

bool ToolBox::has(int command)
{
    return find(command) != nullptr;
}

bool ToolBox::open(int command)
{
    const Entry* const entry = find(command);
    if (!entry)
        return false;
    QPointer<QWidget>& dialog = m_dialogs[command];
    if (!dialog)
        dialog = entry->make(m_host, m_parent);
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
    return true;
}

} // namespace ormalux
