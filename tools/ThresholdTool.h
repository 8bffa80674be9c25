#pragma once

#include "tools/Tool.h"

namespace ormalux {

/// Black and white at a level, given or found automatically over the area.
struct ThresholdTool : Tool
{
    bool automatic = true;
    int level = 128;
    int step = 1; ///< every step-th row and column is looked at for the automatic level

    /// The automatic level of the area, 0 when it has no edge; else the level given.
    int run(const CKestImage& picture, const RECT& area) const;
    /// Makes the area black and white.
    static void effect(CKestImage& picture, const RECT& area, int level);

    CString script(const ToolScene& scene) const override;
    CString program(const ToolScene& scene) const override;
    QList<QJsonObject> recipeSteps(const ToolScene& scene) const override;
};

} // namespace ormalux
