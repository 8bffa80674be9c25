#include "tests/match/MatchPictures.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <climits>

using namespace testing_support;

TEST(PatternMatch, EqualsScoringPixelByPixel)
{
    const std::pair<int, int> sizes[] = {{1, 1},   {4, 9},   {11, 20}, {20, 20},
                                         {33, 14}, {64, 24}, {70, 40}, {130, 7}};
    forEachKernelTarget([&](auto) {
        for (int trial = 0; trial < 24; ++trial) {
            const CKestImage image =
                blobPicture(40 + 37 * (trial % 5), 30 + 29 * (trial % 3), unsigned(trial));
            const auto [width, height] = sizes[trial % 8];
            const Source source = randomSource(width, height, trial % 3 ? 255 : 0, unsigned(trial));
            CMatchSrcArray sources;
            add(sources, source);
            for (int threshold : {INT_MIN, 60, 100, 150, 254, 255, INT_MAX}) {
                const auto expected = matchReference(image.view(), threshold, source.record);
                CMatchResultArray results;
                ASSERT_EQ(image.Match(threshold, sources, results), int(expected.size()));
                ASSERT_EQ(listed(results), expected) << trial << " " << threshold;
            }
        }
    });
}

TEST(PatternMatch, ListsCandidatesInTheirOrderForEveryNumberOfBands)
{
    const CKestImage image = blobPicture(300, 200, 3);
    const Source source = randomSource(9, 9, 255, 4);
    CMatchSrcArray sources;
    add(sources, source);
    const auto expected = matchReference(image.view(), 90, source.record);
    ASSERT_GT(expected.size(), 1000u);
    forEachBandCount([&](int) {
        CMatchResultArray results;
        image.Match(90, sources, results);
        EXPECT_EQ(listed(results), expected);
    });
}

TEST(PatternMatch, CutsTheAreaAndTakesTheWholeImageWhenItLeavesIt)
{
    const CKestImage image = blobPicture(150, 120, 5);
    const Source source = randomSource(14, 14, 255, 6);
    CMatchSrcArray sources;
    add(sources, source);
    const auto inArea = matchReference(image.view().part(20, 10, 101, 90), 100, source.record);
    const auto inImage = matchReference(image.view(), 100, source.record);
    ASSERT_NE(inArea, inImage);
    const auto matched = [&](int left, int top, int right, int bottom) {
        CMatchResultArray results;
        image.Match(left, top, right, bottom, 100, sources, results);
        return listed(results);
    };
    EXPECT_EQ(matched(20, 10, 120, 99), inArea);
    EXPECT_EQ(matched(120, 99, 20, 10), inArea);
    EXPECT_EQ(matched(0, 0, 149, 119), inImage);
    EXPECT_EQ(matched(20, 10, 150, 99), inImage);
    EXPECT_EQ(matched(INT_MIN, INT_MAX, INT_MAX, INT_MIN), inImage);
}

TEST(PatternMatch, KeepsWhatTheArrayHeld)
{
    const CKestImage image = blobPicture(100, 100, 7);
    const Source source = randomSource(14, 14, 255, 6);
    CMatchSrcArray sources;
    CMatchResultArray results;
    results.Add(1, 2, 3, 4, 5, 6, 0.5f, 0.25f, 77);
    EXPECT_EQ(image.Match(-5, sources, results), 0); // nothing is black
    add(sources, source);
    const int found = int(matchReference(image.view(), 100, source.record).size());
    EXPECT_EQ(image.Match(100, sources, results), 1 + found);
    add(sources, source);
    EXPECT_EQ(image.Match(100, sources, results), 0);
    EXPECT_EQ(results.GetCount(), 1 + found);
    EXPECT_EQ(results[0].threshold, 77);
    EXPECT_EQ(CKestImage().Match(100, sources, results), 0);
}

TEST(PatternMatch, TakesAnEmptyListAsASourceOfZeros)
{
    const CKestImage image = blobPicture(60, 60, 8);
    CMatchSrcArray sources;
    CMatchResultArray results;
    image.Match(75, sources, results);
    ASSERT_GT(results.GetCount(), 0);
    for (const _stMatchResult& r : results.records()) {
        EXPECT_TRUE(r.key == 0 && r.right - r.left < 10 && r.bottom - r.top < 10);
        EXPECT_TRUE(r.black_yield == 0.0f && r.white_yield == 0.0f);
    }
}

TEST(PatternMatch, SurvivesRecordsMadeByHand)
{
    const CKestImage image = blobPicture(60, 60, 9);
    for (int width : {INT_MIN, -20, 0, 20, INT_MAX})
        for (int height : {INT_MIN, -20, 0, 20, INT_MAX})
            for (int count : {INT_MIN, 0, 3, INT_MAX})
                for (int key : {0, 255, 7}) {
                    CMatchSrcArray sources;
                    sources.appendForOverwrite(1)[0] = {
                        std::uint8_t(key), 0, count, count, width, height, nullptr};
                    CMatchResultArray results;
                    image.Match(100, sources, results);
                    image.MatchThresholdRange(0, 0, 59, 59, 90, 110, sources, results);
                    image.OcrMatch(100, 1, 60, 1, 60, sources, results);
                }
}
