#include "measure/PlaneRelations.h"
#include "steps/BindContext.h"
#include "steps/Step.h"
#include "steps/Work.h"

namespace ormalux {

namespace {

CPlanePoint pointOf(const Place& place)
{
    return {place.x, place.y};
}

CPlaneLine lineOf(const Place& place)
{
    return {place.x, place.y, place.angle};
}

bool isLine(const Place& place)
{
    return place.kind == Place::Kind::Line;
}

/// Two findings, when both are there.
struct Pair
{
    RowReference from, to;

    explicit Pair(const Arguments& a) : from(a.reference("from")), to(a.reference("to")) {}

    template <class Body>
    void with(const Work& work, const Body& body) const
    {
        const Place *const a = work.find(from), *const b = work.find(to);
        if (a && b)
            body(*a, *b);
    }
};

/// The shortest way from one to the other.
Place wayBetween(const Place& a, const Place& b)
{
    CPlanePoint from = pointOf(a), to = pointOf(b);
    if (isLine(b))
        to = footOn(lineOf(b), from);
    else if (isLine(a))
        from = footOn(lineOf(a), to);
    Place way{Place::Kind::Line, (from.x + to.x) / 2, (from.y + to.y) / 2, from.x, from.y, to.x, to.y};
    way.angle = lineTurnOf(directionOf(from.x, from.y, to.x, to.y));
    return way;
}

std::unique_ptr<Operation> distanceStep(const Arguments& a, BindContext&)
{
    return operation([pair = Pair(a)](Work& work, Findings& found) {
        pair.with(work, [&](const Place& from, const Place& to) {
            const Place way = wayBetween(from, to);
            found.addRow(way);
            found.add(distance(CPlanePoint{way.x1, way.y1}, CPlanePoint{way.x2, way.y2}));
        });
    });
}

std::unique_ptr<Operation> angleStep(const Arguments& a, BindContext&)
{
    return operation([pair = Pair(a)](Work& work, Findings& found) {
        pair.with(work, [&](const Place& from, const Place& to) {
            if (!isLine(from) || !isLine(to))
                return;
            found.addRow(Place::point(from.x, from.y));
            found.add(angleBetween(lineOf(from), lineOf(to)));
        });
    });
}

std::unique_ptr<Operation> intersectionStep(const Arguments& a, BindContext&)
{
    return operation([pair = Pair(a)](Work& work, Findings& found) {
        pair.with(work, [&](const Place& from, const Place& to) {
            CPlanePoint at{};
            if (!isLine(from) || !isLine(to) || !intersection(lineOf(from), lineOf(to), at))
                return;
            found.addRow(Place::point(at.x, at.y));
            found.add(at.x);
            found.add(at.y);
        });
    });
}

Step relation(const char* name, const char* help, const char* list, const char* what, Look look)
{
    Step step;
    step.name = name;
    step.help = help;
    step.measures = true;
    step.parameters = {{"from", Kind::Reference, "", what}, {"to", Kind::Reference, "", what}};
    step.list = list;
    step.facts = {{"count", CellType::Integer}};
    step.look = look;
    step.color = RGB(0, 220, 255);
    return step;
}

} // namespace

std::vector<Step> relationSteps()
{
    const char* const anything = "A point, a line or a circle that a step before has found";
    const char* const aLine = "A line that a step before has found";
    Step distances = relation("distance", "The distance of two findings", "distances", anything, Look::Line);
    distances.columns = {{"distance", CellType::Real, Quantity::Distance}};
    distances.make = distanceStep;
    Step angles =
        relation("angle", "The angle between two lines, 0 to 90 degrees", "angles", aLine, Look::None);
    angles.columns = {{"angle", CellType::Real}};
    angles.make = angleStep;
    Step crossings = relation("intersection", "Where two lines meet", "intersections", aLine, Look::Cross);
    crossings.columns = {{"x", CellType::Real, Quantity::X}, {"y", CellType::Real, Quantity::Y}};
    crossings.make = intersectionStep;
    return {distances, angles, crossings};
}

} // namespace ormalux
