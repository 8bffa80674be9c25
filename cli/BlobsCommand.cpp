#include "cli/Annotation.h"
#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Input.h"
#include "cli/Values.h"

#include <climits>
#include <memory>

namespace ormalux::cli {

namespace {

struct Options
{
    Batch batch;
    std::string threshold = "auto";
    std::string object = "white";
    std::string region;
    std::string minimum = "2x2";
    std::string maximum;
    std::string sort = "scan";
};

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

int search(const Options& options, const CKestImage& image, const RECT& region, int threshold,
           CBlobRectArray& blobs)
{
    const SIZE smallest = parseSize(options.minimum);
    const SIZE largest = options.maximum.empty() ? SIZE{INT_MAX, INT_MAX} : parseSize(options.maximum);
    // The search takes the region with its right and bottom exclusive.
    return image.GetBlobList(region.left, region.top, region.right + 1, region.bottom + 1, threshold,
                             parseObject(options.object), smallest.cx, largest.cx, smallest.cy, largest.cy,
                             blobs);
}

Findings findBlobs(const Options& options, const std::string& file)
{
    const GrayPicture picture = readGray(file);
    const CKestImage& image = picture.image;
    const RECT region = regionWithin(image, file, options.region);
    const ThresholdChoice choice = parsePlainThreshold(options.threshold);
    const long threshold = choice.automatic ? image.GetAutoThreshold(region.left, region.top, region.right,
                                                                     region.bottom, 'A', 1)
                                            : choice.low;
    CBlobRectArray blobs;
    search(options, image, region, int(threshold), blobs);
    if (const auto sort = sorts.at(options.sort))
        (blobs.*sort)();

    Findings findings{file};
    findings.facts = {{"threshold", threshold}, {"count", blobs.GetCount()}};
    findings.recordName = "blobs";
    CDrawObjArray shapes;
    int number = 0;
    for (const _stBlobRect& blob : blobs.records()) {
        ++number;
        findings.records.push_back({{"number", number},
                                    {"left", blob.left},
                                    {"top", blob.top},
                                    {"right", blob.right},
                                    {"bottom", blob.bottom},
                                    {"width", blob.right - blob.left + 1},
                                    {"height", blob.bottom - blob.top + 1},
                                    {"pixels", blob.pixel_count}});
        addLabelledBox(shapes, {blob.left, blob.top, blob.right, blob.bottom}, RGB(255, 64, 64),
                       std::to_string(number));
    }
    if (!options.batch.annotate.empty())
        writeAnnotated(outputName(options.batch.annotate, file, options.batch.several()), image, shapes);
    return findings;
}

} // namespace

void addBlobs(CLI::App& program, Chosen& chosen)
{
    CLI::App* command = program.add_subcommand(
        "blobs", "List the connected regions that are brighter or darker than a threshold");
    auto options = std::make_shared<Options>();
    options->batch.addTo(*command, true);
    command->add_option("-t,--threshold", options->threshold, "auto or a level 0..255")
        ->capture_default_str()
        ->each([](const std::string& text) { parsePlainThreshold(text); });
    command
        ->add_option("--object", options->object, "white: brighter than the threshold; black: not brighter")
        ->capture_default_str()
        ->each([](const std::string& text) { parseObject(text); });
    command->add_option("--roi", options->region, "Only inside the region x1,y1,x2,y2")
        ->each([](const std::string& text) { parseRegion(text); });
    command->add_option("--min-size", options->minimum, "Smallest width and height, WxH")
        ->capture_default_str()
        ->each([](const std::string& text) { parseSize(text); });
    command->add_option("--max-size", options->maximum, "Largest width and height, WxH")
        ->each([](const std::string& text) { parseSize(text); });
    command
        ->add_option("--sort", options->sort,
                     "scan, left, top, right, bottom, width, height or pixels, ascending")
        ->capture_default_str()
        ->check(CLI::IsMember({"scan", "left", "top", "right", "bottom", "width", "height", "pixels"}));
    command->callback([&chosen, options] {
        chosen = [options] {
            return options->batch.run([&](const std::string& file) { return findBlobs(*options, file); });
        };
    });
}

} // namespace ormalux::cli
