#include "match/PatternMatch.h"

#include "array/WholeAppend.h"
#include "image/WorkPool.h"

#include <algorithm>
#include <atomic>

namespace ormalux {

namespace {

struct Candidate
{
    Blob blob;
    Yields yields;
};

bool findCandidates(const ConstGrayView& image, int threshold, const Pattern& pattern,
                    Growable<Candidate>& candidates, std::int64_t& count)
{
    BlobFinder finder;
    if (!finder.find(image, {0, 0, image.width, image.height}, levelsOfColor(threshold, pattern.key())))
        return false;
    const std::int64_t expected = finder.recordCount(pattern.sizes());
    if (!candidates.reserve(std::size_t(expected)))
        return false;
    count = 0;
    finder.forEachRecord(pattern.sizes(), [&](const Blob& blob) { candidates[count++] = {blob, {0, 0}}; });
    return true;
}

} // namespace

ConstGrayView searchedArea(const ConstGrayView& image, int left, int top, int right, int bottom)
{
    if (left > right)
        std::swap(left, right);
    if (top > bottom)
        std::swap(top, bottom);
    if (image.empty() || left < 0 || top < 0 || right >= image.width || bottom >= image.height)
        return image;
    return image.part(left, top, right - left + 1, bottom - top + 1);
}

std::optional<_stMatchSource> patternSource(CMatchSrcArray& sources)
{
    if (sources.GetCount() > 1)
        return {};
    const std::span<const _stMatchSource> records = sources.records();
    return records.empty() ? _stMatchSource{} : records.front();
}

bool Pattern::prepare(const _stMatchSource& source, const ConstGrayView& image)
{
    m_key = source.key;
    m_sizes = {std::int64_t(source.width) - 10, std::int64_t(source.width) + 10,
               std::int64_t(source.height) - 10, std::int64_t(source.height) + 10};
    return m_templates.pack({&source, 1}, image.width, image.height);
}

void PatternScorer::begin(const ConstGrayView& image, int threshold)
{
    m_image = image;
    m_threshold = threshold;
    m_single.reset();
}

Yields PatternScorer::score(const Pattern& pattern, const Blob& blob)
{
    const int width = blob.right - blob.left + 1;
    const int height = blob.bottom - blob.top + 1;
    const bool single = width == 1 && height == 1;
    if (single && m_single)
        return *m_single;
    m_box.pack(m_image.row(blob.top) + blob.left, m_image.stride, width, height, m_threshold);
    kernels::Hits hits;
    kernels::countHits(m_box.planes(), pattern.templates().planes(), 1, &hits);
    const Yields yields = yieldsOf(hits, pattern.templates().facts(0), float(std::int64_t(width) * height));
    if (single)
        m_single = yields;
    return yields;
}

int matchPattern(const ConstGrayView& image, int threshold, const _stMatchSource& source,
                 CMatchResultArray& results)
{
    Pattern pattern;
    Growable<Candidate> candidates;
    std::int64_t count = 0;
    if (!pattern.prepare(source, image) || !findCandidates(image, threshold, pattern, candidates, count))
        return results.GetCount();
    if (count == 0)
        return 0;
    std::atomic<bool> complete{true};
    const std::int64_t boxNanoseconds = 50 + std::int64_t(pattern.templates().rows()) * 5;
    runBands(Job::PatternMatch, count, {count * boxNanoseconds}, [&](const Band& band) {
        PatternScorer scorer;
        if (band.size() > 0 && !scorer.prepare(pattern)) {
            complete = false;
            return;
        }
        scorer.begin(image, threshold);
        for (std::int64_t i = band.first; i < band.end; ++i)
            candidates[i].yields = scorer.score(pattern, candidates[i].blob);
    });
    if (!complete)
        return results.GetCount();
    WholeAppend whole(results);
    for (std::int64_t i = 0; i < count; ++i) {
        const auto& [blob, yields] = candidates[i];
        whole.add(source.key, blob.left, blob.top, blob.right, blob.bottom, blob.pixels, yields.black,
                  yields.white);
    }
    return whole.finish();
}

} // namespace ormalux
