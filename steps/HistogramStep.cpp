#include "steps/BindContext.h"
#include "steps/Step.h"
#include "steps/Work.h"

#include <new>

namespace ormalux {

namespace {

void countLevels(Work& work, const std::optional<RECT>& roi, Findings& found)
{
    const auto region = work.region(roi);
    if (!region)
        return;
    long counts[256] = {};
    if (roi) {
        CKestImage part(work.gray());
        part.SetROIPlacement(*region);
        if (part.IsEmpty())
            throw std::bad_alloc();
        part.Histogram(counts);
    } else {
        work.gray().Histogram(counts);
    }
    double sum = 0, squares = 0, total = 0;
    for (int level = 0; level < 256; ++level) {
        total += double(counts[level]);
        sum += double(counts[level]) * level;
        squares += double(counts[level]) * level * level;
    }
    const double mean = sum / total;
    found.setFact("pixels", std::int64_t(total));
    found.setFact("mean", mean);
    found.setFact("variance", squares / total - mean * mean);
    for (int level = 0; level < 256; ++level)
        if (counts[level] > 0) {
            found.addRow({});
            found.add(level);
            found.add(std::int64_t(counts[level]));
            found.add(100.0 * double(counts[level]) / total);
        }
}

} // namespace

std::vector<Step> histogramSteps()
{
    Step step;
    step.name = "histogram";
    step.help = "Count the pixels of every gray level";
    step.measures = true;
    step.parameters = {regionOnly()};
    step.list = "levels";
    step.facts = {{"pixels", CellType::Integer}, {"mean", CellType::Real}, {"variance", CellType::Real}};
    step.columns = {{"level", CellType::Integer}, {"count", CellType::Integer}, {"percent", CellType::Real}};
    step.make = [](const Arguments& a, BindContext&) {
        return operation(
            [roi = a.region("roi")](Work& work, Findings& found) { countLevels(work, roi, found); });
    };
    return {step};
}

} // namespace ormalux
