#include "tools/MatchTool.h"

#include "image/VisionImage.h"
#include "tools/Program.h"
#include "tools/Script.h"
#include "tools/SourceFile.h"
#include "tools/ThresholdTool.h"

#include <QJsonArray>

#include <algorithm>

namespace ormalux {

float yieldOf(const _stMatchResult& result)
{
    return (result.white_yield + result.black_yield) * 0.5f;
}

std::vector<std::string> MatchTool::first() const
{
    return {sources.begin(), sources.begin() + (sources.empty() ? 0 : 1)};
}

int MatchTool::levelOf(const CKestImage& picture, const RECT& area) const
{
    ThresholdTool threshold;
    threshold.automatic = automatic;
    threshold.level = level;
    return threshold.run(picture, area);
}

MatchTool::Found MatchTool::run(const CKestImage& picture, const RECT& area) const
{
    LoadedSources loaded = loadSources(first());
    Found found;
    found.refused = std::move(loaded.refused);
    if (loaded.sources.GetCount() == 0)
        return found; // the library would look for an empty one
    CMatchResultArray results;
    const int count =
        range ? picture.MatchThresholdRange(area.left, area.top, area.right, area.bottom, level - below,
                                            level + above, loaded.sources, results)
              : picture.Match(area.left, area.top, area.right, area.bottom, level, loaded.sources, results);
    results.SortYieldAverage();
    if (count > 0)
        found.best = results[count - 1];
    found.number = range ? count - 1 : count;
    return found;
}

ResultList MatchTool::list(const Found& found, const RECT& area)
{
    ResultList list;
    list.columns = {"No.", "left", "top", "right", "bottom", "right-left", "bottom-top", "yield"};
    if (found.best) {
        const _stMatchResult& r = *found.best;
        using Whole = long long;
        list.rows.push_back(
            {{Whole(found.number), Whole(r.left), Whole(r.top), Whole(r.right), Whole(r.bottom),
              Whole(r.right) - r.left, Whole(r.bottom) - r.top, double(yieldOf(r))},
             CRect(r.left + area.left, r.top + area.top, r.right + area.left, r.bottom + area.top)});
    }
    return list;
}

CString MatchTool::script(const ToolScene& scene) const
{
    const CRect& a = scene.area;
    return toolScript(
        ScriptTemplate::Match, scene.width, scene.height,
        {scriptSourceLines(first()), int(a.left), int(a.top), int(a.right), int(a.bottom), level});
}

CString MatchTool::program(const ToolScene& scene) const
{
    const CString levels =
        range ? std::to_string(level - below) + ", " + std::to_string(level + above) : std::to_string(level);
    CString body = programSourceLines(first());
    body += "    CMatchResultArray results;\n    if (sources.GetCount() > 0)\n        image.";
    body += range ? "MatchThresholdRange(" : "Match(";
    body += areaArguments(scene.area) + ", " + levels + ", sources, results);\n";
    body += R"(    results.SortYieldAverage();
    std::printf("No.,left,top,right,bottom,right-left,bottom-top,yield\n");
    const int count = results.GetCount();
    if (count > 0) {
        const _stMatchResult& r = results[count - 1];
        std::printf("%d,%d,%d,%d,%d,%d,%d,%f\n", count)";
    body += range ? " - 1" : "";
    body += R"(, int(r.left), int(r.top), int(r.right), int(r.bottom),
                    int(r.right - r.left), int(r.bottom - r.top), double((r.white_yield + r.black_yield) * 0.5f));
    }
)";
    return completeProgram(scene, body);
}

QList<QJsonObject> MatchTool::recipeSteps(const ToolScene& scene) const
{
    if (sources.empty())
        return {};
    // Levels beyond 0 and 255 find what those find.
    const int low = std::clamp(level - below, 0, 255);
    const int high = std::clamp(level + above, 0, 255);
    QJsonObject step{{"step", "match"},
                     {"source", QJsonArray{QString::fromStdString(sources.front())}},
                     {"best", 1},
                     {"ties", "last"}};
    if (range) {
        step["threshold"] = QStringLiteral("%1..%2").arg(low).arg(high);
        step["list"] = "thresholds";
    } else if (automatic && level > 0) {
        step["threshold"] = "auto";
    } else {
        step["threshold"] = level;
    }
    addArea(step, scene);
    return {step};
}

} // namespace ormalux
