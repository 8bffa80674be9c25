#include "steps/BindContext.h"
#include "steps/Step.h"
#include "steps/Work.h"

namespace ormalux {

namespace {

/// Where the parts of a plate lie that was moved and turned: found by one of them, or by two.
struct FrameSearch
{
    RowReference origin, toward;
    std::vector<double> reference, reference2;
    bool hasToward;
    std::optional<double> referenceAngle;

    void operator()(Work& work, Findings& found) const
    {
        const Place* const here = work.find(origin);
        const Place* const there = hasToward ? work.find(toward) : nullptr;
        if (!here || (hasToward && !there)) {
            work.missing = (here ? toward : origin).name + " was not found";
            return;
        }
        // In an outer frame the references have moved along with it already; the turn is what is left.
        const auto from = work.placed(reference[0], reference[1]);
        double turn = 0;
        if (hasToward) {
            const auto from2 = work.placed(reference2[0], reference2[1]);
            if (there->x == here->x && there->y == here->y) {
                work.missing = origin.name + " and " + toward.name + " lie in one place";
                return;
            }
            turn = turnOf(directionOf(here->x, here->y, there->x, there->y) -
                          directionOf(from.x, from.y, from2.x, from2.y));
        } else if (referenceAngle && here->kind == Place::Kind::Line) {
            turn = lineTurnOf(here->angle - *referenceAngle - work.turned());
        }
        const double degrees = turnOf(turn + work.turned());
        work.motion = Motion(reference[0], reference[1], here->x, here->y, degrees);
        Place place = Place::point(here->x, here->y);
        place.angle = degrees;
        found.addRow(place);
        for (const double value : {here->x, here->y, degrees, here->x - reference[0], here->y - reference[1]})
            found.add(value);
    }
};

std::unique_ptr<Operation> frame(const Arguments& a, BindContext& context)
{
    FrameSearch search{a.reference("origin"), {}, a.numbers("reference"), {}, a.given("toward"), {}};
    if (search.hasToward != a.given("reference2"))
        context.fault(search.hasToward ? "reference2" : "toward",
                      "is missing: \"toward\" and \"reference2\" go together");
    if (search.hasToward)
        search.toward = a.reference("toward");
    if (a.given("reference2"))
        search.reference2 = a.numbers("reference2");
    if (search.reference2 == search.reference)
        context.fault("reference2", "is the same place as \"reference\"");
    if (a.given("reference_angle"))
        search.referenceAngle = a.real("reference_angle");
    return operation(search);
}

} // namespace

std::vector<Step> frameSteps()
{
    Step step;
    step.name = "frame";
    step.help = "Follow a plate that was moved and turned: steps with its name in \"in\" move along";
    step.measures = true;
    step.parameters = {
        {"origin", Kind::Reference, "", "A finding on the plate"},
        {"reference", Kind::Point, "", "Where it lies on the plate that the recipe was made on"},
        optional({"toward", Kind::Reference, "", "A second finding, which adds the turn"}),
        optional({"reference2", Kind::Point, "", "Where the second one lies there"}),
        optional(realNumber("reference_angle", -360, 360,
                            "A line as origin brings its turn: its angle there, in degrees"))};
    step.list = "frames";
    step.facts = {{"count", CellType::Integer}};
    step.columns = {{"x", CellType::Real, Quantity::X},
                    {"y", CellType::Real, Quantity::Y},
                    {"angle", CellType::Real},
                    {"dx", CellType::Real, Quantity::Length},
                    {"dy", CellType::Real, Quantity::Length}};
    step.look = Look::Cross;
    step.color = RGB(0, 200, 120);
    step.make = frame;
    return {step};
}

} // namespace ormalux
