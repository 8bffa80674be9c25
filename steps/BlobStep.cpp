#include "steps/BindContext.h"
#include "steps/Step.h"
#include "steps/Work.h"

#include <climits>

namespace ormalux {

namespace {

constexpr struct
{
    const char* name;
    void (CBlobRectArray::*sort)(); ///< null for the order of the search
} sorts[] = {
    {"bottom", &CBlobRectArray::SortBottom}, {"height", &CBlobRectArray::SortHeight},
    {"left", &CBlobRectArray::SortLeft},     {"pixels", &CBlobRectArray::SortPixelCount},
    {"right", &CBlobRectArray::SortRight},   {"scan", nullptr},
    {"top", &CBlobRectArray::SortTop},       {"width", &CBlobRectArray::SortWidth},
};

struct BlobSearch
{
    std::optional<RECT> roi;
    ThresholdChoice threshold;
    int color;
    SIZE smallest, largest;
    void (CBlobRectArray::*sort)() = nullptr;

    void operator()(Work& work, Findings& found) const
    {
        const auto region = work.region(roi);
        if (!region)
            return;
        const int level = work.level(threshold, *region);
        CBlobRectArray blobs;
        // The search takes the region with its right and bottom exclusive.
        work.gray().GetBlobList(region->left, region->top, region->right + 1, region->bottom + 1, level,
                                color, smallest.cx, largest.cx, smallest.cy, largest.cy, blobs);
        if (sort)
            (blobs.*sort)();
        found.setFact("threshold", std::int64_t(level));
        listBlobs(blobs, found);
    }
};

std::unique_ptr<Operation> blobs(const Arguments& a, BindContext&)
{
    BlobSearch search{a.region("roi"), a.threshold("threshold"), a.is("object", "white") ? 255 : 0,
                      a.size("min_size"), a.size("max_size", {INT_MAX, INT_MAX})};
    for (const auto& sort : sorts)
        if (a.is("sort", sort.name))
            search.sort = sort.sort;
    return operation(search);
}

} // namespace

void listBlobs(CBlobRectArray& blobs, Findings& found)
{
    for (const _stBlobRect& blob : blobs.records()) {
        found.addRow(Place::box({blob.left, blob.top, blob.right, blob.bottom}));
        found.add(std::int64_t(found.rows()));
        for (const LONG value : {blob.left, blob.top, blob.right, blob.bottom,
                                 LONG(blob.right - blob.left + 1), LONG(blob.bottom - blob.top + 1)})
            found.add(value);
        found.add(std::int64_t(blob.pixel_count));
    }
}

std::vector<Column> boxColumns()
{
    return {{"left", CellType::Integer, Quantity::X},
            {"top", CellType::Integer, Quantity::Y},
            {"right", CellType::Integer, Quantity::X},
            {"bottom", CellType::Integer, Quantity::Y}};
}

std::vector<Step> blobSteps()
{
    std::vector<std::string> keys;
    for (const auto& sort : sorts)
        keys.push_back(sort.name);
    Step step;
    step.name = "blobs";
    step.help = "List the connected regions that are brighter or darker than a threshold";
    step.measures = true;
    step.parameters = {levelThreshold(),
                       objectColor(),
                       regionOnly(),
                       sizeLimit("min_size", "Smallest width and height, WxH", "2x2"),
                       sizeLimit("max_size", "Largest width and height, WxH"),
                       choice("sort", keys, "Ascending order of the list", "scan")};
    step.list = "blobs";
    step.facts = {{"threshold", CellType::Integer}, {"count", CellType::Integer}};
    step.columns = {{"number", CellType::Integer}};
    for (const Column& column : boxColumns())
        step.columns.push_back(column);
    step.columns.push_back({"width", CellType::Integer, Quantity::Width});
    step.columns.push_back({"height", CellType::Integer, Quantity::Height});
    step.columns.push_back({"pixels", CellType::Integer, Quantity::Area});
    step.look = Look::NumberedBox;
    step.color = RGB(255, 64, 64);
    step.make = blobs;
    return {step};
}

} // namespace ormalux
