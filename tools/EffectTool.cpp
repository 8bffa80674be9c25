#include "tools/EffectTool.h"

#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "steps/AreaEdit.h"

#include "tools/Program.h"

namespace ormalux {

void EffectTool::run(CKestImage& picture, const RECT& area) const
{
    const CRect whole(0, 0, picture.GetWidth() - 1, picture.GetHeight() - 1);
    editArea(picture, overArea() ? CRect(area) : whole, [this](CKestImage& image) { change(image); });
}

void EffectTool::run(CKestImage24& picture, const RECT& area) const
{
    const CRect whole(0, 0, picture.GetWidth() - 1, picture.GetHeight() - 1);
    const auto operation = [this](CKestImage24& image) {
        if (colorUse() == ColorUse::Channels)
            editChannels(image, [this](CKestImage& channel) { change(channel); });
        else
            change(image);
    };
    editArea(picture, colorRows(), overArea() ? CRect(area) : whole, operation, colorRows());
}

/// The scene with the area that the effect is run on.
ToolScene EffectTool::placed(ToolScene scene) const
{
    if (!overArea())
        scene.area = CRect(0, 0, scene.width - 1, scene.height - 1);
    return scene;
}

CString EffectTool::program(const ToolScene& scene) const
{
    return effectProgram(placed(scene), colorUse(), call());
}

QList<QJsonObject> EffectTool::recipeSteps(const ToolScene& scene) const
{
    QJsonObject made = step();
    if (scene.color && colorUse() != ColorUse::None)
        made[QStringLiteral("on")] = QStringLiteral("color");
    addArea(made, placed(scene));
    return {made};
}

} // namespace ormalux
