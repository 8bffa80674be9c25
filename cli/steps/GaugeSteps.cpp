#include "cli/Step.h"
#include "measure/LineGauge.h"
#include "measure/PointGauge.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ormalux::cli {

namespace {

constexpr COLORREF scanColor = RGB(255, 200, 0);
constexpr COLORREF edgeColor = RGB(255, 0, 200);

int polarityOf(const Json& arguments)
{
    return arguments.at("polarity").get<std::string>() == "dark-bright" ? BLACK_AND_WHITE : WHITE_AND_BLACK;
}

void gaugePoints(Workpiece& work, const Json& arguments)
{
    const Json& line = arguments.at("line");
    const int x1 = line[0], y1 = line[1], x2 = line[2], y2 = line[3];
    const ThresholdChoice choice = parseThreshold(arguments.at("threshold").get<std::string>());
    CPixelArray edges;
    if (choice.automatic)
        work.image.GetPointGauge(x1, y1, x2, y2, polarityOf(arguments), edges);
    else
        work.image.GetPointGauge(x1, y1, x2, y2, polarityOf(arguments), choice.low, edges);

    Findings findings{work.file, {{"count", edges.GetCount()}}, "edges", {}};
    work.shapes.AddLine(x1, y1, x2, y2, 0, 1, scanColor, "gauge");
    for (const _stPixel& edge : edges.records()) {
        findings.records.push_back({{"number", findings.records.size() + 1},
                                    {"x", edge.x},
                                    {"y", edge.y},
                                    {"level", edge.gray_level},
                                    {"contrast", edge.parameter}});
        work.shapes.AddCrossLine(edge.x, edge.y, 4, 0, 1, edgeColor, "gauge");
    }
    work.findings.push_back(std::move(findings));
}

void gaugeLine(Workpiece& work, const Json& arguments)
{
    const Json& box = arguments.at("box");
    const int x1 = box[0], y1 = box[1], x2 = box[2], y2 = box[3];
    const int direction = arguments.at("direction").get<std::string>() == "vertical" ? DIRECTION_VERTICAL
                                                                                     : DIRECTION_HORIZENTAL;
    const int step = arguments.at("spacing").get<int>();
    const ThresholdChoice choice = parseThreshold(arguments.at("threshold").get<std::string>());
    const ConstGrayView view = std::as_const(work.image).view();
    // Steps start anew in every band: a number of bands of the step's own gives the same on every machine.
    const LineGaugeTask task{{std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)},
                             polarityOf(arguments),
                             direction == DIRECTION_HORIZENTAL,
                             step,
                             choice.automatic ? edgeThreshold(view, {x1, y1}, {x2, y2}) : choice.low,
                             arguments.at("bands").get<int>()};
    LineFit result{};
    // A box without lines to pair gives no angle.
    const int found = fitEdgeLine(view, task, result) && !std::isnan(result.angle);
    Findings findings{work.file, {{"count", found}}, "lines", {}};
    work.shapes.AddRectangle(x1, y1, x2, y2, 2, 1, scanColor, "gauge");
    if (found) {
        findings.records.push_back({{"x1", result.first.x},
                                    {"y1", result.first.y},
                                    {"x2", result.second.x},
                                    {"y2", result.second.y},
                                    {"center_x", result.center.x},
                                    {"center_y", result.center.y},
                                    {"angle", result.angle}});
        work.shapes.AddLine(result.first.x, result.first.y, result.second.x, result.second.y, 0, 2, edgeColor,
                            "gauge");
        work.shapes.AddCrossLine(result.center.x, result.center.y, 5, 0, 1, edgeColor, "gauge");
    }
    work.findings.push_back(std::move(findings));
}

} // namespace

std::vector<Step> gaugeSteps()
{
    const Parameter polarity{"polarity",
                             Kind::Choice,
                             "dark-bright",
                             "The change looked for, left to right or top to bottom",
                             0,
                             0,
                             {"dark-bright", "bright-dark"}};
    const Parameter threshold{"threshold", Kind::Level, "auto", "auto or a level 1..255"};
    return {{"gauge-point",
             "List the edges along a line",
             true,
             {{"line", Kind::Region, nullptr, "The line x1,y1,x2,y2"}, polarity, threshold},
             gaugePoints},
            {"gauge-line",
             "Measure a straight edge inside a box",
             true,
             {{"box", Kind::Region, nullptr, "The box x1,y1,x2,y2"},
              polarity,
              {"direction",
               Kind::Choice,
               "vertical",
               "How the edge runs, roughly",
               0,
               0,
               {"vertical", "horizontal"}},
              {"spacing", Kind::Integer, 1, "Columns between scan lines of a horizontal edge", 1, 10000},
              {"bands", Kind::Integer, 1,
               "Parts of a horizontal edge that each step anew; the library takes one a processor", 1, 4096},
              threshold},
             gaugeLine}};
}

} // namespace ormalux::cli
