#pragma once

#include "tools/EffectDlg.h"
#include "tools/DoubleThresholdTool.h"

#include <memory>

namespace Ui {
class DoubleThresholdDlg;
}

/// Tries two bounds: what lies between them becomes one level.
class CDoubleThresholdDlg : public ormalux::EffectDlg
{
    Q_OBJECT

public:
    CDoubleThresholdDlg(ormalux::ToolHost& host, QWidget* parent);
    ~CDoubleThresholdDlg() override;

protected:
    const ormalux::EffectTool& effect() override;
    void retranslate() override;

private:
    std::unique_ptr<Ui::DoubleThresholdDlg> m_ui;
    ormalux::DoubleThresholdTool m_tool;
};
