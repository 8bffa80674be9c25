#include "measure/LineGauge.h"
#include "measure/PointGauge.h"
#include "steps/BindContext.h"
#include "steps/Step.h"
#include "steps/Work.h"

#include <algorithm>
#include <cmath>

namespace ormalux {

namespace {

int nearest(double value)
{
    return int(std::floor(std::clamp(value, -2147483647.0, 2147483647.0) + 0.5));
}

int polarityOf(const Arguments& a)
{
    return a.is("polarity", "dark-bright") ? BLACK_AND_WHITE : WHITE_AND_BLACK;
}

std::unique_ptr<Operation> gaugePoints(const Arguments& a, BindContext&)
{
    return operation([line = a.numbers("line"), polarity = polarityOf(a),
                      choice = a.threshold("threshold")](Work& work, Findings& found) {
        const auto from = work.placed(line[0], line[1]), to = work.placed(line[2], line[3]);
        const int x1 = nearest(from.x), y1 = nearest(from.y), x2 = nearest(to.x), y2 = nearest(to.y);
        CPixelArray edges;
        if (choice.automatic)
            work.gray().GetPointGauge(x1, y1, x2, y2, polarity, edges);
        else
            work.gray().GetPointGauge(x1, y1, x2, y2, polarity, choice.low, edges);
        found.addTrace({Trace::Kind::Line, double(x1), double(y1), double(x2), double(y2)});
        for (const _stPixel& edge : edges.records()) {
            found.addRow(Place::point(edge.x, edge.y));
            found.add(std::int64_t(found.rows()));
            found.add(std::int64_t(edge.x));
            found.add(std::int64_t(edge.y));
            found.add(std::int64_t(edge.gray_level));
            found.add(double(edge.parameter));
        }
    });
}

/// The corners of an upright box in the picture: its middle moves with the frame, its sides do not turn.
RECT placedBox(const Work& work, const std::vector<double>& box)
{
    const RECT corners{nearest(std::min(box[0], box[2])), nearest(std::min(box[1], box[3])),
                       nearest(std::max(box[0], box[2])), nearest(std::max(box[1], box[3]))};
    return work.frame ? work.frame->map(corners) : corners;
}

struct EdgeInBox
{
    std::vector<double> box;
    int polarity;
    bool horizontal;
    int step;
    int bands;
    ThresholdChoice choice;

    void operator()(Work& work, Findings& found) const
    {
        const RECT area = placedBox(work, box);
        const ConstGrayView view = work.gray().view();
        const int level = choice.automatic
                              ? edgeThreshold(view, {area.left, area.top}, {area.right, area.bottom})
                              : choice.low;
        // Steps start anew in every band: a number of bands of the step's own gives the same on every
        // machine.
        const LineGaugeTask task{area, polarity, horizontal, step, level, bands};
        found.addTrace({Trace::Kind::Rectangle, double(area.left), double(area.top), double(area.right),
                        double(area.bottom)});
        LineFit fit{};
        // A box without lines to pair gives no angle.
        if (!fitEdgeLine(view, task, fit) || std::isnan(fit.angle))
            return;
        Place place{Place::Kind::Line, double(fit.center.x), double(fit.center.y)};
        place.x1 = fit.first.x;
        place.y1 = fit.first.y;
        place.x2 = fit.second.x;
        place.y2 = fit.second.y;
        place.angle = fit.angle;
        found.addRow(place);
        for (const LONG value :
             {fit.first.x, fit.first.y, fit.second.x, fit.second.y, fit.center.x, fit.center.y})
            found.add(value);
        found.add(fit.angle);
    }
};

std::unique_ptr<Operation> gaugeLine(const Arguments& a, BindContext&)
{
    return operation(EdgeInBox{a.numbers("box"), polarityOf(a), a.is("direction", "horizontal"),
                               a.integer("spacing"), a.integer("bands"), a.threshold("threshold")});
}

} // namespace

std::vector<Step> gaugeSteps()
{
    const Parameter polarity = choice("polarity", {"dark-bright", "bright-dark"},
                                      "The change looked for, left to right or top to bottom", "dark-bright");
    const Parameter threshold{"threshold", Kind::Level, "auto", "auto or a level 1..255"};
    const auto position = [](const char* name, bool x) {
        return Column{name, CellType::Integer, x ? Quantity::X : Quantity::Y};
    };
    Step point;
    point.name = "gauge-point";
    point.help = "List the edges along a line";
    point.measures = true;
    point.parameters = {{"line", Kind::Corners, "", "The line x1,y1,x2,y2"}, polarity, threshold};
    point.list = "edges";
    point.facts = {{"count", CellType::Integer}};
    point.columns = {{"number", CellType::Integer},
                     position("x", true),
                     position("y", false),
                     {"level", CellType::Integer},
                     {"contrast", CellType::Real}};
    point.look = Look::Cross;
    point.color = RGB(255, 0, 200);
    point.make = gaugePoints;

    Step line;
    line.name = "gauge-line";
    line.help = "Measure a straight edge inside a box";
    line.measures = true;
    line.parameters = {
        {"box", Kind::Corners, "", "The box x1,y1,x2,y2"},
        polarity,
        choice("direction", {"vertical", "horizontal"}, "How the edge runs, roughly", "vertical"),
        wholeNumber("spacing", 1, 10000, "Columns between scan lines of a horizontal edge", "1"),
        wholeNumber(
            "bands", 1, 4096,
            "Parts of a horizontal edge that each step anew; the library takes one for each processor", "1"),
        threshold};
    line.list = "lines";
    line.facts = {{"count", CellType::Integer}};
    line.columns = {position("x1", true),     position("y1", false),      position("x2", true),
                    position("y2", false),    position("center_x", true), position("center_y", false),
                    {"angle", CellType::Real}};
    line.look = Look::Line;
    line.color = RGB(255, 0, 200);
    line.make = gaugeLine;
    return {point, line};
}

} // namespace ormalux
