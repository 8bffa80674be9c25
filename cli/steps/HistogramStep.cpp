#include "cli/Step.h"

namespace ormalux::cli {

namespace {

void countLevels(Workpiece& work, const Json& arguments)
{
    const RECT r = work.region(arguments);
    CKestImage part(work.image);
    part.SetROIPlacement(r);
    long counts[256] = {};
    part.Histogram(counts);
    double sum = 0, squares = 0, total = 0;
    for (int level = 0; level < 256; ++level) {
        total += double(counts[level]);
        sum += double(counts[level]) * level;
        squares += double(counts[level]) * level * level;
    }
    const double mean = sum / total;
    Findings findings{
        work.file,
        {{"pixels", std::int64_t(total)}, {"mean", mean}, {"variance", squares / total - mean * mean}},
        "levels",
        {}};
    for (int level = 0; level < 256; ++level)
        if (counts[level] > 0)
            findings.records.push_back({{"level", level},
                                        {"count", counts[level]},
                                        {"percent", 100.0 * double(counts[level]) / total}});
    work.findings.push_back(std::move(findings));
}

} // namespace

std::vector<Step> histogramSteps()
{
    return {{"histogram",
             "Count the pixels of every gray level",
             true,
             {{"roi", Kind::Region, nullptr, "Only inside the region x1,y1,x2,y2", 0, 0, {}, true}},
             countLevels}};
}

} // namespace ormalux::cli
