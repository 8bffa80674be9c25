#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Input.h"
#include "cli/OutputNames.h"
#include "steps/Bind.h"
#include "steps/Chain.h"

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
    std::vector<std::string> why;
    const std::vector<BoundStep> chain = parseChain(options.steps, why);
    if (!why.empty())
        throw InputError(why.front());
    checkOutputNames({options.picture}, {options.output});
    Workpiece piece;
    loadPicture(options.picture, piece);
    Findings found;
    for (const BoundStep& bound : chain) {
        found.start(bound.layout);
        orInputError(options.picture, [&] { bound.operation->run(piece.work, found); });
    }
    savePicture(options.output, piece.work);
    return Done;
}

std::string stepList()
{
    std::size_t width = 0;
    for (const Step& step : allSteps())
        width = std::max(width, step.measures ? 0 : chainUsage(step).size() + 2);
    std::string list =
        "Steps (roi is x1,y1,x2,y2; center is x,y; a kernel has blanks between its numbers):\n";
    for (const Step& step : allSteps()) {
        if (step.measures)
            continue;
        std::string usage = chainUsage(step);
        usage.resize(width, ' ');
        list += "  " + usage + step.help + "\n";
    }
    return list;
}

struct PlaneOptions
{
    Batch batch;
    std::string channel;
    std::string output;
};

int takePlanes(PlaneOptions& options)
{
    std::vector<std::string> why;
    const std::vector<BoundStep> chain = parseChain({"plane:" + options.channel}, why);
    if (!why.empty())
        throw InputError(why.front());
    FactSheet facts;
    Findings none;
    none.start(chain.front().layout);
    const auto take = [&](const std::string& file) -> const Findings& {
        Workpiece piece;
        loadPicture(file, piece);
        orInputError(file, [&] { chain.front().operation->run(piece.work, none); });
        const std::string name = outputName(options.output, file, options.batch.several());
        savePicture(name, piece.work.gray());
        facts.clear();
        facts.add("output", name);
        facts.add("mean", double(piece.work.gray().GetGrayLevelAverage()));
        return facts.findings();
    };
    return options.batch.run(take, {options.output});
}

} // namespace

void addProcess(Command& program)
{
    Command command = program.add("process", "Change a picture by a chain of operations");
    auto options = std::make_shared<ProcessOptions>();
    command.text({"picture", "The picture", true}, options->picture);
    command.texts({"steps", "The operations in turn, as NAME or NAME:ARGUMENT,ARGUMENT", true},
                  options->steps);
    command.text({"-o,--output", "The picture to write", true}, options->output);
    command.footer(stepList());
    command.runs([options] { return process(*options); });
}

void addPlane(Command& program)
{
    Command command = program.add("plane", "Write one plane of colour pictures");
    auto options = std::make_shared<PlaneOptions>();
    const Step& step = *findStep("plane");
    options->batch.addTo(command, false);
    std::string channels;
    for (const std::string& name : step.parameters.front().choices)
        channels += (channels.empty() ? "" : ", ") + name;
    command.text({"-c,--channel", step.help + ": " + channels, true}, options->channel);
    command.text({"-o,--output", "The picture to write; {} stands for the picture's name", true},
                 options->output);
    command.runs([options] { return takePlanes(*options); });
}

} // namespace ormalux::cli
