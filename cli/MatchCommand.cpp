#include "cli/Annotation.h"
#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Input.h"
#include "cli/MatchSearch.h"
#include "cli/Values.h"

#include <memory>

namespace ormalux::cli {

namespace {

struct Options
{
    Batch batch;
    std::string source;
    std::string threshold = "auto";
    std::string region;
    double minimumYield = 0.0;
    int best = 0;
    std::string sort = "yield";
    bool perThreshold = false;
};

Findings findParts(const Options& options, CMatchSrcArray& sources, const std::string& file)
{
    const GrayPicture picture = readGray(file);
    MatchRequest request;
    request.region = regionWithin(picture.image, file, options.region);
    request.threshold = parseThreshold(options.threshold);
    request.perThreshold = options.perThreshold;
    if (request.threshold.automatic) {
        const RECT& r = request.region;
        const int level = int(picture.image.GetAutoThreshold(r.left, r.top, r.right, r.bottom, 'A', 1));
        request.threshold = {false, level, level};
    }
    std::vector<_stMatchResult> found = searchParts(picture.image, sources, request);
    std::erase_if(found, [&](const _stMatchResult& part) { return yield(part) < options.minimumYield; });
    if (options.best > 0 && found.size() > std::size_t(options.best)) {
        sortParts(found, "yield");
        found.resize(std::size_t(options.best));
    }
    sortParts(found, options.sort);

    Findings findings{file};
    findings.facts = {{"threshold", request.threshold.range()
                                        ? nlohmann::ordered_json(options.threshold)
                                        : nlohmann::ordered_json(request.threshold.low)},
                      {"count", found.size()}};
    findings.recordName = "parts";
    CDrawObjArray shapes;
    int number = 0;
    for (const _stMatchResult& part : found) {
        ++number;
        findings.records.push_back({{"number", number},
                                    {"left", part.left},
                                    {"top", part.top},
                                    {"right", part.right},
                                    {"bottom", part.bottom},
                                    {"pixels", part.pixel_count},
                                    {"yield", yield(part)},
                                    {"black_yield", part.black_yield},
                                    {"white_yield", part.white_yield},
                                    {"threshold", part.threshold}});
        char label[32];
        std::snprintf(label, sizeof label, "%d: %.0f %%", number, 100 * yield(part));
        addLabelledBox(shapes, {part.left, part.top, part.right, part.bottom}, RGB(0, 220, 0), label);
    }
    if (!options.batch.annotate.empty())
        writeAnnotated(outputName(options.batch.annotate, file, options.batch.several()), picture.image,
                       shapes);
    return findings;
}

int run(const Options& options)
{
    CMatchSrcArray sources;
    sources.Add(options.source.c_str());
    if (sources.GetCount() == 0)
        throw InputError(options.source +
                         ": not a match source, shorter than it declares, or not to be read");
    return options.batch.run([&](const std::string& file) { return findParts(options, sources, file); });
}

} // namespace

void addMatch(CLI::App& program, Chosen& chosen)
{
    CLI::App* command = program.add_subcommand("match", "Find the parts that look like a template");
    auto options = std::make_shared<Options>();
    options->batch.addTo(*command, true);
    command->add_option("-s,--source", options->source, "The template, an .mcs file")->required();
    command
        ->add_option("-t,--threshold", options->threshold,
                     "auto, a level 0..255, or a range LOW..HIGH: every part at its best level")
        ->capture_default_str()
        ->each([](const std::string& text) { parseThreshold(text); });
    command->add_flag("--best-per-threshold", options->perThreshold,
                      "With a range: the single best part of every level instead");
    command->add_option("--roi", options->region, "Only inside the region x1,y1,x2,y2")
        ->each([](const std::string& text) { parseRegion(text); });
    command->add_option("--min-yield", options->minimumYield, "Drop parts that agree less, 0..1")
        ->capture_default_str()
        ->check(CLI::Range(0.0, 1.0));
    command->add_option("--best", options->best, "Keep so many of the best parts")
        ->check(CLI::PositiveNumber);
    command->add_option("--sort", options->sort, "yield (best first), left or top")
        ->capture_default_str()
        ->check(CLI::IsMember({"yield", "left", "top"}));
    command->callback([&chosen, options] { chosen = [options] { return run(*options); }; });
}

} // namespace ormalux::cli
