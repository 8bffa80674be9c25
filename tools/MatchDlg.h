#pragma once

#include "tools/MatchTool.h"
#include "tools/SearchDlg.h"

#include <memory>

namespace Ui {
class MatchDlg;
}

/// Looks for a pattern in the area and shows where it fits best.
class CMatchDlg : public ormalux::SearchDlg
{
    Q_OBJECT

public:
    CMatchDlg(ormalux::ToolHost& host, QWidget* parent);
    ~CMatchDlg() override;

protected:
    const ormalux::Tool& read() override;
    int levelOf(const CKestImage& picture, const CRect& area) const override;
    Search search(std::shared_ptr<const CKestImage> picture, const CRect& area) override;
    void clearFound() override;
    void retranslate() override;

private:
    void showFound(const ormalux::MatchTool::Found& found, const CRect& area);
    QStringList titles() const;

    std::unique_ptr<Ui::MatchDlg> m_ui;
    ormalux::MatchTool m_tool;
};
