#pragma once

#include "tools/EffectTool.h"

namespace ormalux {

/// The brightness and the contrast of the area.
struct LightTool : EffectTool
{
    int brightness = 0; ///< -255 to 255
    int contrast = 0;   ///< -100 to 100

    CString script(const ToolScene& scene) const override;
    ColorUse colorUse() const override { return ColorUse::Unpadded; }

protected:
    void change(CKestImage& image) const override;
    void change(CKestImage24& image) const override;
    std::string call() const override;
    QJsonObject step() const override;
};

} // namespace ormalux
