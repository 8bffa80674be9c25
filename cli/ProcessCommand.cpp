#include "cli/Batch.h"
#include "cli/Chain.h"
#include "cli/Commands.h"
#include "cli/OutputNames.h"
#include "cli/Step.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>

namespace ormalux::cli {

namespace {

struct ProcessOptions
{
    std::string picture;
    std::vector<std::string> steps;
    std::string output;
};

int process(const ProcessOptions& options)
{
    const std::vector<BoundStep> chain = parseChain(options.steps);
    checkOutputNames({options.picture}, {options.output});
    Workpiece work;
    loadPicture(options.picture, work);
    for (const BoundStep& bound : chain)
        bound.step->run(work, bound.arguments);
    savePicture(options.output, work);
    return Done;
}

/// The step as it is written in a chain; what may be left out stands in brackets.
std::string usageOf(const Step& step)
{
    std::string usage = step.name;
    for (const Parameter& parameter : step.parameters) {
        const std::string item = (&parameter == &step.parameters.front() ? ":" : ",") + parameter.name;
        usage += parameter.optional || !parameter.fallback.is_null() ? "[" + item + "]" : item;
    }
    return usage;
}

std::string stepList()
{
    std::size_t width = 0;
    for (const Step& step : allSteps())
        width = std::max(width, step.measures ? 0 : usageOf(step).size() + 2);
    std::string list =
        "Steps (roi is x1,y1,x2,y2; center is x,y; a kernel has blanks between its numbers):\n";
    for (const Step& step : allSteps()) {
        if (step.measures)
            continue;
        std::string usage = usageOf(step);
        usage.resize(width, ' ');
        list += "  " + usage + step.help + "\n";
    }
    return list;
}

} // namespace

void addProcess(CLI::App& program, Chosen& chosen)
{
    CLI::App* command = program.add_subcommand("process", "Change a picture by a chain of operations");
    auto options = std::make_shared<ProcessOptions>();
    command->add_option("picture", options->picture, "The picture")->required();
    command->add_option("steps", options->steps, "The operations in turn, as NAME or NAME:ARGUMENT,ARGUMENT")
        ->required();
    command->add_option("-o,--output", options->output, "The picture to write")->required();
    command->footer(stepList());
    command->callback([&chosen, options] { chosen = [options] { return process(*options); }; });
}

void addPlane(CLI::App& program, Chosen& chosen)
{
    struct PlaneOptions
    {
        Batch batch;
        std::string channel;
        std::string output;
    };
    CLI::App* command = program.add_subcommand("plane", "Write one plane of colour pictures");
    auto options = std::make_shared<PlaneOptions>();
    const Step& step = *findStep("plane");
    options->batch.addTo(*command, false);
    command->add_option("-c,--channel", options->channel, step.help)
        ->required()
        ->check(CLI::IsMember(step.parameters.front().choices));
    command
        ->add_option("-o,--output", options->output, "The picture to write; {} stands for the picture's name")
        ->required();
    command->callback([&chosen, options] {
        chosen = [options] {
            const auto cut = [&](const std::string& file) {
                Workpiece work;
                loadPicture(file, work);
                findStep("plane")->run(work, {{"channel", options->channel}});
                const std::string name = outputName(options->output, file, options->batch.several());
                savePicture(name, work.image);
                return Findings{file, {{"output", name}, {"mean", work.image.GetGrayLevelAverage()}}, "", {}};
            };
            return options->batch.run(cut, {options->output});
        };
    });
}

} // namespace ormalux::cli
