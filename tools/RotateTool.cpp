#include "tools/RotateTool.h"

#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "tools/Script.h"

#include <QJsonArray>

namespace ormalux {

CString RotateTool::script(const ToolScene& scene) const
{
    return toolScript(ScriptTemplate::Rotate, scene.width, scene.height, {centerX, centerY, angle, fill});
}

void RotateTool::change(CKestImage& image) const
{
    image.Rotate(centerX, centerY, angle, static_cast<unsigned char>(fill));
}

void RotateTool::change(CKestImage24& image) const
{
    image.Rotate(centerX, centerY, angle, static_cast<unsigned char>(fill));
}

std::string RotateTool::call() const
{
    return "    image.Rotate(" + std::to_string(centerX) + ", " + std::to_string(centerY) + ", " +
           resultText(angle) + ", " + std::to_string(fill) + ");\n";
}

QJsonObject RotateTool::step() const
{
    return {{"step", "rotate"}, {"angle", angle}, {"center", QJsonArray{centerX, centerY}}};
}

} // namespace ormalux
