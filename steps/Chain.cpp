#include "steps/Chain.h"

#include "steps/Bind.h"
#include "steps/Faults.h"

#include <sstream>

namespace ormalux {

namespace {

std::vector<std::string> splitArguments(const std::string& text)
{
    std::vector<std::string> items;
    std::istringstream stream(text);
    for (std::string item; std::getline(stream, item, ',');)
        items.push_back(item);
    return items;
}

/// Coordinates take as many items as they have numbers, everything else one.
std::size_t itemsOf(const Parameter& parameter)
{
    switch (parameter.kind) {
    case Kind::Region:
    case Kind::Corners:
        return 4;
    case Kind::Point:
    case Kind::Pair:
        return 2;
    case Kind::Triple:
        return 3;
    case Kind::Box:
        return 5;
    default:
        return 1;
    }
}

/// The arguments as the fields of a recipe's step; too many are reported.
Node fieldsOf(const Step& step, const std::vector<std::string>& items, const ArgumentFault& fault)
{
    Node object;
    object.kind = Node::Kind::Object;
    std::size_t next = 0;
    for (const Parameter& parameter : step.parameters) {
        if (next >= items.size())
            break;
        std::string value = items[next++];
        for (std::size_t more = itemsOf(parameter); more > 1 && next < items.size(); --more)
            value += "," + items[next++];
        object.keys.push_back(parameter.name);
        object.keyLines.push_back(0);
        object.items.push_back(Node::ofText(value));
    }
    if (next < items.size())
        fault("", 0, "takes " + std::to_string(step.parameters.size()) + " arguments");
    return object;
}

} // namespace

std::vector<BoundStep> parseChain(const std::vector<std::string>& texts, std::vector<std::string>& why)
{
    std::vector<BoundStep> chain;
    std::vector<std::string> operations;
    for (const Step& step : allSteps())
        if (!step.measures)
            operations.push_back(step.name);
    for (const std::string& text : texts) {
        const std::string number = "step " + std::to_string(&text - texts.data() + 1);
        const std::string name = text.substr(0, text.find(':'));
        const Step* const step = findStep(name);
        if (!step || step->measures) {
            why.push_back(number + ": " + unknownName("operation", name, operations));
            continue;
        }
        const ArgumentFault fault = [&](const std::string& field, int, const std::string& reason) {
            why.push_back(number + " (" + name + "): " + field + (field.empty() ? "" : ": ") + reason);
        };
        const std::vector<std::string> items = name.size() < text.size()
                                                   ? splitArguments(text.substr(name.size() + 1))
                                                   : std::vector<std::string>();
        chain.push_back(bindAlone(*step, fieldsOf(*step, items, fault), fault));
    }
    return chain;
}

std::string chainUsage(const Step& step)
{
    std::string usage = step.name;
    for (const Parameter& parameter : step.parameters) {
        const std::string item = (&parameter == &step.parameters.front() ? ":" : ",") + parameter.name;
        usage += parameter.required() ? item : "[" + item + "]";
    }
    return usage;
}

} // namespace ormalux
