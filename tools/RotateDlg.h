#pragma once

#include "tools/EffectDlg.h"
#include "tools/RotateTool.h"

#include <memory>

namespace Ui {
class RotateDlg;
}

/// Turns the picture about a point, its middle until another is chosen.
class CRotateDlg : public ormalux::EffectDlg
{
    Q_OBJECT

public:
    CRotateDlg(ormalux::ToolHost& host, QWidget* parent);
    ~CRotateDlg() override;

protected:
    const ormalux::EffectTool& effect() override;
    void retranslate() override;
    void refresh() override;

private:
    void setCenter(int x, int y);
    void followPicture();
    void pick(int x, int y);

    bool m_ownCenter = false; ///< the operator chose it
    CSize m_seen;             ///< the picture's size that the middle belongs to
    std::unique_ptr<Ui::RotateDlg> m_ui;
    ormalux::RotateTool m_tool;
};
