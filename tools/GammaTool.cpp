#include "tools/GammaTool.h"

#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "tools/Script.h"

namespace ormalux {

CString GammaTool::script(const ToolScene& scene) const
{
    const CRect& a = scene.area;
    return toolScript(ScriptTemplate::Gamma, scene.width, scene.height,
                      {int(a.left), int(a.top), int(a.right), int(a.bottom), gamma});
}

void GammaTool::change(CKestImage& image) const
{
    image.Gamma(float(gamma));
}

void GammaTool::change(CKestImage24& image) const
{
    image.Gamma(float(gamma));
}

std::string GammaTool::call() const
{
    return "    image.Gamma(" + resultText(gamma) + "f);\n";
}

QJsonObject GammaTool::step() const
{
    return {{"step", "gamma"}, {"gamma", gamma}};
}

} // namespace ormalux
