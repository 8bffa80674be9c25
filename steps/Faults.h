#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ormalux {

/// What is wrong with a recipe, all of it, each with the place where it stands.
class Faults
{
public:
    /// where is "step NAME, field", "limit 2, of" and the like; empty when the document itself is meant.
    void add(const std::string& file, int line, const std::string& where, const std::string& what);

    bool empty() const { return m_lines.empty(); }
    std::size_t count() const { return m_lines.size(); }
    const std::vector<std::string>& lines() const { return m_lines; }
    /// A line each, `FILE:LINE: where: what`, without the last line end.
    std::string text() const;

private:
    std::vector<std::string> m_lines;
};

/// The known name that a mistyped one is nearest to; empty when none is near.
std::string nearestName(std::string_view name, const std::vector<std::string>& known);

/// `unknown KIND "name"`, with the nearest known name where there is one.
std::string unknownName(const char* kind, std::string_view name, const std::vector<std::string>& known);

/// A text for a line of a message: made safe to be shown and shortened to a length.
std::string oneLine(std::string_view text, std::size_t length = 200);

} // namespace ormalux
