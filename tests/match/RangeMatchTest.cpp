#include "match/RangeMatch.h"
#include "tests/match/MatchPictures.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <climits>

using namespace testing_support;

namespace {

std::vector<Scored> rangeReference(const ormalux::ConstGrayView& image, int low, int high,
                                   const _stMatchSource& source)
{
    std::vector<Scored> expected;
    for (int t = low; t <= high; ++t) {
        const auto scored = matchReference(image, t, source);
        if (const Scored* best = bestOf(scored)) {
            expected.push_back(*best);
            expected.back().threshold = t;
        }
    }
    return expected;
}

std::vector<Scored> ranged(const CKestImage& image, int low, int high, const Source& source)
{
    CMatchSrcArray sources;
    add(sources, source);
    CMatchResultArray results;
    const int count = image.MatchThresholdRange(0, 0, image.GetWidth() - 1, image.GetHeight() - 1, low, high,
                                                sources, results);
    EXPECT_EQ(count, results.GetCount());
    return listed(results);
}

} // namespace

TEST(RangeMatch, EqualsAMatchForEveryThreshold)
{
    forEachBandCount([](int) {
        for (int trial = 0; trial < 6; ++trial) {
            CKestImage image = blobPicture(70, 50 + trial, unsigned(trial));
            if (trial % 3 == 0) // few levels: most thresholds binarise alike
                for (int i = 0; i < image.GetImageLen(); ++i)
                    image.view().pixels[i] &= 0xE0;
            const int size = trial % 4 == 0 ? 8 : 20;
            const Source source = randomSource(size, size, trial % 2 ? 255 : 0, unsigned(trial));
            for (auto [low, high] : {std::pair{60, 120}, {-3, 3}, {250, 260}, {100, 100}, {100, 99}})
                ASSERT_EQ(ranged(image, low, high, source),
                          rangeReference(image.view(), low, high, source.record))
                    << trial << " " << low << " " << high;
        }
    });
}

TEST(RangeMatch, EndsForEveryRange)
{
    const CKestImage image = blobPicture(90, 80, 2);
    const Source small = randomSource(20, 20, 255, 1);
    EXPECT_EQ(ranged(image, INT_MIN, INT_MAX, small), rangeReference(image.view(), -5, 260, small.record));
    EXPECT_TRUE(ranged(image, INT_MAX, INT_MIN, small).empty());

    // The whole picture is the candidate at every threshold below its levels, or above them.
    const CKestImage plain(24, 24);
    const Source white = randomSource(20, 20, 255, 1);
    const Source black = randomSource(20, 20, 0, 1);
    const auto below = ranged(plain, INT_MIN, INT_MAX, white);
    ASSERT_EQ(below.size(), std::size_t(ormalux::rangeLimit));
    EXPECT_EQ(below.back().threshold, -1);
    const auto above = ranged(plain, INT_MIN, INT_MAX, black);
    EXPECT_EQ(above.size(), std::size_t(ormalux::rangeLimit) + 255);
    EXPECT_EQ(above.front().threshold, 0);
    for (int t : {INT_MIN, -1000, 1000, INT_MAX})
        EXPECT_EQ(ranged(plain, t, t, t < 0 ? white : black).size(), 1u) << t;
}

TEST(RangeMatch, RefusesTwoSources)
{
    const CKestImage image = blobPicture(90, 80, 2);
    CMatchSrcArray sources;
    for (unsigned i = 0; i < 2; ++i)
        add(sources, randomSource(0, 0, 255, i));
    CMatchResultArray results;
    results.Add(1, 0, 0, 0, 0, 0, 0.0f, 0.0f);
    EXPECT_EQ(image.MatchThresholdRange(0, 0, 89, 79, 0, 255, sources, results), 1);
}
