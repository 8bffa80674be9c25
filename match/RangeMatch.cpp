#include "match/RangeMatch.h"

#include "array/WholeAppend.h"
#include "image/WorkPool.h"
#include "match/PatternMatch.h"

#include <algorithm>
#include <array>
#include <atomic>

namespace ormalux {

namespace {

/// A threshold that binarises differently from the one below it, and the best candidate there.
struct Step
{
    int threshold;
    bool found;
    Blob blob;
    Yields yields;
};

/// The steps of the thresholds low .. high, which lie in -1 .. 255.
class Steps
{
public:
    Steps(const ConstGrayView& image, int low, int high)
    {
        std::array<bool, 257> present{};
        findLevels(image, low, high, present);
        for (int t = low; t <= high; ++t)
            if (t == low || present[t])
                m_steps[m_count++] = {t, false, {}, {}};
    }

    int count() const { return m_count; }
    Step& operator[](int index) { return m_steps[index]; }

private:
    // A threshold differs from the one below it by the pixels of its own level. Most pictures show every
    // level within a few rows.
    static void findLevels(const ConstGrayView& image, int low, int high, std::array<bool, 257>& present)
    {
        for (int y = 0; y < image.height; ++y) {
            for (int x = 0; x < image.width; ++x)
                present[image.row(y)[x]] = true;
            if (std::all_of(present.begin() + low + 1, present.begin() + high + 1, [](bool p) { return p; }))
                return;
        }
    }

    std::array<Step, 257> m_steps;
    int m_count = 0;
};

/// Searches one image at one threshold after the other.
class RangeSearcher
{
public:
    RangeSearcher(const ConstGrayView& image, const Pattern& pattern) : m_image(image), m_pattern(pattern)
    {
        m_ready = m_scorer.prepare(pattern);
    }

    /// False when memory is short.
    bool search(Step& step)
    {
        const BlobRegion whole{0, 0, m_image.width, m_image.height};
        if (!m_ready || !m_finder.find(m_image, whole, levelsOfColor(step.threshold, m_pattern.key())))
            return false;
        m_scorer.begin(m_image, step.threshold);
        m_finder.forEachRecord(m_pattern.sizes(), [&](const Blob& blob) {
            const Yields yields = m_scorer.score(m_pattern, blob);
            if (!step.found || yields.average() >= step.yields.average())
                step = {step.threshold, true, blob, yields};
        });
        return true;
    }

private:
    const ConstGrayView& m_image;
    const Pattern& m_pattern;
    BlobFinder m_finder;
    PatternScorer m_scorer;
    bool m_ready = false;
};

void addResults(const Step& step, std::int64_t first, std::int64_t last, std::uint8_t key,
                WholeAppend<CMatchResultArray>& results)
{
    if (!step.found)
        return;
    const Blob& b = step.blob;
    for (std::int64_t t = first; t <= last; ++t)
        results.add(key, b.left, b.top, b.right, b.bottom, b.pixels, step.yields.black, step.yields.white,
                    long(t));
}

} // namespace

void matchThresholdRange(const ConstGrayView& image, int low, int high, const _stMatchSource& source,
                         CMatchResultArray& results)
{
    Pattern pattern;
    if (image.empty() || high < low || !pattern.prepare(source, image))
        return;
    const int firstStep = std::clamp(low, -1, 255);
    const int lastStep = std::clamp(high, -1, 255);
    Steps steps(image, firstStep, lastStep);
    const std::int64_t nanoseconds = std::int64_t(image.width) * image.height / 16 * steps.count();
    std::atomic<bool> complete{true};
    runBands(Job::RangedMatch, steps.count(), {nanoseconds}, [&](const Band& band) {
        RangeSearcher searcher(image, pattern);
        for (std::int64_t i = band.first; i < band.end && complete; ++i)
            if (!searcher.search(steps[int(i)]))
                complete = false;
    });
    if (!complete)
        return;

    const std::int64_t lowest =
        std::max(std::int64_t(low), std::min(std::int64_t(high), std::int64_t(-1)) - rangeLimit + 1);
    const std::int64_t highest =
        std::min(std::int64_t(high), std::max(std::int64_t(low), std::int64_t(255)) + rangeLimit - 1);
    WholeAppend whole(results);
    for (int i = 0; i < steps.count(); ++i) {
        const std::int64_t first = i == 0 ? lowest : steps[i].threshold;
        const std::int64_t last = i + 1 == steps.count() ? highest : steps[i + 1].threshold - 1;
        addResults(steps[i], first, last, source.key, whole);
    }
}

} // namespace ormalux
