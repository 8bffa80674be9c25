#include "match/ReadingOrder.h"

#include <algorithm>
#include <numeric>

namespace ormalux {

std::vector<std::vector<std::size_t>> linesOf(std::span<const RECT> boxes)
{
    std::vector<std::size_t> order(boxes.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return boxes[a].top < boxes[b].top; });
    std::vector<std::vector<std::size_t>> lines;
    for (const std::size_t i : order) {
        const LONG middle = boxes[i].top + (boxes[i].bottom - boxes[i].top) / 2;
        const auto line = std::find_if(lines.begin(), lines.end(), [&](const auto& candidate) {
            const RECT& topmost = boxes[candidate.front()];
            return middle >= topmost.top && middle <= topmost.bottom;
        });
        if (line == lines.end())
            lines.push_back({i});
        else
            line->push_back(i);
    }
    for (auto& line : lines)
        std::stable_sort(line.begin(), line.end(),
                         [&](std::size_t a, std::size_t b) { return boxes[a].left < boxes[b].left; });
    return lines;
}

std::vector<std::vector<_stMatchResult>> readingOrder(const CMatchResultArray& results)
{
    const auto records = results.records();
    std::vector<RECT> boxes;
    for (const _stMatchResult& each : records)
        boxes.push_back({each.left, each.top, each.right, each.bottom});
    std::vector<std::vector<_stMatchResult>> lines;
    for (const auto& line : linesOf(boxes)) {
        lines.emplace_back();
        for (const std::size_t i : line)
            lines.back().push_back(records[i]);
    }
    return lines;
}

} // namespace ormalux
