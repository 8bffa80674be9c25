#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ormalux {

// JSON as text. Results repeat to the byte: the same values give the same text on every machine.

/// In the shortest form that reads back as the same number, whole ones with ".0"; null for what is no number.
void appendReal(std::string& json, double value);
void appendInteger(std::string& json, std::int64_t value);
/// Quoted and escaped; bytes that are no UTF-8 become the replacement character.
void appendText(std::string& json, std::string_view text);

} // namespace ormalux
