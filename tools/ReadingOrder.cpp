#include "tools/ReadingOrder.h"

#include <algorithm>

namespace ormalux {

std::vector<std::vector<_stMatchResult>> readingOrder(CMatchResultArray results)
{
    results.SortTop();
    std::vector<std::vector<_stMatchResult>> lines;
    for (const _stMatchResult& character : results.records()) {
        const LONG middle = character.top + (character.bottom - character.top) / 2;
        const auto line = std::find_if(lines.begin(), lines.end(), [&](const auto& candidate) {
            return middle >= candidate.front().top && middle <= candidate.front().bottom;
        });
        if (line == lines.end())
            lines.push_back({character});
        else
            line->push_back(character);
    }
    for (auto& line : lines)
        std::stable_sort(line.begin(), line.end(),
                         [](const auto& a, const auto& b) { return a.left < b.left; });
    return lines;
}

CString programReadingOrder()
{
    return R"(    // Reading order: a character belongs to the first line beside whose first one its middle lies.
    results.SortTop();
    std::vector<std::vector<_stMatchResult>> lines;
    for (int i = 0; i < results.GetCount(); ++i) {
        const _stMatchResult& r = results[i];
        const int middle = r.top + (r.bottom - r.top) / 2;
        std::size_t line = 0;
        while (line < lines.size() && (middle < lines[line][0].top || middle > lines[line][0].bottom))
            ++line;
        if (line == lines.size())
            lines.emplace_back();
        lines[line].push_back(r);
    }
    for (auto& line : lines)
        std::stable_sort(line.begin(), line.end(), [](const auto& a, const auto& b) { return a.left < b.left; });
)";
}

} // namespace ormalux
