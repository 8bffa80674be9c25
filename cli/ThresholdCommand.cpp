#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Input.h"
#include "cli/Step.h"
#include "cli/Values.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace ormalux::cli {

namespace {

struct Options
{
    Batch batch;
    std::string threshold = "auto";
    int adaptive = -1;
    std::string region;
    std::string output;
};

Findings binarise(const Options& options, const std::string& file)
{
    Workpiece picture;
    loadPicture(file, picture);
    CKestImage& image = picture.image;
    const std::string output = outputName(options.output, file, options.batch.several());
    if (!options.region.empty())
        image.SetROIPlacement(regionWithin(image, file, parseRegion(options.region)));

    Findings findings{file, {}, {}, {}};
    findings.facts["output"] = output;
    if (options.adaptive >= 0) {
        image.AdaptiveThreshold(static_cast<unsigned char>(options.adaptive));
        findings.facts["threshold"] = "adaptive";
    } else {
        const ThresholdChoice choice = parseThreshold(options.threshold);
        if (choice.pair) {
            image.DoubleThreshold(choice.high, choice.low, 255);
            findings.facts["threshold"] = options.threshold;
        } else {
            const RECT whole{0, 0, image.GetWidth() - 1, image.GetHeight() - 1};
            const int level = levelOf(choice, image, whole, file);
            image.Threshold(level);
            findings.facts["threshold"] = level;
        }
    }
    findings.facts["white_pixels"] = image.GetGrayLevelCount(255);
    findings.facts["black_pixels"] = image.GetGrayLevelCount(0);
    savePicture(output, image);
    return findings;
}

} // namespace

void addThreshold(CLI::App& program, Chosen& chosen)
{
    CLI::App* command = program.add_subcommand("threshold", "Turn pictures into black and white");
    auto options = std::make_shared<Options>();
    options->batch.addTo(*command, false);
    auto* threshold = command
                          ->add_option("-t,--threshold", options->threshold,
                                       "auto, a level 0..255, or a range LOW..HIGH that becomes white")
                          ->capture_default_str();
    threshold->each([](const std::string& text) { parseThreshold(text); });
    command
        ->add_option("--adaptive", options->adaptive,
                     "A threshold per row from its rising edges; rows without one are filled with this level")
        ->check(CLI::Range(0, 255))
        ->excludes(threshold);
    command
        ->add_option("--roi", options->region, "Only the region x1,y1,x2,y2, which the output is cropped to")
        ->each([](const std::string& text) { parseRegion(text); });
    command
        ->add_option("-o,--output", options->output, "The picture to write; {} stands for the picture's name")
        ->required();
    command->callback([&chosen, options] {
        chosen = [options] {
            return options->batch.run([&](const std::string& file) { return binarise(*options, file); },
                                      {options->output});
        };
    });
}

} // namespace ormalux::cli
