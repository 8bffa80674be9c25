#pragma once

#include <string>
#include <string_view>

namespace ormalux {

/// Text as people may see it on a terminal, in one line: control characters, characters that turn the
/// direction of writing and bytes that are no UTF-8 are written as \n, \t, \r, \x1b or \u202e.
std::string shown(std::string_view text);

/// At most about `room` bytes: of a longer text the middle makes way for "…", so that the beginning (the
/// file) and the end (the reason) stay. Valid UTF-8 is cut between characters.
std::string shortened(std::string_view text, std::size_t room);

/// A cell of a CSV table: quoted where it must be, its line breaks kept inside the quotes, other control
/// characters as shown() writes them. What a spreadsheet would take for a formula gets a leading apostrophe;
/// numbers stay numbers.
std::string csvCell(std::string_view text);

} // namespace ormalux
