#include "steps/Faults.h"

#include "platform/SafeText.h"

#include <algorithm>
#include <numeric>

namespace ormalux {

namespace {

constexpr std::size_t mostFaults = 100;
constexpr std::size_t longestName = 60;

/// Letters to insert, to drop, to exchange or to swap with their neighbour.
std::size_t editDistance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> before(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t(0));
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool same = a[i - 1] == b[j - 1];
            row[j] = std::min({row[j - 1] + 1, last[j] + 1, last[j - 1] + (same ? 0 : 1)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before.swap(last);
        last.swap(row);
    }
    return last.back();
}

} // namespace

void Faults::add(const std::string& file, int line, const std::string& where, const std::string& what)
{
    if (m_lines.size() > mostFaults)
        return;
    if (m_lines.size() == mostFaults) {
        m_lines.push_back(oneLine(file) + ": further faults are not listed");
        return;
    }
    std::string text = oneLine(file) + ":";
    if (line > 0)
        text += std::to_string(line) + ":";
    text += " ";
    if (!where.empty())
        text += oneLine(where) + ": ";
    m_lines.push_back(text + oneLine(what, 400));
}

std::string Faults::text() const
{
    std::string all;
    for (const std::string& line : m_lines)
        all += (all.empty() ? "" : "\n") + line;
    return all;
}

std::string nearestName(std::string_view name, const std::vector<std::string>& known)
{
    if (name.size() > longestName)
        return {};
    std::size_t best = std::max<std::size_t>(1, name.size() / 2); // farther is another word
    std::string nearest;
    for (const std::string& candidate : known) {
        if (candidate.size() > longestName)
            continue;
        const std::size_t distance = editDistance(name, candidate);
        if (distance < best || (distance == best && nearest.empty())) {
            best = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

std::string unknownName(const char* kind, std::string_view name, const std::vector<std::string>& known)
{
    const std::string nearest = nearestName(name, known);
    return std::string("unknown ") + kind + " \"" + oneLine(name, 60) + "\"" +
           (nearest.empty() ? std::string() : ", the nearest is \"" + nearest + "\"");
}

std::string oneLine(std::string_view text, std::size_t length)
{
    // Cut before it is escaped as well: escapes make a text up to four times as long.
    return shortened(shown(shortened(text, 4 * length)), length);
}

} // namespace ormalux
