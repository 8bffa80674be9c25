#include "tools/DoubleThresholdTool.h"

#include "image/VisionImage.h"
#include "tools/Script.h"

namespace ormalux {

CString DoubleThresholdTool::script(const ToolScene& scene) const
{
    return toolScript(ScriptTemplate::DoubleThreshold, scene.width, scene.height, {upper, lower, value});
}

void DoubleThresholdTool::change(CKestImage& image) const
{
    image.DoubleThreshold(upper, lower, static_cast<unsigned char>(value));
}

std::string DoubleThresholdTool::call() const
{
    return "    image.DoubleThreshold(" + std::to_string(upper) + ", " + std::to_string(lower) + ", " +
           std::to_string(value) + ");\n";
}

QJsonObject DoubleThresholdTool::step() const
{
    return {{"step", "threshold"},
            {"threshold", QStringLiteral("%1..%2").arg(lower).arg(upper)},
            {"value", value}};
}

} // namespace ormalux
