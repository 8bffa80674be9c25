#pragma once

#include "tools/EffectDlg.h"
#include "tools/LightTool.h"

#include <memory>

namespace Ui {
class LightenDlg;
}

/// Brightens the area and changes its contrast.
class CLightenDlg : public ormalux::EffectDlg
{
    Q_OBJECT

public:
    CLightenDlg(ormalux::ToolHost& host, QWidget* parent);
    ~CLightenDlg() override;

protected:
    const ormalux::EffectTool& effect() override;
    void retranslate() override;

private:
    std::unique_ptr<Ui::LightenDlg> m_ui;
    ormalux::LightTool m_tool;
};
