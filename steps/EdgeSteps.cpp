#include "measure/RobustCircle.h"
#include "measure/RobustLine.h"
#include "measure/SubpixelEdges.h"
#include "steps/BindContext.h"
#include "steps/Step.h"
#include "steps/Work.h"

#include <cmath>

namespace ormalux {

namespace {

constexpr COLORREF edgeColor = RGB(255, 0, 200);

CEdgeSettings settingsOf(const Arguments& a)
{
    CEdgeSettings settings;
    settings.polarity = a.is("polarity", "dark-bright")   ? CEdgePolarity::DarkBright
                        : a.is("polarity", "bright-dark") ? CEdgePolarity::BrightDark
                                                          : CEdgePolarity::Any;
    settings.select = a.is("select", "first")       ? CEdgeSelect::First
                      : a.is("select", "last")      ? CEdgeSelect::Last
                      : a.is("select", "strongest") ? CEdgeSelect::Strongest
                                                    : CEdgeSelect::All;
    settings.contrast = a.real("contrast");
    settings.sigma = a.real("sigma");
    settings.width = a.integer("width");
    return settings;
}

struct EdgeSearch
{
    std::vector<double> line;
    CEdgeSettings settings;

    void operator()(Work& work, Findings& found) const
    {
        const auto from = work.placed(line[0], line[1]), to = work.placed(line[2], line[3]);
        found.addTrace({Trace::Kind::Line, from.x, from.y, to.x, to.y});
        EdgeFinder finder(work.gray().view(), settings);
        for (const CEdgePoint& edge : finder.find({from.x, from.y, to.x, to.y})) {
            Place place = Place::point(edge.x, edge.y);
            place.x1 = from.x;
            place.y1 = from.y;
            found.addRow(place);
            for (const double value : {edge.x, edge.y, edge.position, edge.contrast})
                found.add(value);
            found.add(
                std::string_view(edge.polarity == CEdgePolarity::DarkBright ? "dark-bright" : "bright-dark"));
        }
    }
};

struct LineSearch
{
    std::vector<double> box;
    int scans;
    CEdgeSettings settings;

    void operator()(Work& work, Findings& found) const
    {
        const auto center = work.placed(box[0], box[1]);
        const CEdgeBox area{center.x, center.y, box[2], box[3], box[4] + work.turned(), scans};
        showBox(area, found);
        CEdgeLine line{};
        if (!measureLine(work.gray().view(), area, settings, line))
            return;
        Place place{Place::Kind::Line, line.x, line.y, line.x1, line.y1, line.x2, line.y2, 0, line.angle};
        found.addRow(place);
        for (const double value : {line.x, line.y, line.angle, line.x1, line.y1, line.x2, line.y2, line.rms})
            found.add(value);
        found.add(line.scans);
        found.add(line.used);
    }

private:
    /// The outline of the turned box.
    static void showBox(const CEdgeBox& box, Findings& found)
    {
        const Motion turn(0, 0, box.center_x, box.center_y, box.angle);
        const double x = box.length / 2, y = box.width / 2;
        const Motion::Point corners[] = {turn.map(-x, -y), turn.map(x, -y), turn.map(x, y), turn.map(-x, y)};
        for (int i = 0; i < 4; ++i) {
            const auto &from = corners[i], &to = corners[(i + 1) % 4];
            found.addTrace({Trace::Kind::Line, from.x, from.y, to.x, to.y});
        }
    }
};

struct CircleSearch
{
    std::vector<double> center, radii;
    int scans;
    CEdgeSettings settings;

    void operator()(Work& work, Findings& found) const
    {
        const auto middle = work.placed(center[0], center[1]);
        const CEdgeRing ring{middle.x, middle.y, radii[0], radii[1], scans};
        for (const double radius : radii)
            found.addTrace({Trace::Kind::Circle, middle.x, middle.y, middle.x, middle.y, radius});
        CEdgeCircle circle{};
        if (!measureCircle(work.gray().view(), ring, settings, circle))
            return;
        Place place = Place::point(circle.x, circle.y);
        place.kind = Place::Kind::Circle;
        place.radius = circle.radius;
        found.addRow(place);
        for (const double value : {circle.x, circle.y, circle.radius, circle.rms})
            found.add(value);
        found.add(circle.scans);
        found.add(circle.used);
    }
};

std::vector<Parameter> edgeParameters(const char* polarityHelp, std::vector<std::string> selects)
{
    const std::string fallback = selects.front();
    return {choice("polarity", {"dark-bright", "bright-dark", "any"}, polarityHelp, "any"),
            choice("select", std::move(selects), "Which of the edges on a scan is taken", fallback),
            realNumber("contrast", 0, 255, "The least step between the two sides, in gray levels", "20.0"),
            realNumber("sigma", 0.1, 20, "Smoothing along the scan, in pixels", "1.0"),
            wholeNumber("width", 1, 1000, "Samples averaged across the scan, 1 pixel apart", "1")};
}

Column position(const char* name, bool x)
{
    return {name, CellType::Real, x ? Quantity::X : Quantity::Y};
}

Step edgeStep(const char* name, const char* help, const char* list, Look look)
{
    Step step;
    step.name = name;
    step.help = help;
    step.measures = true;
    step.list = list;
    step.facts = {{"count", CellType::Integer}};
    step.look = look;
    step.color = edgeColor;
    return step;
}

void append(std::vector<Parameter>& to, std::vector<Parameter> more)
{
    to.insert(to.end(), more.begin(), more.end());
}

} // namespace

std::vector<Step> edgeSteps()
{
    Step edges = edgeStep("edges", "List the edges along a line, between the pixels", "edges", Look::Cross);
    edges.parameters = {{"line", Kind::Corners, "", "The line x1,y1,x2,y2, from its first end"}};
    append(edges.parameters, edgeParameters("The change looked for, seen from the first end",
                                            {"all", "first", "last", "strongest"}));
    edges.columns = {position("x", true),
                     position("y", false),
                     {"position", CellType::Real, Quantity::Distance},
                     {"contrast", CellType::Real},
                     {"polarity", CellType::Text}};
    edges.make = [](const Arguments& a, BindContext&) {
        return operation(EdgeSearch{a.numbers("line"), settingsOf(a)});
    };

    Step line =
        edgeStep("line", "Measure a straight edge in a turned box, between the pixels", "lines", Look::Line);
    line.parameters = {
        {"box", Kind::Box, "", "Middle x and y, length along the edge, width across it, angle of the edge"},
        wholeNumber("scans", 3, 10000, "Scans across the edge", "50")};
    append(line.parameters,
           edgeParameters("The change looked for, from the left of the direction to its right",
                          {"strongest", "first", "last"}));
    line.columns = {position("x", true),          position("y", false),
                    {"angle", CellType::Real},    position("x1", true),
                    position("y1", false),        position("x2", true),
                    position("y2", false),        {"rms", CellType::Real, Quantity::Length},
                    {"scans", CellType::Integer}, {"used", CellType::Integer}};
    line.make = [](const Arguments& a, BindContext& context) {
        if (!(a.numbers("box")[2] > 0 && a.numbers("box")[3] > 0))
            context.fault("box", "length and width must be above 0");
        return operation(LineSearch{a.numbers("box"), a.integer("scans"), settingsOf(a)});
    };

    Step circle = edgeStep("circle", "Measure a circular edge, between the pixels", "circles", Look::Circle);
    circle.parameters = {{"center", Kind::Point, "", "Where its middle is, roughly"},
                         {"radii", Kind::Pair, "", "The radii that it lies between", 0, 100000},
                         wholeNumber("scans", 3, 10000, "Rays from the middle", "64")};
    append(circle.parameters,
           edgeParameters("The change looked for, seen from the middle", {"strongest", "first", "last"}));
    circle.columns = {position("x", true),
                      position("y", false),
                      {"radius", CellType::Real, Quantity::Length},
                      {"rms", CellType::Real, Quantity::Length},
                      {"scans", CellType::Integer},
                      {"used", CellType::Integer}};
    circle.make = [](const Arguments& a, BindContext& context) {
        if (a.numbers("radii")[0] == a.numbers("radii")[1])
            context.fault("radii", "the radii must differ");
        return operation(
            CircleSearch{a.numbers("center"), a.numbers("radii"), a.integer("scans"), settingsOf(a)});
    };
    return {edges, line, circle};
}

} // namespace ormalux
