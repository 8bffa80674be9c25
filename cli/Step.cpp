#include "cli/Step.h"

#include "platform/Path.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace ormalux::cli {

namespace {

[[noreturn]] void refuse(const std::string& where, const Parameter& parameter, const Json& value,
                         const std::string& why)
{
    throw InputError(where + ": " + parameter.name + ": " +
                     value.dump(-1, ' ', false, Json::error_handler_t::replace) + ": " + why);
}

std::string asText(const Json& value)
{
    return value.is_string() ? value.get<std::string>() : value.dump();
}

Json checkedNumber(const Parameter& parameter, const Json& value, const std::string& where)
{
    const bool whole = parameter.kind == Kind::Integer;
    const std::string range = std::string(whole ? "a whole number" : "a number") + " from " +
                              Json(parameter.low).dump() + " to " + Json(parameter.high).dump();
    double number = 0;
    if (value.is_number()) {
        number = value.get<double>();
    } else if (value.is_string()) {
        const std::string text = value.get<std::string>();
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size())
            refuse(where, parameter, value, "expected " + range);
    } else {
        refuse(where, parameter, value, "expected " + range);
    }
    if (!(number >= parameter.low && number <= parameter.high) || (whole && number != std::floor(number)))
        refuse(where, parameter, value, "expected " + range);
    return whole ? Json(std::int64_t(number)) : Json(number);
}

Json checkedCoordinates(const Parameter& parameter, const Json& value, const std::string& where,
                        std::size_t count)
{
    std::string text = asText(value);
    if (value.is_array()) {
        text.clear();
        for (const Json& item : value)
            text += (text.empty() ? "" : ",") + item.dump();
    }
    const auto numbers = parseNumbers(text, ",");
    if (!numbers || numbers->size() != count)
        refuse(where, parameter, value, "expected " + std::to_string(count) + " whole numbers");
    return *numbers;
}

/// The entries of a square, row by row: a list, or a text with blanks between them.
Json checkedKernel(const Parameter& parameter, const Json& value, const std::string& where)
{
    constexpr std::size_t largestSide = 31;
    std::string text = asText(value);
    if (value.is_array()) {
        text.clear();
        for (const Json& item : value)
            text += (text.empty() ? "" : " ") + item.dump();
    }
    const auto numbers = parseNumbers(text, " ");
    const std::size_t side = numbers ? std::size_t(std::lround(std::sqrt(double(numbers->size())))) : 0;
    if (!numbers || side * side != numbers->size() || side > largestSide)
        refuse(where, parameter, value,
               "expected the whole numbers of a square, row by row, of at most 31 x 31");
    return *numbers;
}

Json checkedFiles(const Parameter& parameter, const Json& value, const std::string& where)
{
    Json files = value.is_array() ? value : Json::array({value});
    for (const Json& file : files)
        if (!file.is_string() || file.get<std::string>().empty())
            refuse(where, parameter, value, "expected a file's name or a list of names");
    if (files.empty())
        refuse(where, parameter, value, "expected at least one file");
    return files;
}

} // namespace

Json checkedValue(const Parameter& parameter, const Json& value, const std::string& where)
{
    try {
        switch (parameter.kind) {
        case Kind::Integer:
        case Kind::Real:
            return checkedNumber(parameter, value, where);
        case Kind::Choice: {
            const std::string text = asText(value);
            if (std::find(parameter.choices.begin(), parameter.choices.end(), text) !=
                parameter.choices.end())
                return text;
            std::string all;
            for (const std::string& choice : parameter.choices)
                all += (all.empty() ? "" : ", ") + choice;
            refuse(where, parameter, value, "expected one of " + all);
        }
        case Kind::Threshold:
            parseThreshold(asText(value));
            return asText(value);
        case Kind::Level:
            parsePlainThreshold(asText(value));
            return asText(value);
        case Kind::Region: {
            Json corners = checkedCoordinates(parameter, value, where, 4);
            if (parameter.name == "roi") {
                const RECT ordered = parseRegion(std::to_string(corners[0].get<int>()) + "," +
                                                 std::to_string(corners[1].get<int>()) + "," +
                                                 std::to_string(corners[2].get<int>()) + "," +
                                                 std::to_string(corners[3].get<int>()));
                corners = {ordered.left, ordered.top, ordered.right, ordered.bottom};
            }
            return corners;
        }
        case Kind::Point:
            return checkedCoordinates(parameter, value, where, 2);
        case Kind::Size:
            parseSize(asText(value));
            return asText(value);
        case Kind::Text:
            if (!value.is_string())
                refuse(where, parameter, value, "expected a text");
            return value;
        case Kind::Files:
            return checkedFiles(parameter, value, where);
        case Kind::Kernel:
            return checkedKernel(parameter, value, where);
        }
    } catch (const CLI::ValidationError& error) {
        throw InputError(where + ": " + parameter.name + ": " + error.what());
    }
    return value;
}

Json checkedArguments(const Step& step, const Json& given, const std::string& where)
{
    Json checked = Json::object();
    for (const Parameter& parameter : step.parameters) {
        const auto found = given.find(parameter.name);
        if (found != given.end())
            checked[parameter.name] = checkedValue(parameter, *found, where);
        else if (!parameter.fallback.is_null())
            checked[parameter.name] = parameter.fallback;
        else if (!parameter.optional)
            throw InputError(where + ": " + parameter.name + " is missing");
    }
    for (const auto& [name, value] : given.items())
        if (std::none_of(step.parameters.begin(), step.parameters.end(),
                         [&](const Parameter& parameter) { return parameter.name == name; }))
            throw InputError(where + ": unknown field " + name);
    return checked;
}

RECT Workpiece::region(const Json& arguments) const
{
    const auto found = arguments.find("roi");
    if (found == arguments.end())
        return {0, 0, image.GetWidth() - 1, image.GetHeight() - 1};
    const Json& corners = *found;
    return regionWithin(image, file, {corners[0], corners[1], corners[2], corners[3]});
}

std::string Workpiece::sourcePath(const std::string& name) const
{
    const std::filesystem::path path = nativePath(name.c_str());
    if (sourceFolder.empty() || path.is_absolute())
        return name;
    const std::u8string joined = (nativePath(sourceFolder.c_str()) / path).u8string();
    return std::string(joined.begin(), joined.end());
}

const std::vector<Step>& allSteps()
{
    static const std::vector<Step> steps = [] {
        std::vector<Step> all;
        for (const auto& part : {imageSteps(), planeSteps(), blobSteps(), matchSteps(), gaugeSteps(),
                                 sampleSteps(), histogramSteps()})
            all.insert(all.end(), part.begin(), part.end());
        return all;
    }();
    return steps;
}

const Step* findStep(const std::string& name)
{
    for (const Step& step : allSteps())
        if (step.name == name)
            return &step;
    return nullptr;
}

} // namespace ormalux::cli
