#pragma once

#include "tools/EffectTool.h"

#include <array>
#include <span>

namespace ormalux {

/// The area correlated with a kernel of 3 x 3.
struct UserFilterTool : EffectTool
{
    using Kernel = std::array<int, 9>; ///< row by row

    Kernel kernel{0, 0, 0, 0, 1, 0, 0, 0, 0};
    int divisor = 1; ///< 0 leaves the sum
    int offset = 0;
    bool threaded = true;

    CString script(const ToolScene& scene) const override;
    ColorUse colorUse() const override { return ColorUse::Channels; }

protected:
    void change(CKestImage& image) const override;
    std::string call() const override;
    QJsonObject step() const override;
};

/// A kernel to begin with.
struct KernelPreset
{
    const char* name; ///< to be translated
    UserFilterTool::Kernel kernel;
    int divisor;
    int offset;
};

std::span<const KernelPreset> kernelPresets();

} // namespace ormalux
