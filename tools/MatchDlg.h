#pragma once

#include "tools/MatchTool.h"
#include "tools/ToolDialog.h"

#include <memory>

namespace Ui {
class MatchDlg;
}

/// Looks for a pattern in the area and shows where it fits best.
class CMatchDlg : public ormalux::ToolDialog
{
    Q_OBJECT

public:
    CMatchDlg(ormalux::ToolHost& host, QWidget* parent);
    ~CMatchDlg() override;

protected:
    const ormalux::Tool& read() override;
    void refresh() override;
    void retranslate() override;

private:
    void showFound(const ormalux::MatchTool::Found& found, const CRect& area);
    QStringList titles() const;
    void clearFound();

    std::unique_ptr<Ui::MatchDlg> m_ui;
    ormalux::MatchTool m_tool;
};
