#include "tools/PointGaugeTool.h"

#include "image/VisionImage.h"
#include "measure/LineWalk.h"
#include "measure/PointGauge.h"
#include "tools/Program.h"
#include "tools/Script.h"

#include <QJsonArray>

namespace ormalux {

const char* EdgeChoice::name() const
{
    return polarity == BLACK_AND_WHITE ? "BLACK_AND_WHITE" : "WHITE_AND_BLACK";
}

const char* EdgeChoice::recipeName() const
{
    return polarity == BLACK_AND_WHITE ? "dark-bright" : "bright-dark";
}

QJsonValue EdgeChoice::recipeThreshold() const
{
    return automatic ? QJsonValue(QStringLiteral("auto")) : QJsonValue(level);
}

PointGaugeTool::Found PointGaugeTool::run(const CKestImage& picture) const
{
    Found found;
    if (picture.IsEmpty())
        return found;
    const GaugeLine line = gaugeLine(picture.view(), from.x, from.y, to.x, to.y);
    found.from = line.from;
    found.to = line.to;
    found.threshold = edge.automatic ? edgeThreshold(picture.view(), line.from, line.to) : edge.level;
    picture.GetPointGauge(from.x, from.y, to.x, to.y, edge.polarity, found.threshold, found.edges);
    for (int i = 0; i < found.edges.GetCount(); ++i)
        if (found.best < 0 || found.edges[i].parameter >= found.edges[found.best].parameter)
            found.best = i;
    return found;
}

ResultList PointGaugeTool::Found::list() const
{
    ResultList list{{"number", "x", "y", "level", "contrast"}, {}};
    for (const _stPixel& pixel : edges.records())
        list.rows.push_back({{(long long)(list.rows.size() + 1), (long long)pixel.x, (long long)pixel.y,
                              (long long)pixel.gray_level, (long long)pixel.parameter},
                             CRect(pixel.x, pixel.y, pixel.x, pixel.y)});
    return list;
}

std::vector<PointGaugeTool::Sample> PointGaugeTool::profile(const CKestImage& picture) const
{
    std::vector<Sample> samples;
    if (picture.IsEmpty())
        return samples;
    const ConstGrayView view = picture.view();
    const GaugeLine line = gaugeLine(view, from.x, from.y, to.x, to.y);
    const LineWalk walk(line.from, line.to);
    walk.visit({0, walk.count()}, [&](std::int64_t x, std::int64_t y) {
        if (x < view.width && y < view.height)
            samples.push_back({{LONG(x), LONG(y)}, view.row(int(y))[x]});
    });
    return samples;
}

CString PointGaugeTool::script(const ToolScene& scene) const
{
    const int x1 = from.x, y1 = from.y, x2 = to.x, y2 = to.y;
    const std::string name = edge.name();
    return toolScript(ScriptTemplate::PointGauge, scene.width, scene.height,
                      {x1, y1,   x2, y2, name, x1, y1,   x2, y2, x1, y1, x2,
                       y2, name, x1, y1, x2,   y2, name, x1, y1, x2, y2, name});
}

CString PointGaugeTool::program(const ToolScene& scene) const
{
    const CString level = edge.automatic ? CString() : std::to_string(edge.level) + ", ";
    return completeProgram(scene, "    CPixelArray edges;\n    image.GetPointGauge(" +
                                      areaArguments({from.x, from.y, to.x, to.y}) + ", " + edge.name() +
                                      ", " + level +
                                      "edges);\n"
                                      "    std::printf(\"number,x,y,level,contrast\\n\");\n"
                                      "    for (int i = 0; i < edges.GetCount(); ++i)\n"
                                      "        std::printf(\"%d,%d,%d,%d,%.0f\\n\", i + 1, int(edges[i].x), "
                                      "int(edges[i].y), int(edges[i].gray_level),\n"
                                      "                    edges[i].parameter);\n");
}

QList<QJsonObject> PointGaugeTool::recipeSteps(const ToolScene&) const
{
    return {{{"step", "gauge-point"},
             {"line", QJsonArray{int(from.x), int(from.y), int(to.x), int(to.y)}},
             {"polarity", edge.recipeName()},
             {"threshold", edge.recipeThreshold()}}};
}

} // namespace ormalux
