#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Input.h"
#include "steps/ArgumentText.h"

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

const Findings& binarise(const Options& options, const std::string& file, FactSheet& facts)
{
    Workpiece piece;
    loadPicture(file, piece);
    Work& work = piece.work;
    const std::string output = outputName(options.output, file, options.batch.several());
    CKestImage& image = work.grayToChange();
    if (!options.region.empty())
        orInputError(file, [&] { image.SetROIPlacement(*work.region(parseRegion(options.region))); });

    facts.clear();
    facts.add("output", output);
    if (options.adaptive >= 0) {
        image.AdaptiveThreshold(static_cast<unsigned char>(options.adaptive));
        facts.add("threshold", "adaptive");
    } else {
        const ThresholdChoice choice = *parseThreshold(options.threshold);
        if (choice.pair) {
            image.DoubleThreshold(choice.high, choice.low, 255);
            facts.add("threshold", options.threshold);
        } else {
            const int level = orInputError(file, [&] { return work.level(choice, wholeOf(image)); });
            image.Threshold(level);
            facts.add("threshold", level);
        }
    }
    facts.add("white_pixels", std::int64_t(image.GetGrayLevelCount(255)));
    facts.add("black_pixels", std::int64_t(image.GetGrayLevelCount(0)));
    savePicture(output, image);
    return facts.findings();
}

} // namespace

void addThreshold(Command& program)
{
    Command command = program.add("threshold", "Turn pictures into black and white");
    auto options = std::make_shared<Options>();
    options->batch.addTo(command, false);
    command.text({"-t,--threshold",
                  "auto, a level 0..255, or a range LOW..HIGH that becomes white",
                  false,
                  "auto",
                  {},
                  checkThreshold},
                 options->threshold);
    command.number({"--adaptive",
                    "A threshold per row from its rising edges; rows without one are filled with this level"},
                   options->adaptive, 0, 255);
    command.exclusive("--threshold", "--adaptive");
    command.text(
        {"--roi", "Only the region x1,y1,x2,y2, which the output is cropped to", false, {}, {}, checkRegion},
        options->region);
    command.text({"-o,--output", "The picture to write; {} stands for the picture's name", true},
                 options->output);
    command.runs([options] {
        FactSheet facts;
        return options->batch.run(
            [&](const std::string& file) -> const Findings& { return binarise(*options, file, facts); },
            {options->output});
    });
}

} // namespace ormalux::cli
