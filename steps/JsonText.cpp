#include "steps/JsonText.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <cmath>

namespace ormalux {

void appendReal(std::string& json, double value)
{
    if (!std::isfinite(value)) {
        json += "null";
        return;
    }
    char digits[64];
    json.append(digits, nlohmann::detail::to_chars(digits, digits + sizeof digits, value));
}

void appendInteger(std::string& json, std::int64_t value)
{
    char digits[24];
    json.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void appendText(std::string& json, std::string_view text)
{
    bool plain = true;
    for (const char c : text)
        plain = plain && c >= 32 && c < 127 && c != '"' && c != '\\';
    if (plain)
        json.append(1, '"').append(text).append(1, '"');
    else
        json +=
            nlohmann::json(std::string(text)).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

} // namespace ormalux
