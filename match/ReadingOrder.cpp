#include "match/ReadingOrder.h"

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

} // namespace ormalux
