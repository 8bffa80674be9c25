#include "tools/LightTool.h"

#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "tools/Script.h"

namespace ormalux {

CString LightTool::script(const ToolScene& scene) const
{
    const CRect& a = scene.area;
    return toolScript(ScriptTemplate::Light, scene.width, scene.height,
                      {int(a.left), int(a.top), int(a.right), int(a.bottom), brightness, contrast});
}

void LightTool::change(CKestImage& image) const
{
    image.Light(brightness, contrast);
}

void LightTool::change(CKestImage24& image) const
{
    image.Light(brightness, contrast);
}

std::string LightTool::call() const
{
    return "    image.Light(" + std::to_string(brightness) + ", " + std::to_string(contrast) + ");\n";
}

QJsonObject LightTool::step() const
{
    return {{"step", "light"}, {"brightness", brightness}, {"contrast", contrast}};
}

} // namespace ormalux
