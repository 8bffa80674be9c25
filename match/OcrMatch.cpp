#include "match/OcrMatch.h"

#include "array/WholeAppend.h"
#include "image/WorkPool.h"
#include "match/Score.h"

#include <algorithm>
#include <atomic>

namespace ormalux {

namespace {

struct Best
{
    std::int32_t source; ///< -1: none
    Yields yields;
};

bool inside(const ConstGrayView& image, const _stBlobRect& box)
{
    const auto [left, right] = std::minmax(box.left, box.right);
    const auto [top, bottom] = std::minmax(box.top, box.bottom);
    return left >= 0 && top >= 0 && right < image.width && bottom < image.height;
}

/// Asks for the pixels that the templates meet of a box, while another one is read: its rows are far apart.
void prefetch(const ConstGrayView& image, const _stBlobRect& box, const Templates& templates)
{
    constexpr int cacheLine = 64;
    if (!inside(image, box))
        return;
    const int right = int(std::min(std::int64_t(box.right), box.left + std::int64_t(templates.stride() * 8)));
    const int end = int(std::min(box.bottom + std::int64_t(1), box.top + std::int64_t(templates.rows())));
    for (int y = box.top; y < end; ++y)
        for (int x = box.left; x < right + cacheLine; x += cacheLine)
            __builtin_prefetch(image.row(y) + std::min(x, right));
}

/// Reads one box after the other.
class CharacterReader
{
public:
    bool prepare(const Templates& templates)
    {
        return m_box.prepare(templates) && m_hits.reserve(templates.count());
    }

    Best read(const ConstGrayView& image, int threshold, const _stBlobRect& box, const Templates& templates)
    {
        Best best{-1, {}};
        if (!inside(image, box))
            return best;
        const int width = box.right - box.left + 1;
        const int height = box.bottom - box.top + 1;
        m_box.pack(image.row(box.top) + box.left, image.stride, width, height, threshold);
        kernels::countHits(m_box.planes(), templates.planes(), templates.count(), m_hits.data());
        const float area = float(std::int64_t(width) * height);
        for (std::size_t i = 0; i < templates.count(); ++i) {
            const Yields yields = yieldsOf(m_hits[i], templates.facts(i), area);
            if (best.source < 0 || yields.average() >= best.yields.average())
                best = {std::int32_t(i), yields};
        }
        return best;
    }

private:
    BoxBits m_box;
    Growable<kernels::Hits> m_hits;
};

} // namespace

void matchCharacters(const ConstGrayView& image, int threshold, std::span<const _stBlobRect> boxes,
                     std::span<const _stMatchSource> sources, CMatchResultArray& results)
{
    Templates templates;
    Growable<Best> found;
    if (image.empty() || boxes.empty() || sources.empty() ||
        !templates.pack(sources, image.width, image.height) || !found.reserve(boxes.size()))
        return;
    std::atomic<bool> complete{true};
    const std::int64_t boxNanoseconds =
        100 + std::int64_t(templates.count() * (5 + templates.rows() * templates.stride() / 24));
    runBands(Job::OcrMatch, std::int64_t(boxes.size()), {std::int64_t(boxes.size()) * boxNanoseconds},
             [&](const Band& band) {
                 CharacterReader reader;
                 if (band.size() > 0 && !reader.prepare(templates)) {
                     complete = false;
                     return;
                 }
                 for (std::int64_t i = band.first; i < band.end; ++i) {
                     if (i + 1 < band.end)
                         prefetch(image, boxes[i + 1], templates);
                     found[i] = reader.read(image, threshold, boxes[i], templates);
                 }
             });
    if (!complete)
        return;
    WholeAppend whole(results);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        if (found[i].source < 0)
            continue;
        const auto& [source, yields] = found[i];
        const _stBlobRect& box = boxes[i];
        whole.add(templates.facts(source).key, box.left, box.top, box.right, box.bottom, box.pixel_count,
                  yields.black, yields.white);
    }
}

} // namespace ormalux
