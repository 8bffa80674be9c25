#include "tools/LineGaugeTool.h"

#include "image/VisionImage.h"
#include "image/WorkPool.h"
#include "measure/EdgeTable.h"
#include "measure/PointGauge.h"
#include "tools/Program.h"
#include "tools/Script.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

namespace ormalux {

bool LineGaugeTool::horizontal() const
{
    return direction == DIRECTION_HORIZENTAL;
}

const char* LineGaugeTool::directionName() const
{
    return horizontal() ? "DIRECTION_HORIZENTAL" : "DIRECTION_VERTICAL";
}

LineGaugeTool::Found LineGaugeTool::run(const CKestImage& picture, const RECT& area) const
{
    Found found;
    found.threshold = edge.automatic
                          ? edgeThreshold(picture.view(), {area.left, area.top}, {area.right, area.bottom})
                          : edge.level;
    _stLineGaugeResult result{};
    const bool some = picture.GetLineGauge(area.left, area.top, area.right, area.bottom, edge.polarity,
                                           direction, step, found.threshold, result);
    if (!some || std::isnan(result.angle)) // an area without two lines to pair has no angle
        return found;
    found.measured = true;
    found.first = {result.x1, result.y1};
    found.second = {result.x2, result.y2};
    found.center = {result.center_x, result.center_y};
    found.angle = result.angle;
    return found;
}

ResultList LineGaugeTool::Found::list() const
{
    ResultList list{{"x1", "y1", "x2", "y2", "center_x", "center_y", "angle"}, {}};
    if (measured)
        list.rows.push_back({{(long long)first.x, (long long)first.y, (long long)second.x,
                              (long long)second.y, (long long)center.x, (long long)center.y, angle},
                             CRect(std::min(first.x, second.x), std::min(first.y, second.y),
                                   std::max(first.x, second.x), std::max(first.y, second.y))});
    return list;
}

std::vector<LineGaugeTool::ScanLine> LineGaugeTool::scanLines(const CKestImage& picture, const RECT& area,
                                                              int threshold) const
{
    std::vector<ScanLine> lines;
    const ConstGrayView view = picture.view();
    if (view.empty())
        return lines;
    EdgeTable table(view, {area, edge.polarity, horizontal(), step, threshold});
    if (!table.valid())
        return lines;
    table.measureAll();
    const int first = horizontal() ? area.left : area.top;
    const int extent = (horizontal() ? area.right : area.bottom) - first;
    const int twiceCenter = 2 * (first + extent / 2);
    const auto scan = [&](int at) {
        return horizontal() ? gaugeLine(view, at, area.top, at, area.bottom)
                            : gaugeLine(view, area.left, at, area.right, at);
    };
    for (int i = 0; i < bandCount(); ++i) {
        const Band band = bandOf(i, bandCount(), extent);
        for (int at = first + int(band.first); at < first + band.end;) {
            const GaugeLine walked = scan(at);
            ScanLine line{walked.from, walked.to, false, false, {}};
            POINT mirrored;
            line.hasEdge = table.find(at, line.edge);
            line.used = line.hasEdge && table.find(twiceCenter - at, mirrored);
            lines.push_back(line);
            at += line.used && horizontal() ? std::max(step, 1) : 1;
        }
    }
    return lines;
}

CString LineGaugeTool::script(const ToolScene& scene) const
{
    const int left = scene.area.left, top = scene.area.top;
    const int right = scene.area.right, bottom = scene.area.bottom;
    const std::string polarity = edge.name(), run = directionName();
    return toolScript(ScriptTemplate::LineGauge, scene.width, scene.height,
                      {left, top, right, bottom, polarity, run, step, left, top, right, bottom, left, top,
                       right, bottom, polarity, run, step});
}

CString LineGaugeTool::program(const ToolScene& scene) const
{
    const CString level = edge.automatic ? CString() : std::to_string(edge.level) + ", ";
    return completeProgram(
        scene, "    _stLineGaugeResult line;\n    const int found = image.GetLineGauge(" +
                   areaArguments(scene.area) + ", " + edge.name() + ", " + directionName() + ", " +
                   std::to_string(step) + ", " + level +
                   "line);\n"
                   "    std::printf(\"x1,y1,x2,y2,center_x,center_y,angle\\n\");\n"
                   "    if (found && line.angle == line.angle) // an area one pixel wide has no angle\n"
                   "        std::printf(\"%d,%d,%d,%d,%d,%d,%f\\n\", int(line.x1), int(line.y1), "
                   "int(line.x2), int(line.y2),\n"
                   "                    int(line.center_x), int(line.center_y), line.angle);\n");
}

QList<QJsonObject> LineGaugeTool::recipeSteps(const ToolScene& scene) const
{
    const CRect& area = scene.area;
    QJsonObject object{{"step", "gauge-line"},
                       {"box", QJsonArray{int(area.left), int(area.top), int(area.right), int(area.bottom)}},
                       {"polarity", edge.recipeName()},
                       {"direction", horizontal() ? "horizontal" : "vertical"},
                       {"threshold", edge.recipeThreshold()}};
    if (horizontal() && step > 1) {
        object["spacing"] = step; // "step" names the operation
        object["bands"] = bandCount();
    }
    return {object};
}

} // namespace ormalux
