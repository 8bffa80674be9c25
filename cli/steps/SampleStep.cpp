#include "cli/Step.h"

#include <map>

namespace ormalux::cli {

namespace {

/// What a shape's numbers mean, and how many there are.
const std::map<std::string, std::size_t> shapeNumbers{{"line", 4}, {"circle", 3}, {"ellipse", 4}, {"arc", 5}};

void sampleShape(Workpiece& work, const Json& arguments)
{
    const std::string shape = arguments.at("shape").get<std::string>();
    const auto numbers = parseNumbers(arguments.at("at").get<std::string>(), ",");
    if (!numbers || numbers->size() != shapeNumbers.at(shape))
        throw InputError("sample: at: a " + shape + " takes " + std::to_string(shapeNumbers.at(shape)) +
                         " whole numbers");
    const std::vector<int>& n = *numbers;
    const ThresholdChoice levels = parseThreshold(arguments.at("levels").get<std::string>());
    const auto low = static_cast<unsigned char>(levels.automatic ? 0 : levels.low);
    const auto high = static_cast<unsigned char>(levels.automatic ? 255 : levels.high);
    CPixelArray pixels;
    if (shape == "line")
        work.image.GetLinePixelArray(n[0], n[1], n[2], n[3], low, high, pixels);
    else if (shape == "circle")
        work.image.GetCyclePixelArray(n[0], n[1], n[2], low, high, pixels);
    else if (shape == "ellipse")
        work.image.GetEllipsePixelArray(n[0], n[1], n[2], n[3], low, high, pixels);
    else
        work.image.GetArcPixelArray(n[0], n[1], n[2], n[3], n[4], low, high, pixels);

    Findings findings{work.file, {{"count", pixels.GetCount()}}, "pixels", {}};
    for (const _stPixel& pixel : pixels.records()) {
        findings.records.push_back({{"x", pixel.x}, {"y", pixel.y}, {"level", pixel.gray_level}});
        work.shapes.AddCrossLine(pixel.x, pixel.y, 0, 0, 1, RGB(255, 0, 200), "sample");
    }
    work.findings.push_back(std::move(findings));
}

} // namespace

std::vector<Step> sampleSteps()
{
    std::vector<std::string> shapes;
    for (const auto& [name, count] : shapeNumbers)
        shapes.push_back(name);
    return {{"sample",
             "List the gray levels along a shape",
             true,
             {{"shape", Kind::Choice, "line", "The shape", 0, 0, shapes},
              {"at", Kind::Text, nullptr,
               "line x1,y1,x2,y2; circle cx,cy,r; ellipse cx,cy,a,b; arc cx,cy,r,start,end (degrees)"},
              {"levels", Kind::Threshold, "0..255", "Only levels LOW..HIGH"}},
             sampleShape}};
}

} // namespace ormalux::cli
