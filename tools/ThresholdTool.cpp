#include "tools/ThresholdTool.h"

#include "image/VisionImage.h"
#include "steps/AreaEdit.h"
#include "tools/Program.h"
#include "tools/Script.h"

namespace ormalux {

int ThresholdTool::run(const CKestImage& picture, const RECT& area) const
{
    return automatic ? int(picture.GetAutoThreshold(area.left, area.top, area.right, area.bottom, 'A', step))
                     : level;
}

void ThresholdTool::effect(CKestImage& picture, const RECT& area, int level)
{
    editArea(picture, area, [level](CKestImage& part) { part.Threshold(level); });
}

CString ThresholdTool::script(const ToolScene& scene) const
{
    const CRect& a = scene.area;
    return toolScript(ScriptTemplate::Threshold, scene.width, scene.height,
                      {int(a.left), int(a.top), int(a.right), int(a.bottom), step});
}

CString ThresholdTool::program(const ToolScene& scene) const
{
    const CString found = automatic ? "image.GetAutoThreshold(" + areaArguments(scene.area) + ", 'A', " +
                                          std::to_string(step) + ")"
                                    : std::to_string(level) + "L";
    return completeProgram(scene, "    const long threshold = " + found +
                                      ";\n    std::printf(\"threshold\\n%ld\\n\", threshold);\n");
}

QList<QJsonObject> ThresholdTool::recipeSteps(const ToolScene& scene) const
{
    QJsonObject stepOf{{"step", "threshold"}};
    if (automatic)
        stepOf["threshold"] = "auto";
    if (automatic && step != 1)
        stepOf["auto_step"] = step;
    if (!automatic)
        stepOf["threshold"] = level;
    addArea(stepOf, scene);
    return {stepOf};
}

} // namespace ormalux
