#include "tests/match/MatchPictures.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <climits>

using namespace testing_support;

namespace {

struct Alphabet
{
    std::vector<Source> letters;
    CMatchSrcArray sources;

    explicit Alphabet(std::vector<std::pair<int, int>> sizes)
    {
        for (const auto& [width, height] : sizes)
            letters.push_back(
                randomSource(width, height, 'A' + int(letters.size()), unsigned(letters.size())));
        for (const Source& letter : letters)
            add(sources, letter);
    }
};

std::vector<Scored> readReference(const ormalux::ConstGrayView& image, int threshold, CBlobRectArray& blobs,
                                  const Alphabet& alphabet)
{
    std::vector<Scored> expected;
    for (const _stBlobRect& b : blobs.records()) {
        std::vector<Scored> scored;
        for (const Source& letter : alphabet.letters)
            scored.push_back(score(image, threshold, letter.record, b));
        expected.push_back(*bestOf(scored));
    }
    return expected;
}

} // namespace

TEST(OcrMatch, EqualsScoringEverySourcePixelByPixel)
{
    Alphabet mixed({{12, 20}, {20, 20}, {1, 1}, {64, 3}, {65, 30}, {5, 40}, {140, 20}, {20, 20}});
    Alphabet narrow({{12, 20}, {9, 19}, {14, 22}, {3, 8}, {20, 30}});
    Alphabet oneWord({{64, 30}, {33, 9}, {8, 20}});
    const CKestImage image = blobPicture(260, 150, 11);
    CBlobRectArray blobs;
    image.GetBlobList(100, 255, 1, 80, 1, 80, blobs);
    for (Alphabet* alphabet : {&mixed, &narrow, &oneWord})
        for (int threshold : {-5, 100, 300}) {
            const auto expected = readReference(image.view(), threshold, blobs, *alphabet);
            const auto check = [&](auto) {
                CMatchResultArray results;
                ASSERT_EQ(image.OcrMatch(threshold, blobs, alphabet->sources, results), blobs.GetCount());
                ASSERT_EQ(listed(results), expected);
            };
            forEachKernelTarget(check);
            forEachBandCount(check);
        }
}

TEST(OcrMatch, FindsItsBoxesAsTheBlobSearchDoes)
{
    Alphabet alphabet({{12, 20}, {20, 20}});
    const CKestImage image = blobPicture(160, 120, 12);
    CBlobRectArray blobs;
    CMatchResultArray results;
    ASSERT_GT(image.GetBlobList(80, 0, 3, 30, 3, 30, blobs), 0);
    image.OcrMatch(80, 3, 30, 3, 30, alphabet.sources, results);
    EXPECT_EQ(listed(results), readReference(image.view(), 80, blobs, alphabet));

    blobs.RemoveAll();
    results.RemoveAll();
    ASSERT_GT(image.GetBlobList(10, 20, 140, 100, 80, 0, 3, 30, 3, 30, blobs), 0);
    image.OcrMatch(10, 20, 140, 100, 80, 3, 30, 3, 30, alphabet.sources, results);
    EXPECT_EQ(listed(results), readReference(image.view(), 80, blobs, alphabet));

    EXPECT_EQ(image.OcrMatch(80, 1000, 1001, 1, 2, alphabet.sources, results), 0);
    CMatchSrcArray none;
    EXPECT_EQ(image.OcrMatch(80, blobs, none, results), blobs.GetCount()); // what the array held
}

TEST(OcrMatch, ReportsTheLaterOfEqualSources)
{
    Alphabet alphabet({{12, 20}, {14, 14}});
    alphabet.letters[0].record.key = 'Z';
    add(alphabet.sources, alphabet.letters[0]);
    CKestImage image(40, 40);
    CBlobRectArray blobs;
    blobs.Add(3, 3, 14, 22, 100);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 12; ++x)
            image.SetPixel(3 + x, 3 + y, alphabet.letters[0].pixels[std::size_t(y) * 12 + x]);
    CMatchResultArray results;
    ASSERT_EQ(image.OcrMatch(128, blobs, alphabet.sources, results), 1);
    EXPECT_EQ(results[0].key, 'Z');
    EXPECT_EQ(results[0].black_yield, 1.0f);
}

TEST(OcrMatch, PassesOverBoxesThatLeaveTheImage)
{
    Alphabet alphabet({{12, 20}});
    const CKestImage image = blobPicture(40, 40, 13);
    CBlobRectArray blobs;
    const int ends[] = {INT_MIN, -1, 0, 20, 39, 40, INT_MAX};
    int inside = 0;
    for (int left : ends)
        for (int top : ends)
            for (int right : ends)
                for (int bottom : ends) {
                    blobs.Add(left, top, right, bottom, 1);
                    const auto in = [](int v) { return v >= 0 && v < 40; };
                    inside += in(left) && in(top) && in(right) && in(bottom);
                }
    CMatchResultArray results;
    EXPECT_EQ(image.OcrMatch(80, blobs, alphabet.sources, results), inside);
    for (const _stMatchResult& r : results.records())
        EXPECT_TRUE(r.left <= r.right && r.top <= r.bottom ? true : r.black_yield + r.white_yield == 0.0f);
}
