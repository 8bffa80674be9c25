#pragma once

#include "tools/ThresholdTool.h"
#include "tools/ToolDialog.h"

#include <memory>

namespace Ui {
class ThresholdDlg;
}

/// Finds or chooses a level and shows the area in black and white.
class CThresholdDlg : public ormalux::ToolDialog
{
    Q_OBJECT

public:
    CThresholdDlg(ormalux::ToolHost& host, QWidget* parent);
    ~CThresholdDlg() override;

protected:
    const ormalux::Tool& read() override;
    void refresh() override;
    bool apply() override;
    void retranslate() override;

private:
    std::unique_ptr<Ui::ThresholdDlg> m_ui;
    ormalux::ThresholdTool m_tool;
};
