#include "steps/ArgumentText.h"

#include <charconv>
#include <cmath>
#include <utility>

namespace ormalux {

namespace {

template <class Number>
std::optional<Number> wholeText(std::string_view text)
{
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

template <class Number>
std::optional<std::vector<Number>> numbersOf(std::string_view text, std::string_view separator)
{
    std::vector<Number> found;
    for (;;) {
        const std::size_t at = text.find(separator);
        const auto value = wholeText<Number>(text.substr(0, at));
        if (!value)
            return std::nullopt;
        found.push_back(*value);
        if (at == std::string_view::npos)
            return found;
        text.remove_prefix(at + separator.size());
    }
}

bool isLevel(int value)
{
    return value >= 0 && value <= 255;
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

} // namespace

std::optional<std::vector<int>> parseNumbers(std::string_view text, std::string_view separator)
{
    return numbersOf<int>(text, separator);
}

std::optional<std::vector<double>> parseReals(std::string_view text, std::string_view separator)
{
    auto numbers = numbersOf<double>(text, separator);
    for (std::size_t i = 0; numbers && i < numbers->size(); ++i)
        if (!std::isfinite((*numbers)[i]))
            return std::nullopt;
    return numbers;
}

std::optional<double> parseReal(std::string_view text)
{
    const auto number = wholeText<double>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<RECT> parseRegion(std::string_view text)
{
    const auto values = parseNumbers(text, ",");
    if (!values || values->size() != 4)
        return std::nullopt;
    RECT region{(*values)[0], (*values)[1], (*values)[2], (*values)[3]};
    if (region.left > region.right)
        std::swap(region.left, region.right);
    if (region.top > region.bottom)
        std::swap(region.top, region.bottom);
    return region;
}

std::optional<SIZE> parseSize(std::string_view text)
{
    const auto values = parseNumbers(text, "x");
    if (!values || values->size() != 2 || (*values)[0] < 1 || (*values)[1] < 1)
        return std::nullopt;
    return SIZE{(*values)[0], (*values)[1]};
}

std::optional<ThresholdChoice> parseThreshold(std::string_view text)
{
    if (text == "auto")
        return ThresholdChoice{true, 0, 0, false, "auto"};
    const auto values = parseNumbers(text, "..");
    if (!values || values->size() > 2 || !isLevel(values->front()) || !isLevel(values->back()) ||
        values->front() > values->back())
        return std::nullopt;
    return ThresholdChoice{false, values->front(), values->back(), values->size() == 2, std::string(text)};
}

std::optional<ThresholdChoice> parseLevel(std::string_view text)
{
    auto choice = parseThreshold(text);
    return choice && choice->pair ? std::nullopt : choice;
}

bool isName(std::string_view text)
{
    if (text.empty() || !isLetter(text.front()))
        return false;
    for (const char c : text)
        if (!isLetter(c) && !(c >= '0' && c <= '9') && c != '_')
            return false;
    return true;
}

std::optional<RowReference> parseReference(std::string_view text)
{
    const std::size_t bracket = text.find('[');
    RowReference reference{std::string(text.substr(0, bracket)), 1, -1};
    if (bracket != std::string_view::npos) {
        const auto row = text.back() == ']'
                             ? wholeText<int>(text.substr(bracket + 1, text.size() - bracket - 2))
                             : std::nullopt;
        if (!row || *row < 1)
            return std::nullopt;
        reference.row = *row;
    }
    return isName(reference.name) ? std::optional(reference) : std::nullopt;
}

} // namespace ormalux
