#pragma once

#include "tools/EffectTool.h"

namespace ormalux {

/// The picture turned clockwise about a point.
struct RotateTool : EffectTool
{
    int centerX = 0;
    int centerY = 0;
    double angle = 0; ///< degrees
    int fill = 0;     ///< handed to the call, which makes nothing of it

    CString script(const ToolScene& scene) const override;
    ColorUse colorUse() const override { return ColorUse::Padded; }
    bool overArea() const override { return false; }

protected:
    void change(CKestImage& image) const override;
    void change(CKestImage24& image) const override;
    std::string call() const override;
    QJsonObject step() const override;
};

} // namespace ormalux
