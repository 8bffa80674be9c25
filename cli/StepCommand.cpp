#include "cli/Annotation.h"
#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/HistogramPlot.h"
#include "cli/Input.h"
#include "steps/Bind.h"
#include "steps/Faults.h"

#include <algorithm>
#include <map>
#include <memory>

namespace ormalux::cli {

namespace {

/// One measuring step as a command: its parameters are the options.
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

void addOption(Command& command, StepOptions& options, const Parameter& parameter)
{
    Option option{optionName(parameter.name), parameter.help, parameter.required(), parameter.fallback};
    for (const std::string& choice : parameter.choices)
        option.help += (&choice == &parameter.choices.front() ? ": " : ", ") + choice;
    const bool number = parameter.kind == Kind::Integer || parameter.kind == Kind::Real;
    option.type = parameter.kind == Kind::Files ? "FILE ..." : number ? "NUMBER" : "TEXT";
    std::vector<std::string>& texts = options.given[parameter.name];
    if (parameter.kind == Kind::Files)
        command.texts(option, texts);
    else
        command.single(option, texts);
}

/// Objects are written as in recipes, all else as plain text.
Node valueOf(const Parameter& parameter, const std::string& text)
{
    Node object;
    Faults ignored;
    const bool isObject = parameter.kind == Kind::Conditions || parameter.kind == Kind::Fractions;
    return isObject && readDocument(text, parameter.name, ignored, object) ? object : Node::ofText(text);
}

/// The options as the fields of a recipe's step.
Node fieldsOf(const StepOptions& options)
{
    Node object;
    object.kind = Node::Kind::Object;
    for (const Parameter& parameter : options.step->parameters) {
        const std::vector<std::string>& texts = options.given.at(parameter.name);
        if (texts.empty())
            continue;
        Node list;
        list.kind = Node::Kind::List;
        for (const std::string& text : texts)
            list.items.push_back(Node::ofText(text));
        object.keys.push_back(parameter.name);
        object.keyLines.push_back(0);
        object.items.push_back(parameter.kind == Kind::Files ? list : valueOf(parameter, texts.front()));
    }
    return object;
}

int runStep(StepOptions& options)
{
    const BoundStep bound = bindAlone(*options.step, fieldsOf(options),
                                      [&](const std::string& field, int, const std::string& why) {
                                          throw InputError(options.step->name + ": " + field + ": " + why);
                                      });
    Findings found;
    const auto measure = [&](const std::string& file) -> const Findings& {
        Workpiece piece;
        loadPicture(file, piece);
        found.start(bound.layout);
        orInputError(file, [&] { bound.operation->run(piece.work, found); });
        found.finish();
        if (!options.batch.annotate.empty()) {
            Annotation annotation;
            annotation.add(*bound.step, found);
            annotation.write(outputName(options.batch.annotate, file, options.batch.several()), piece.work);
        }
        if (!options.plot.empty())
            writeHistogramPlot(outputName(options.plot, file, options.batch.several()), piece.work.gray());
        return found;
    };
    const auto sources = options.given.find("source");
    return options.batch.run(measure, {options.plot},
                             sources == options.given.end() ? std::vector<std::string>{} : sources->second);
}

} // namespace

void addStep(Command& parent, const std::string& commandName, const std::string& stepName)
{
    auto options = std::make_shared<StepOptions>();
    options->step = findStep(stepName);
    Command command = parent.add(commandName, options->step->help);
    options->batch.addTo(command, stepName != "histogram");
    for (const Parameter& parameter : options->step->parameters)
        addOption(command, *options, parameter);
    if (stepName == "histogram")
        command.text({"--plot", "Write a picture of the counts; {} stands for the picture's name"},
                     options->plot);
    command.runs([options] { return runStep(*options); });
}

} // namespace ormalux::cli
