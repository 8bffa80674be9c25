#pragma once

#include "tools/LineGaugeTool.h"
#include "tools/ToolDialog.h"

#include <memory>

namespace Ui {
class LineGauageDlg;
}

/// Measures the position and the angle of a straight edge inside the area.
class CLineGauageDlg : public ormalux::ToolDialog
{
    Q_OBJECT

public:
    CLineGauageDlg(ormalux::ToolHost& host, QWidget* parent);
    ~CLineGauageDlg() override;

protected:
    const ormalux::Tool& read() override;
    void refresh() override;
    void retranslate() override;

private:
    void showReadings();
    void drawScanLines();
    void draw();
    QString verdict() const;

    std::unique_ptr<Ui::LineGauageDlg> m_ui;
    ormalux::LineGaugeTool m_tool;
    ormalux::LineGaugeTool::Found m_found;
    std::vector<ormalux::LineGaugeTool::ScanLine> m_lines;
};
