#include "steps/ArgumentText.h"
#include "steps/BindContext.h"
#include "steps/Step.h"
#include "steps/Work.h"

#include <cmath>

namespace ormalux {

namespace {

/// What a shape's numbers mean, and how many there are.
constexpr struct
{
    const char* name;
    std::size_t numbers;
} shapes[] = {{"arc", 5}, {"circle", 3}, {"ellipse", 4}, {"line", 4}};

struct Sampling
{
    std::string shape;
    std::vector<int> numbers;
    unsigned char low, high;

    void operator()(Work& work, Findings& found) const
    {
        std::vector<int> n = numbers;
        move(work, n[0], n[1]);
        CPixelArray pixels;
        if (shape == "line") {
            move(work, n[2], n[3]);
            work.gray().GetLinePixelArray(n[0], n[1], n[2], n[3], low, high, pixels);
        } else if (shape == "circle") {
            work.gray().GetCyclePixelArray(n[0], n[1], n[2], low, high, pixels);
        } else if (shape == "ellipse") {
            work.gray().GetEllipsePixelArray(n[0], n[1], n[2], n[3], low, high, pixels);
        } else {
            const int turn = int(std::lround(work.turned()));
            work.gray().GetArcPixelArray(n[0], n[1], n[2], n[3] + turn, n[4] + turn, low, high, pixels);
        }
        for (const _stPixel& pixel : pixels.records()) {
            found.addRow(Place::point(pixel.x, pixel.y));
            found.add(std::int64_t(pixel.x));
            found.add(std::int64_t(pixel.y));
            found.add(std::int64_t(pixel.gray_level));
        }
    }

private:
    static void move(const Work& work, int& x, int& y)
    {
        if (!work.frame)
            return;
        const auto moved = work.placed(x, y);
        x = int(std::lround(moved.x));
        y = int(std::lround(moved.y));
    }
};

std::unique_ptr<Operation> sample(const Arguments& a, BindContext& context)
{
    const auto numbers = parseNumbers(a.text("at"), ",");
    for (const auto& shape : shapes)
        if (a.is("shape", shape.name) && (!numbers || numbers->size() != shape.numbers))
            context.fault("at", "a " + a.text("shape") + " takes " + std::to_string(shape.numbers) +
                                    " whole numbers");
    const ThresholdChoice& levels = a.threshold("levels");
    return operation(Sampling{a.text("shape"), numbers.value_or(std::vector<int>()),
                              static_cast<unsigned char>(levels.automatic ? 0 : levels.low),
                              static_cast<unsigned char>(levels.automatic ? 255 : levels.high)});
}

} // namespace

std::vector<Step> sampleSteps()
{
    std::vector<std::string> names;
    for (const auto& shape : shapes)
        names.push_back(shape.name);
    Step step;
    step.name = "sample";
    step.help = "List the gray levels along a shape";
    step.measures = true;
    step.parameters = {
        choice("shape", names, "The shape", "line"),
        {"at", Kind::Text, "",
         "line x1,y1,x2,y2; circle cx,cy,r; ellipse cx,cy,a,b; arc cx,cy,r,start,end (degrees)"},
        {"levels", Kind::Threshold, "0..255", "Only levels LOW..HIGH"}};
    step.list = "pixels";
    step.facts = {{"count", CellType::Integer}};
    step.columns = {{"x", CellType::Integer, Quantity::X},
                    {"y", CellType::Integer, Quantity::Y},
                    {"level", CellType::Integer}};
    step.look = Look::Dot;
    step.color = RGB(255, 0, 200);
    step.make = sample;
    return {step};
}

} // namespace ormalux
