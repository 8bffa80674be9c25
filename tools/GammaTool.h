#pragma once

#include "tools/EffectTool.h"

namespace ormalux {

/// The levels of the area bent by a power.
struct GammaTool : EffectTool
{
    double gamma = 1;

    CString script(const ToolScene& scene) const override;
    ColorUse colorUse() const override { return ColorUse::Unpadded; }

protected:
    void change(CKestImage& image) const override;
    void change(CKestImage24& image) const override;
    std::string call() const override;
    QJsonObject step() const override;
};

} // namespace ormalux
