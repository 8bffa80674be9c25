#include "tools/UserFilterTool.h"

#include "image/VisionImage.h"
#include "tools/Script.h"

#include <QJsonArray>
#include <QtGlobal>

#include <algorithm>

namespace ormalux {

namespace {

// The named ones compute what the operations of their names do.
constexpr KernelPreset presets[] = {
    {QT_TRANSLATE_NOOP("ormalux::KernelPreset", "Identity"), {0, 0, 0, 0, 1, 0, 0, 0, 0}, 1, 0},
    {QT_TRANSLATE_NOOP("ormalux::KernelPreset", "Blur"), {1, 1, 1, 1, 1, 1, 1, 1, 1}, 9, 0},
    {QT_TRANSLATE_NOOP("ormalux::KernelPreset", "Soften"), {1, 1, 1, 1, 8, 1, 1, 1, 1}, 16, 0},
    {QT_TRANSLATE_NOOP("ormalux::KernelPreset", "Gassian 3x3"), {1, 2, 1, 2, 4, 2, 1, 2, 1}, 16, 0},
    {QT_TRANSLATE_NOOP("ormalux::KernelPreset", "Sharpen"), {-1, -1, -1, -1, 15, -1, -1, -1, -1}, 7, 0},
    {QT_TRANSLATE_NOOP("ormalux::KernelPreset", "Emboss"), {0, 0, 1, 0, 0, 0, -1, 0, 0}, 1, 127},
    {QT_TRANSLATE_NOOP("ormalux::KernelPreset", "Edge"), {1, 1, 1, 1, -8, 1, 1, 1, 1}, 1, 255},
    {QT_TRANSLATE_NOOP("ormalux::KernelPreset", "Laplacian"), {1, 1, 1, 1, -8, 1, 1, 1, 1}, 1, 0},
    {QT_TRANSLATE_NOOP("ormalux::KernelPreset", "Sobel, horizontal"), {-1, 0, 1, -2, 0, 2, -1, 0, 1}, 8, 128},
    {QT_TRANSLATE_NOOP("ormalux::KernelPreset", "Sobel, vertical"), {-1, -2, -1, 0, 0, 0, 1, 2, 1}, 8, 128},
};

std::string entries(const UserFilterTool::Kernel& kernel)
{
    std::string text;
    for (const int entry : kernel)
        text += (text.empty() ? "" : ", ") + std::to_string(entry);
    return text;
}

} // namespace

std::span<const KernelPreset> kernelPresets()
{
    return presets;
}

CString UserFilterTool::script(const ToolScene& scene) const
{
    const CRect& a = scene.area;
    const Kernel& k = kernel;
    return toolScript(ScriptTemplate::UserFilter, scene.width, scene.height,
                      {int(a.left), int(a.top), int(a.right), int(a.bottom), k[0], k[1], k[2], k[3], k[4],
                       k[5], k[6], k[7], k[8], 3, divisor, offset});
}

void UserFilterTool::change(CKestImage& image) const
{
    long weights[9];
    std::copy(kernel.begin(), kernel.end(), weights);
    image.Filter(weights, 3, divisor, offset, threaded ? 1 : 0);
}

std::string UserFilterTool::call() const
{
    return "    long kernel[] = {" + entries(kernel) + "};\n    image.Filter(kernel, 3, " +
           std::to_string(divisor) + ", " + std::to_string(offset) + ", " + (threaded ? "1" : "0") + ");\n";
}

QJsonObject UserFilterTool::step() const
{
    QJsonArray weights;
    for (const int entry : kernel)
        weights.append(entry);
    return {{"step", "filter"}, {"kernel", weights}, {"divisor", divisor}, {"offset", offset}};
}

} // namespace ormalux
