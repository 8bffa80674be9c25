#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

namespace ormalux {

/// The first index at or behind start (below 0 counts as 0) whose record matches, or -1.
template <class Record, class Matches>
int findFrom(std::span<const Record> records, int start, Matches matches)
{
    const std::size_t first = std::size_t(std::max(start, 0));
    if (first >= records.size())
        return -1;
    const auto found = std::find_if(records.begin() + std::ptrdiff_t(first), records.end(), matches);
    return found == records.end() ? -1 : int(found - records.begin());
}

} // namespace ormalux
