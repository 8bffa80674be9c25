#pragma once

#include "tools/EffectDlg.h"
#include "tools/UserFilterTool.h"

#include <memory>

class QSpinBox;

namespace Ui {
class UserFilterDlg;
}

/// Filters the area with a kernel of 3 x 3 that the operator writes.
class CUserFilterDlg : public ormalux::EffectDlg
{
    Q_OBJECT

public:
    CUserFilterDlg(ormalux::ToolHost& host, QWidget* parent);
    ~CUserFilterDlg() override;

protected:
    const ormalux::EffectTool& effect() override;
    void retranslate() override;

private:
    void fillPresets();
    void takePreset(int index);
    void namePreset();

    QSpinBox* m_entries[9];
    std::unique_ptr<Ui::UserFilterDlg> m_ui;
    ormalux::UserFilterTool m_tool;
};
