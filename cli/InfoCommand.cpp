#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Input.h"
#include "cli/Step.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace ormalux::cli {

namespace {

Findings describe(const std::string& file)
{
    Workpiece picture;
    const PictureOrigin origin = loadPicture(file, picture);
    long histogram[256] = {};
    picture.image.Histogram(histogram);
    int darkest = 0, brightest = 255;
    while (histogram[darkest] == 0)
        ++darkest;
    while (histogram[brightest] == 0)
        --brightest;
    Findings findings{file, {}, {}, {}};
    findings.facts = {{"width", picture.image.GetWidth()},
                      {"height", picture.image.GetHeight()},
                      {"kind", !picture.color.IsEmpty() ? "colour" : "gray"},
                      {"bits", origin.bits},
                      {"pages", origin.pages},
                      {"darkest", darkest},
                      {"brightest", brightest},
                      {"mean", picture.image.GetGrayLevelAverage()},
                      {"auto_threshold", picture.image.GetAutoThreshold('A', 1)}};
    return findings;
}

} // namespace

void addInfo(CLI::App& program, Chosen& chosen)
{
    CLI::App* command = program.add_subcommand("info", "Size, kind and gray levels of pictures");
    auto batch = std::make_shared<Batch>();
    batch->addTo(*command, false);
    command->callback([&chosen, batch] { chosen = [batch] { return batch->run(describe); }; });
}

} // namespace ormalux::cli
