#include "steps/MatchSearch.h"

#include <algorithm>
#include <unordered_map>

namespace ormalux {

namespace {

std::int64_t area(LONG left, LONG top, LONG right, LONG bottom)
{
    return right < left || bottom < top ? 0
                                        : (std::int64_t(right) - left + 1) * (std::int64_t(bottom) - top + 1);
}

bool samePart(const _stMatchResult& a, const _stMatchResult& b)
{
    const std::int64_t shared = area(std::max(a.left, b.left), std::max(a.top, b.top),
                                     std::min(a.right, b.right), std::min(a.bottom, b.bottom));
    return 2 * shared >
           std::min(area(a.left, a.top, a.right, a.bottom), area(b.left, b.top, b.right, b.bottom));
}

/// The parts that are kept, by where they lie: those that overlap a box are found among few.
class KeptParts
{
public:
    bool holds(const _stMatchResult& part) const
    {
        bool held = false;
        forEachCell(part, [&](std::uint64_t cell) {
            const auto found = m_cells.find(cell);
            if (!held && found != m_cells.end())
                held = std::any_of(found->second.begin(), found->second.end(),
                                   [&](std::size_t i) { return samePart(part, m_parts[i]); });
        });
        return held;
    }
    void add(const _stMatchResult& part)
    {
        forEachCell(part, [&](std::uint64_t cell) { m_cells[cell].push_back(m_parts.size()); });
        m_parts.push_back(part);
    }
    std::vector<_stMatchResult> take() { return std::move(m_parts); }

private:
    static constexpr LONG side = 32;

    template <class Body>
    static void forEachCell(const _stMatchResult& part, const Body& body)
    {
        for (LONG y = part.top / side; y <= part.bottom / side; ++y)
            for (LONG x = part.left / side; x <= part.right / side; ++x)
                body(std::uint64_t(std::uint32_t(y)) << 32 | std::uint32_t(x));
    }

    std::vector<_stMatchResult> m_parts;
    std::unordered_map<std::uint64_t, std::vector<std::size_t>> m_cells;
};

/// Keeps of every group of overlapping results the best.
std::vector<_stMatchResult> withoutRepeats(std::vector<_stMatchResult> all)
{
    sortParts(all, "yield");
    KeptParts kept;
    for (const _stMatchResult& part : all)
        if (!kept.holds(part))
            kept.add(part);
    return kept.take();
}

void append(std::vector<_stMatchResult>& parts, CMatchResultArray& results, const RECT& region, int threshold)
{
    for (_stMatchResult part : results.records()) {
        part.left += region.left;
        part.right += region.left;
        part.top += region.top;
        part.bottom += region.top;
        if (threshold >= 0)
            part.threshold = threshold;
        parts.push_back(part);
    }
}

} // namespace

float yield(const _stMatchResult& part)
{
    return (part.white_yield + part.black_yield) * 0.5f;
}

std::vector<_stMatchResult> searchParts(const CKestImage& image, CMatchSrcArray& sources,
                                        const MatchRequest& request)
{
    const RECT& r = request.region;
    std::vector<_stMatchResult> parts;
    if (request.threshold.range() && request.perThreshold) {
        CMatchResultArray results;
        image.MatchThresholdRange(r.left, r.top, r.right, r.bottom, request.threshold.low,
                                  request.threshold.high, sources, results);
        append(parts, results, r, -1);
        return parts;
    }
    for (int level = request.threshold.low; level <= request.threshold.high; ++level) {
        CMatchResultArray results;
        image.Match(r.left, r.top, r.right, r.bottom, level, sources, results);
        append(parts, results, r, level);
    }
    return request.threshold.range() ? withoutRepeats(std::move(parts)) : parts;
}

void sortParts(std::vector<_stMatchResult>& parts, const std::string& key)
{
    std::stable_sort(parts.begin(), parts.end(), [&](const _stMatchResult& a, const _stMatchResult& b) {
        return key == "left" ? a.left < b.left : key == "top" ? a.top < b.top : yield(a) > yield(b);
    });
}

} // namespace ormalux
