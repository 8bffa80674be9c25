#pragma once

#include "tools/EffectTool.h"

namespace ormalux {

/// The levels between two bounds become one level, all others the opposite extreme.
struct DoubleThresholdTool : EffectTool
{
    int upper = 200;
    int lower = 100;
    int value = 255;

    CString script(const ToolScene& scene) const override;
    ColorUse colorUse() const override { return ColorUse::None; }
    bool overArea() const override { return false; }

protected:
    void change(CKestImage& image) const override;
    std::string call() const override;
    QJsonObject step() const override;
};

} // namespace ormalux
