#include "cli/Values.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <utility>
#include <vector>

namespace ormalux::cli {

namespace {

[[noreturn]] void refuse(const std::string& text, const char* expected)
{
    throw CLI::ValidationError("'" + text + "'", std::string("expected ") + expected);
}

std::optional<int> wholeNumber(std::string_view text)
{
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

bool isLevel(int value)
{
    return value >= 0 && value <= 255;
}

} // namespace

std::optional<std::vector<int>> parseNumbers(std::string_view text, std::string_view separator)
{
    std::vector<int> found;
    for (;;) {
        const std::size_t at = text.find(separator);
        const auto value = wholeNumber(text.substr(0, at));
        if (!value)
            return std::nullopt;
        found.push_back(*value);
        if (at == std::string_view::npos)
            return found;
        text.remove_prefix(at + separator.size());
    }
}

RECT parseRegion(const std::string& text)
{
    const auto values = parseNumbers(text, ",");
    if (!values || values->size() != 4)
        refuse(text, "a region as x1,y1,x2,y2 (its first and last column and row)");
    RECT region{(*values)[0], (*values)[1], (*values)[2], (*values)[3]};
    if (region.left > region.right)
        std::swap(region.left, region.right);
    if (region.top > region.bottom)
        std::swap(region.top, region.bottom);
    return region;
}

SIZE parseSize(const std::string& text)
{
    const auto values = parseNumbers(text, "x");
    if (!values || values->size() != 2 || (*values)[0] < 1 || (*values)[1] < 1)
        refuse(text, "a size as WxH, both at least 1");
    return {(*values)[0], (*values)[1]};
}

ThresholdChoice parseThreshold(const std::string& text)
{
    if (text == "auto")
        return {};
    const auto values = parseNumbers(text, "..");
    if (!values || values->size() > 2 || !isLevel(values->front()) || !isLevel(values->back()) ||
        values->front() > values->back())
        refuse(text, "'auto', a level from 0 to 255, or a range of levels as LOW..HIGH");
    return {false, values->front(), values->back(), values->size() == 2};
}

ThresholdChoice parsePlainThreshold(const std::string& text)
{
    const auto value = wholeNumber(text);
    if (text != "auto" && (!value || !isLevel(*value)))
        refuse(text, "'auto' or a level from 0 to 255");
    return parseThreshold(text);
}

int parseObject(const std::string& text)
{
    if (text != "white" && text != "black")
        refuse(text, "'white' or 'black'");
    return text == "white" ? 255 : 0;
}

} // namespace ormalux::cli
