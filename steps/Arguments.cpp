#include "steps/Arguments.h"

#include "steps/ArgumentText.h"
#include "steps/Faults.h"
#include "steps/JsonText.h"
#include "steps/Step.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace ormalux {

namespace {

/// What a value is read by: its text, whether it was written as one, as a number or as a list of them.
std::string asText(const Node& value)
{
    return value.isText() ? value.text : nodeText(value);
}

std::string listText(const Node& value, const char* separator)
{
    if (!value.isList())
        return asText(value);
    std::string text;
    for (const Node& item : value.items)
        text += (text.empty() ? "" : separator) + asText(item);
    return text;
}

std::string rangeText(const Parameter& parameter, bool whole, int count = 1)
{
    const auto end = [](double value) {
        std::string text;
        appendReal(text, value);
        return text;
    };
    const std::string of = count == 1 ? (whole ? "a whole number" : "a number")
                                      : std::to_string(count) + (whole ? " whole numbers" : " numbers");
    return of + " from " + end(parameter.low) + " to " + end(parameter.high);
}

std::optional<double> numberOf(const Node& value)
{
    return value.isNumber() ? std::optional(value.real)
           : value.isText() ? parseReal(value.text)
                            : std::nullopt;
}

bool inRange(const Parameter& parameter, double number, bool whole)
{
    return number >= parameter.low && number <= parameter.high && (!whole || number == std::floor(number));
}

std::optional<Argument> readNumber(const Parameter& parameter, const Node& value, std::string& why)
{
    const bool whole = parameter.kind == Kind::Integer;
    const auto number = numberOf(value);
    if (!number || !inRange(parameter, *number, whole)) {
        why = "expected " + rangeText(parameter, whole);
        return std::nullopt;
    }
    return whole ? Argument(std::int64_t(*number)) : Argument(*number);
}

std::optional<Argument> readFlag(const Node& value, std::string& why)
{
    const std::string text = asText(value);
    if (text == "true" || text == "false")
        return text == "true";
    why = "expected true or false";
    return std::nullopt;
}

std::optional<Argument> readChoice(const Parameter& parameter, const Node& value, std::string& why)
{
    const std::string text = asText(value);
    if (std::find(parameter.choices.begin(), parameter.choices.end(), text) != parameter.choices.end())
        return text;
    std::string all;
    for (const std::string& choice : parameter.choices)
        all += (all.empty() ? "" : ", ") + choice;
    why = "expected one of " + all;
    const std::string nearest = value.isText() ? nearestName(value.text, parameter.choices) : std::string();
    if (!nearest.empty())
        why += "; the nearest is \"" + nearest + "\"";
    return std::nullopt;
}

/// Numbers of a list or of a text, as many as there must be.
std::optional<Argument> readReals(const Parameter& parameter, const Node& value, std::size_t count,
                                  std::string& why)
{
    const bool bounded = parameter.low < parameter.high;
    const bool whole = parameter.kind == Kind::Triple;
    auto numbers = parseReals(listText(value, ","), ",");
    const auto fits = [&](double number) {
        return !bounded ? std::abs(number) <= 2147483647.0 : inRange(parameter, number, whole);
    };
    if (!numbers || numbers->size() != count || !std::all_of(numbers->begin(), numbers->end(), fits)) {
        why = "expected " +
              (bounded ? rangeText(parameter, whole, int(count)) : std::to_string(count) + " numbers");
        return std::nullopt;
    }
    return std::move(*numbers);
}

std::optional<Argument> readRegion(const Parameter& parameter, const Node& value, std::string& why)
{
    const auto corners = parseNumbers(listText(value, ","), ",");
    const auto region = parseRegion(listText(value, ","));
    if (!region)
        why = "expected 4 whole numbers";
    // A region that a step cannot do without is the size of its result: reversed corners are a slip.
    else if (parameter.required() && (region->left != (*corners)[0] || region->top != (*corners)[1]))
        why = "the corners are reversed";
    else
        return *region;
    return std::nullopt;
}

/// The entries of a square, row by row: a list, or a text with blanks between them.
std::optional<Argument> readKernel(const Node& value, std::string& why)
{
    constexpr std::size_t largestSide = 31;
    const auto numbers = parseNumbers(listText(value, " "), " ");
    const std::size_t side = numbers ? std::size_t(std::lround(std::sqrt(double(numbers->size())))) : 0;
    if (numbers && side * side == numbers->size() && side <= largestSide)
        return std::vector<long>(numbers->begin(), numbers->end());
    why = "expected the whole numbers of a square, row by row, of at most 31 x 31";
    return std::nullopt;
}

std::optional<Argument> readFiles(const Node& value, std::string& why)
{
    std::vector<std::string> files;
    const std::vector<Node> single{value};
    for (const Node& file : value.isList() ? value.items : single) {
        if (!file.isText() || file.text.empty()) {
            why = "expected a file's name or a list of names";
            return std::nullopt;
        }
        files.push_back(file.text);
    }
    if (!files.empty())
        return files;
    why = "expected at least one file";
    return std::nullopt;
}

std::optional<Argument> readExtent(const Parameter& parameter, const Node& value, std::string& why)
{
    const std::string text = asText(value);
    const auto one = parseNumbers(text, ",");
    const auto both = one && one->size() == 1 && one->front() >= 1
                          ? std::optional(SIZE{one->front(), one->front()})
                          : parseSize(text);
    if (both && inRange(parameter, both->cx, true) && inRange(parameter, both->cy, true))
        return *both;
    why = "expected " + rangeText(parameter, true) + ", or two of them as \"WxH\"";
    return std::nullopt;
}

std::optional<Argument> readFractions(const Parameter& parameter, const Node& value, std::string& why)
{
    auto numbers = parseReals(parameter.fallback, ",").value_or(std::vector<double>());
    numbers.resize(parameter.choices.size());
    for (std::size_t i = 0; i < value.keys.size(); ++i) {
        const auto known = std::find(parameter.choices.begin(), parameter.choices.end(), value.keys[i]);
        const auto number = numberOf(value.items[i]);
        if (known == parameter.choices.end()) {
            why = unknownName("field", value.keys[i], parameter.choices);
            return std::nullopt;
        }
        if (!number || !inRange(parameter, *number, false)) {
            why = value.keys[i] + ": expected " + rangeText(parameter, false);
            return std::nullopt;
        }
        numbers[std::size_t(known - parameter.choices.begin())] = *number;
    }
    if (value.isObject() || asText(value) == parameter.fallback)
        return numbers;
    const auto listed = parseReals(listText(value, ","), ",");
    const auto fits = [&](double number) { return inRange(parameter, number, false); };
    if (listed && listed->size() == numbers.size() && std::all_of(listed->begin(), listed->end(), fits))
        return *listed;
    why = "expected an object of numbers";
    return std::nullopt;
}

/// The columns that a condition or an order may name: those that hold numbers, or all.
std::vector<std::string> columnNames(const Step& step, bool numbersOnly)
{
    std::vector<std::string> names;
    for (const Column& column : step.columns)
        if (!numbersOnly || column.type != CellType::Text)
            names.push_back(column.name);
    return names;
}

std::optional<Argument> readConditions(const Step& step, const Node& value, std::string& why)
{
    const std::vector<std::string> columns = columnNames(step, true);
    std::vector<Condition> conditions;
    if (!value.isObject()) {
        why = "expected an object of columns and their ranges, as {\"area\": [50, null]}";
        return std::nullopt;
    }
    for (std::size_t i = 0; i < value.keys.size(); ++i) {
        const Node& range = value.items[i];
        if (std::find(columns.begin(), columns.end(), value.keys[i]) == columns.end()) {
            why = unknownName("column", value.keys[i], columns);
            return std::nullopt;
        }
        double ends[2];
        bool right = range.isList() && range.items.size() == 2;
        for (int end = 0; right && end < 2; ++end) {
            const Node& given = range.items[std::size_t(end)];
            const auto number = numberOf(given);
            right = number || given.kind == Node::Kind::Null;
            ends[end] = number.value_or(std::numeric_limits<double>::quiet_NaN());
        }
        if (!right || ends[0] > ends[1]) {
            why = value.keys[i] + ": expected [low, high], in order, null for an open end";
            return std::nullopt;
        }
        conditions.push_back({value.keys[i], ends[0], ends[1]});
    }
    return conditions;
}

std::optional<Argument> readColumn(const Step& step, const Node& value, std::string& why)
{
    const std::vector<std::string> columns = columnNames(step, false);
    const std::string text = asText(value);
    const std::string name = text.substr(text.starts_with('-') ? 1 : 0);
    if (std::find(columns.begin(), columns.end(), name) != columns.end())
        return text;
    why = unknownName("column", name, columns);
    return std::nullopt;
}

template <class Value>
std::optional<Argument> orElse(const std::optional<Value>& value, const char* form, std::string& why)
{
    if (value)
        return Argument(*value);
    why = std::string("expected ") + form;
    return std::nullopt;
}

} // namespace

std::optional<Argument> readArgument(const Step& step, const Parameter& parameter, const Node& value,
                                     std::string& why)
{
    switch (parameter.kind) {
    case Kind::Integer:
    case Kind::Real:
        return readNumber(parameter, value, why);
    case Kind::Flag:
        return readFlag(value, why);
    case Kind::Choice:
        return readChoice(parameter, value, why);
    case Kind::Threshold:
        return orElse(parseThreshold(asText(value)), thresholdForm, why);
    case Kind::Level:
        return orElse(parseLevel(asText(value)), levelForm, why);
    case Kind::Region:
        return readRegion(parameter, value, why);
    case Kind::Corners:
        return readReals(parameter, value, 4, why);
    case Kind::Point:
    case Kind::Pair:
        return readReals(parameter, value, 2, why);
    case Kind::Triple:
        return readReals(parameter, value, 3, why);
    case Kind::Box:
        return readReals(parameter, value, 5, why);
    case Kind::Size:
        return orElse(parseSize(asText(value)), sizeForm, why);
    case Kind::Extent:
        return readExtent(parameter, value, why);
    case Kind::Text:
        return orElse(value.isText() ? std::optional(value.text) : std::nullopt, "a text", why);
    case Kind::Files:
        return readFiles(value, why);
    case Kind::Kernel:
        return readKernel(value, why);
    case Kind::Reference:
        return orElse(value.isText() ? parseReference(value.text) : std::nullopt,
                      "the name of a step before, as \"hole\" or \"hole[2]\"", why);
    case Kind::Fractions:
        return readFractions(parameter, value, why);
    case Kind::Conditions:
        return readConditions(step, value, why);
    case Kind::Column:
        return readColumn(step, value, why);
    }
    return std::nullopt;
}

Arguments readArguments(const Step& step, const Node& object, const std::vector<std::string>& besides,
                        const ArgumentFault& fault)
{
    Arguments arguments(step);
    std::vector<std::string> known;
    for (std::size_t i = 0; i < step.parameters.size(); ++i) {
        const Parameter& parameter = step.parameters[i];
        known.push_back(parameter.name);
        const Node* const given = object.find(parameter.name);
        if (!given && parameter.fallback.empty()) {
            if (!parameter.optional)
                fault(parameter.name, object.line, "is missing");
            continue;
        }
        std::string why;
        auto value = readArgument(step, parameter, given ? *given : Node::ofText(parameter.fallback), why);
        if (value)
            arguments.at(i) = std::move(*value);
        else
            fault(parameter.name, given ? given->line : object.line,
                  (given ? shownValue(*given) + ": " : std::string()) + why);
    }
    known.insert(known.end(), besides.begin(), besides.end());
    for (std::size_t i = 0; i < object.keys.size(); ++i)
        if (std::find(known.begin(), known.end(), object.keys[i]) == known.end())
            fault(object.keys[i], object.keyLines[i], unknownName("field", object.keys[i], known));
    return arguments;
}

Arguments::Arguments(const Step& step) : m_step(&step), m_values(step.parameters.size()) {}

const Argument& Arguments::value(const char* name) const
{
    for (std::size_t i = 0; i < m_values.size(); ++i)
        if (m_step->parameters[i].name == name)
            return m_values[i];
    static const Argument none;
    return none;
}

std::optional<RECT> Arguments::region(const char* name) const
{
    return given(name) ? std::optional(std::get<RECT>(value(name))) : std::nullopt;
}

SIZE Arguments::size(const char* name, SIZE otherwise) const
{
    return given(name) ? std::get<SIZE>(value(name)) : otherwise;
}

std::vector<Condition> Arguments::conditions(const char* name) const
{
    return given(name) ? std::get<std::vector<Condition>>(value(name)) : std::vector<Condition>();
}

} // namespace ormalux
