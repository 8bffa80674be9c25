#include "platform/SafeText.h"

#include <charconv>
#include <cstdint>
#include <cstdio>

namespace ormalux {

namespace {

/// A character of the text, or a byte that belongs to none.
struct Character
{
    std::size_t bytes = 1;
    char32_t code = 0;
    bool valid = false;
};

Character characterAt(std::string_view text, std::size_t at)
{
    const auto byte = [&](std::size_t i) { return std::uint8_t(text[at + i]); };
    const std::uint8_t first = byte(0);
    if (first < 0x80)
        return {1, first, true};
    const std::size_t bytes = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() - at < bytes)
        return {};
    char32_t code = first & (0xFFu >> (bytes + 1));
    for (std::size_t i = 1; i < bytes; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return {};
        code = code << 6 | (byte(i) & 0x3Fu);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xD800 && code < 0xE000;
    if (code < smallest[bytes] || code > 0x10FFFF || surrogate)
        return {};
    return {bytes, code, true};
}

/// Control characters, line separators, and what turns the direction of writing.
bool isHarmful(char32_t code)
{
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x200E || code == 0x200F ||
           (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

std::string escaped(const char* format, unsigned code)
{
    char text[16];
    std::snprintf(text, sizeof text, format, code);
    return text;
}

std::string escaped(char32_t code)
{
    switch (code) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return escaped(code < 0x100 ? "\\x%02x" : "\\u%04x", unsigned(code));
    }
}

std::string shownExcept(std::string_view text, std::string_view kept)
{
    std::string safe;
    for (std::size_t at = 0; at < text.size();) {
        const Character character = characterAt(text, at);
        if (!character.valid)
            safe += escaped("\\x%02x", std::uint8_t(text[at]));
        else if (isHarmful(character.code) && kept.find(text[at]) == std::string_view::npos)
            safe += escaped(character.code);
        else
            safe += text.substr(at, character.bytes);
        at += character.bytes;
    }
    return safe;
}

bool isContinuation(char byte)
{
    return (byte & 0xC0) == 0x80;
}

bool isNumber(std::string_view text)
{
    if (text.starts_with('+'))
        text.remove_prefix(1);
    double value = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
    return end.ec == std::errc() && end.ptr == text.data() + text.size();
}

bool looksLikeFormula(std::string_view text)
{
    return !text.empty() && std::string_view("=+-@\t\r").find(text[0]) != std::string_view::npos &&
           !isNumber(text);
}

} // namespace

std::string shown(std::string_view text)
{
    return shownExcept(text, {});
}

std::string shortened(std::string_view text, std::size_t room)
{
    if (text.size() <= room)
        return std::string(text);
    std::size_t head = room / 2, tail = text.size() - (room - room / 2);
    for (int i = 0; i < 3 && head > 0 && isContinuation(text[head]); ++i)
        --head;
    for (int i = 0; i < 3 && tail < text.size() && isContinuation(text[tail]); ++i)
        ++tail;
    return std::string(text.substr(0, head)) + "…" + std::string(text.substr(tail));
}

std::string csvCell(std::string_view text)
{
    const std::string cell = (looksLikeFormula(text) ? "'" : "") + shownExcept(text, "\n\r\t");
    if (cell.find_first_of(",\"\r\n") == std::string::npos)
        return cell;
    std::string quoted = "\"";
    for (const char c : cell) {
        if (c == '"')
            quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

} // namespace ormalux
