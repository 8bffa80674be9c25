#pragma once

#include "tools/EffectDlg.h"
#include "tools/GammaTool.h"

#include <memory>

namespace Ui {
class GammaDlg;
}

/// Bends the levels of the area.
class CGammaDlg : public ormalux::EffectDlg
{
    Q_OBJECT

public:
    CGammaDlg(ormalux::ToolHost& host, QWidget* parent);
    ~CGammaDlg() override;

protected:
    const ormalux::EffectTool& effect() override;
    void retranslate() override;

private:
    std::unique_ptr<Ui::GammaDlg> m_ui;
    ormalux::GammaTool m_tool;
};
