#pragma once

#include "tools/EffectTool.h"
#include "tools/ToolDialog.h"

namespace ormalux {

/// A dialog of a tool that changes the picture: what the controls say is seen at once, and stays when it is
/// applied.
class EffectDlg : public ToolDialog
{
    Q_OBJECT

protected:
    using ToolDialog::ToolDialog;

    /// The tool with the values of the controls.
    virtual const EffectTool& effect() = 0;
    const Tool& read() final { return effect(); }
    void refresh() override;
    bool apply() final;
};

} // namespace ormalux
