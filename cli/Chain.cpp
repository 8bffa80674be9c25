#include "cli/Chain.h"

#include <sstream>

namespace ormalux::cli {

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
    return parameter.kind == Kind::Region ? 4 : parameter.kind == Kind::Point ? 2 : 1;
}

} // namespace

std::vector<BoundStep> parseChain(const std::vector<std::string>& texts)
{
    std::vector<BoundStep> chain;
    for (const std::string& text : texts) {
        const std::string name = text.substr(0, text.find(':'));
        const Step* const step = findStep(name);
        if (!step || step->measures)
            throw InputError("step " + std::to_string(chain.size() + 1) + ": " + name +
                             ": no such operation");
        const std::string where = "step " + std::to_string(chain.size() + 1) + " (" + name + ")";
        const std::vector<std::string> items = name.size() < text.size()
                                                   ? splitArguments(text.substr(name.size() + 1))
                                                   : std::vector<std::string>();
        Json given = Json::object();
        std::size_t next = 0;
        for (const Parameter& parameter : step->parameters) {
            if (next >= items.size())
                break;
            std::string value = items[next++];
            for (std::size_t more = itemsOf(parameter); more > 1 && next < items.size(); --more)
                value += "," + items[next++];
            given[parameter.name] = value;
        }
        if (next < items.size())
            throw InputError(where + ": takes " + std::to_string(step->parameters.size()) + " arguments");
        chain.push_back({step, checkedArguments(*step, given, where)});
    }
    return chain;
}

} // namespace ormalux::cli
