#include "cli/Annotation.h"
#include "cli/Step.h"

#include <climits>
#include <map>

namespace ormalux::cli {

namespace {

const std::map<std::string, void (CBlobRectArray::*)()> sorts{
    {"scan", nullptr},
    {"left", &CBlobRectArray::SortLeft},
    {"top", &CBlobRectArray::SortTop},
    {"right", &CBlobRectArray::SortRight},
    {"bottom", &CBlobRectArray::SortBottom},
    {"width", &CBlobRectArray::SortWidth},
    {"height", &CBlobRectArray::SortHeight},
    {"pixels", &CBlobRectArray::SortPixelCount},
};

void findBlobs(Workpiece& work, const Json& arguments)
{
    const RECT r = work.region(arguments);
    const int threshold =
        levelOf(parseThreshold(arguments.at("threshold").get<std::string>()), work.image, r, work.file);
    const SIZE smallest = parseSize(arguments.at("min_size").get<std::string>());
    const SIZE largest = arguments.contains("max_size")
                             ? parseSize(arguments.at("max_size").get<std::string>())
                             : SIZE{INT_MAX, INT_MAX};
    CBlobRectArray blobs;
    // The search takes the region with its right and bottom exclusive.
    work.image.GetBlobList(r.left, r.top, r.right + 1, r.bottom + 1, threshold,
                           parseObject(arguments.at("object").get<std::string>()), smallest.cx, largest.cx,
                           smallest.cy, largest.cy, blobs);
    if (const auto sort = sorts.at(arguments.at("sort").get<std::string>()))
        (blobs.*sort)();

    Findings findings{work.file, {{"threshold", threshold}, {"count", blobs.GetCount()}}, "blobs", {}};
    for (const _stBlobRect& blob : blobs.records()) {
        const int number = int(findings.records.size()) + 1;
        findings.records.push_back({{"number", number},
                                    {"left", blob.left},
                                    {"top", blob.top},
                                    {"right", blob.right},
                                    {"bottom", blob.bottom},
                                    {"width", blob.right - blob.left + 1},
                                    {"height", blob.bottom - blob.top + 1},
                                    {"pixels", blob.pixel_count}});
        addLabelledBox(work.shapes, {blob.left, blob.top, blob.right, blob.bottom}, RGB(255, 64, 64),
                       std::to_string(number));
    }
    work.findings.push_back(std::move(findings));
}

} // namespace

std::vector<Step> blobSteps()
{
    std::vector<std::string> keys;
    for (const auto& [name, sort] : sorts)
        keys.push_back(name);
    return {{"blobs",
             "List the connected regions that are brighter or darker than a threshold",
             true,
             {{"threshold", Kind::Level, "auto", "auto or a level 0..255"},
              {"object",
               Kind::Choice,
               "white",
               "white: brighter than the threshold; black: not brighter",
               0,
               0,
               {"white", "black"}},
              {"roi", Kind::Region, nullptr, "Only inside the region x1,y1,x2,y2", 0, 0, {}, true},
              {"min_size", Kind::Size, "2x2", "Smallest width and height, WxH"},
              {"max_size", Kind::Size, nullptr, "Largest width and height, WxH", 0, 0, {}, true},
              {"sort", Kind::Choice, "scan", "Ascending order of the list", 0, 0, keys}},
             findBlobs}};
}

} // namespace ormalux::cli
