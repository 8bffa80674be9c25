#include "cli/Annotation.h"
#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/HistogramPlot.h"
#include "cli/Step.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>
#include <memory>

namespace ormalux::cli {

namespace {

/// One measuring step as a subcommand: its parameters are the options.
struct StepOptions
{
    Batch batch;
    const Step* step = nullptr;
    std::map<std::string, std::vector<std::string>> given;
    std::string plot; ///< of the histogram
};

std::string optionName(const std::string& parameter)
{
    std::string name = parameter;
    std::replace(name.begin(), name.end(), '_', '-');
    const std::map<std::string, std::string> shortNames{
        {"threshold", "-t,"}, {"source", "-s,"}, {"spacing", "--step,"}};
    const auto found = shortNames.find(parameter);
    return (found == shortNames.end() ? std::string() : found->second) + "--" + name;
}

void addOption(CLI::App& command, StepOptions& options, const Parameter& parameter)
{
    std::string help = parameter.help;
    if (!parameter.choices.empty()) {
        help += ": ";
        for (const std::string& choice : parameter.choices)
            help += (&choice == &parameter.choices.front() ? "" : ", ") + choice;
    }
    std::vector<std::string>& texts = options.given[parameter.name];
    CLI::Option* option = command.add_option(optionName(parameter.name), texts, help);
    option->expected(1)->type_name(parameter.kind == Kind::Integer || parameter.kind == Kind::Real ? "NUMBER"
                                                                                                   : "TEXT");
    if (parameter.kind == Kind::Files)
        option->expected(1, 1000)->type_name("FILE ...");
    if (!parameter.fallback.is_null())
        option->default_str(parameter.fallback.is_string() ? parameter.fallback.get<std::string>()
                                                           : parameter.fallback.dump());
    else if (!parameter.optional)
        option->required();
}

Json argumentsOf(const StepOptions& options)
{
    Json given = Json::object();
    for (const Parameter& parameter : options.step->parameters) {
        const std::vector<std::string>& texts = options.given.at(parameter.name);
        if (texts.empty())
            continue;
        if (parameter.kind == Kind::Files)
            given[parameter.name] = texts;
        else
            given[parameter.name] = texts.front();
    }
    return checkedArguments(*options.step, given, options.step->name);
}

int runStep(StepOptions& options)
{
    const Json arguments = argumentsOf(options);
    const auto measure = [&](const std::string& file) {
        Workpiece work;
        loadPicture(file, work);
        options.step->run(work, arguments);
        if (!options.batch.annotate.empty())
            writeAnnotated(outputName(options.batch.annotate, file, options.batch.several()), work);
        if (!options.plot.empty())
            writeHistogramPlot(outputName(options.plot, file, options.batch.several()), work.image);
        return work.findings.back();
    };
    const auto sources = options.given.find("source");
    return options.batch.run(measure, {options.plot},
                             sources == options.given.end() ? std::vector<std::string>{} : sources->second);
}

} // namespace

void addStep(CLI::App& parent, const std::string& commandName, const std::string& stepName, Chosen& chosen)
{
    auto options = std::make_shared<StepOptions>();
    options->step = findStep(stepName);
    CLI::App* command = parent.add_subcommand(commandName, options->step->help);
    options->batch.addTo(*command, stepName != "histogram");
    for (const Parameter& parameter : options->step->parameters)
        addOption(*command, *options, parameter);
    if (stepName == "histogram")
        command->add_option("--plot", options->plot,
                            "Write a picture of the counts; {} stands for the picture's name");
    command->callback([&chosen, options] { chosen = [options] { return runStep(*options); }; });
}

} // namespace ormalux::cli
