#include "image/LocalThreshold.h"
#include "image/MedianFilter.h"
#include "image/OtsuThreshold.h"
#include "image/ShapeMorphology.h"
#include "steps/BindContext.h"
#include "steps/Step.h"
#include "steps/Work.h"

#include <new>

namespace ormalux {

namespace {

void orTooLittleMemory(bool done)
{
    if (!done)
        throw std::bad_alloc();
}

std::unique_ptr<Operation> otsu(const Arguments& a, BindContext&)
{
    return operation([roi = a.region("roi")](Work& work, Findings& found) {
        int level = 0;
        work.changeGray(roi, [&](CKestImage& image) { level = image.OtsuThreshold(); });
        found.setFact("threshold", std::int64_t(level));
    });
}

std::unique_ptr<Operation> local(const Arguments& a, BindContext& context)
{
    const int window = a.integer("window");
    if (window % 2 == 0)
        context.fault("window", std::to_string(window) + ": expected an odd number");
    const LocalMean mean = a.is("method", "mean") ? LocalMean::Mean : LocalMean::Gaussian;
    return operation([=, roi = a.region("roi"), offset = a.real("offset")](Work& work, Findings&) {
        work.changeGray(roi, [&](CKestImage& image) {
            orTooLittleMemory(localThreshold(image.view(), mean, window, offset));
        });
    });
}

constexpr struct
{
    const char* name;
    MorphologyOperation operation;
} operations[] = {{"erode", MorphologyOperation::Erode},   {"dilate", MorphologyOperation::Dilate},
                  {"open", MorphologyOperation::Open},     {"close", MorphologyOperation::Close},
                  {"tophat", MorphologyOperation::TopHat}, {"gradient", MorphologyOperation::Gradient}};

std::unique_ptr<Operation> shapes(const Arguments& a, BindContext&)
{
    MorphologyOperation kind = MorphologyOperation::Erode;
    for (const auto& entry : operations)
        if (a.is("operation", entry.name))
            kind = entry.operation;
    const ElementShape shape = a.is("shape", "rect")    ? ElementShape::Rect
                               : a.is("shape", "cross") ? ElementShape::Cross
                                                        : ElementShape::Ellipse;
    return operation([=, roi = a.region("roi"), size = a.size("size")](Work& work, Findings&) {
        work.changeGray(roi, [&](CKestImage& image) {
            orTooLittleMemory(morphology(image.view(), kind, shape, size.cx, size.cy));
        });
    });
}

std::unique_ptr<Operation> median(const Arguments& a, BindContext&)
{
    return operation([roi = a.region("roi"), size = a.is("size", "5") ? 5 : 3](Work& work, Findings&) {
        work.changeGray(roi, [&](CKestImage& image) { orTooLittleMemory(medianFilter(image.view(), size)); });
    });
}

} // namespace

std::vector<Step> neighbourhoodSteps()
{
    Step level;
    level.name = "otsu";
    level.help = "Black and white at Otsu's level";
    level.facts = {{"threshold", CellType::Integer}};
    level.make = otsu;

    Step window;
    window.name = "local-threshold";
    window.help = "Black and white by the mean around each pixel";
    window.parameters = {choice("method", {"mean", "gaussian"}, "How the pixels around count", "mean"),
                         wholeNumber("window", minLocalWindow, maxLocalWindow, "Its side, odd"),
                         realNumber("offset", -1000, 1000, "Subtracted from the mean", "0.0")};
    window.make = local;

    Step morphologyStep;
    morphologyStep.name = "morphology";
    morphologyStep.help = "Erode, dilate, open, close, tophat or gradient by a shape, as in textbooks";
    std::vector<std::string> names;
    for (const auto& entry : operations)
        names.push_back(entry.name);
    morphologyStep.parameters = {choice("operation", names, "The operation"),
                                 choice("shape", {"rect", "cross", "ellipse"}, "The shape", "rect"),
                                 {"size", Kind::Extent, "3", "Its side, or WxH", 1, maxElementSize}};
    morphologyStep.make = shapes;

    Step middle;
    middle.name = "median";
    middle.help = "Median of 3 x 3 or 5 x 5";
    middle.parameters = {choice("size", {"3", "5"}, "The side of the neighbourhood", "3")};
    middle.make = median;

    std::vector<Step> steps{level, window, morphologyStep, middle};
    for (Step& step : steps)
        step.parameters.push_back(regionOnly("Only the region x1,y1,x2,y2, as a picture of its own"));
    return steps;
}

} // namespace ormalux
