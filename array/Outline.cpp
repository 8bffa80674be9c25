#include "array/Outline.h"

#include "array/RecordSort.h"

namespace ormalux {

namespace {

/// An entry of the list by row and column.
struct Entry
{
    std::uint64_t position;
    std::uint32_t index;
};

/// Equal points: their entries stand side by side, in the order of the list.
struct Place
{
    std::uint64_t position;
    std::uint32_t firstEntry;
    std::uint32_t present;
    std::uint32_t removed;
};

std::uint64_t positionOf(POINT p)
{
    const std::uint32_t sign = 0x80000000u;
    return std::uint64_t(DWORD(p.y) ^ sign) << 32 | (DWORD(p.x) ^ sign);
}

/// Whether b lies directly right of a in the same row.
bool neighbours(const Place& a, const Place& b)
{
    return b.position == a.position + 1 && std::uint32_t(b.position) != 0;
}

std::size_t gatherPlaces(std::span<const Entry> entries, Place* places)
{
    std::size_t n = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (n == 0 || places[n - 1].position != entries[i].position)
            places[n++] = {entries[i].position, std::uint32_t(i), 0, 0};
        ++places[n - 1].present;
    }
    return n;
}

/// Every run takes a point away or ends within two steps, so the cost is linear in the entries.
void thinRuns(std::span<Place> places)
{
    for (std::size_t start = 0; start < places.size(); ++start) {
        if (places[start].present == 0)
            continue;
        std::size_t end = start;
        while (end + 1 < places.size() && places[end + 1].present > 0 &&
               neighbours(places[end], places[end + 1]))
            ++end;
        for (std::size_t i = start + 1; i < end; ++i) {
            --places[i].present;
            ++places[i].removed;
        }
    }
}

} // namespace

std::size_t removeRunInteriors(std::span<POINT> points)
{
    const std::size_t n = points.size();
    const auto entries = sorting::scratchFor<Entry>(n);
    const auto places = sorting::scratchFor<Place>(n);
    const auto taken = sorting::scratchFor<bool>(n);
    if (n == 0 || !entries || !places || !taken)
        return 0;
    for (std::size_t i = 0; i < n; ++i)
        entries[i] = {positionOf(points[i]), std::uint32_t(i)};
    sortRecords(std::span<Entry>(entries.get(), n), [](const Entry& e) { return e.position; });
    const std::span<Place> found(places.get(), gatherPlaces({entries.get(), n}, places.get()));
    thinRuns(found);
    std::fill_n(taken.get(), n, false);
    for (const Place& place : found)
        for (std::uint32_t i = 0; i < place.removed; ++i)
            taken[entries[place.firstEntry + i].index] = true;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < n; ++i)
        if (!taken[i])
            points[kept++] = points[i];
    return n - kept;
}

} // namespace ormalux
