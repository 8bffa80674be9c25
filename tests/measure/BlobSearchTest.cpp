#include "measure/BlobList.h"
#include "measure/kernels/BlobKernels.h"
#include "tests/support/BlobReference.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

using namespace ormalux;
using namespace testing_support;

namespace {

struct Picture
{
    int width, height;
    std::vector<std::uint8_t> pixels;

    ConstGrayView view() const { return {pixels.data(), width, height, width}; }
};

// Objects (200) on ground (50) with the given share of objects in 256, in tiles of the given size.
Picture randomPicture(int width, int height, int share, int tile, unsigned seed)
{
    Picture picture{width, height, randomBytes(std::size_t(width) * height, seed)};
    const auto dice = picture.pixels;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int d = dice[std::size_t(y / tile * tile) * width + x / tile * tile];
            picture.pixels[std::size_t(y) * width + x] = d < share ? 200 : 50;
        }
    return picture;
}

std::vector<WalkedBlob> searched(const ConstGrayView& image, const BlobQuery& query)
{
    CBlobRectArray rects;
    EXPECT_TRUE(appendBlobs(image, query, rects));
    CPointArrayArray lists;
    EXPECT_TRUE(appendBlobPixels(image, query, lists));
    EXPECT_EQ(lists.GetCount(), rects.GetCount());
    std::vector<WalkedBlob> found;
    for (int i = 0; i < rects.GetCount(); ++i) {
        const _stBlobRect& r = rects[i];
        const auto points = lists[i].records();
        found.push_back({r.left, r.top, r.right, r.bottom, r.pixel_count, {points.begin(), points.end()}});
    }
    return found;
}

BlobQuery randomQuery(std::mt19937& random, const Picture& picture)
{
    const auto pick = [&](int n) { return int(random() % unsigned(n)); };
    BlobQuery query{{0, 0, picture.width, picture.height}, levelsEqualTo(200), {1, 1 << 30, 1, 1 << 30}};
    if (pick(4) != 0)
        query.region = blobRegion(picture.width, picture.height, pick(picture.width + 2) - 1,
                                  pick(picture.height + 2) - 1, pick(picture.width + 3) - 1,
                                  pick(picture.height + 3) - 1);
    if (pick(2) != 0)
        query.sizes = {pick(4), pick(40), pick(4), pick(40)};
    return query;
}

} // namespace

TEST(BlobSearch, EqualsTheWalkWithParentLinks)
{
    forEachKernelTarget([](auto target) {
        std::mt19937 random(5);
        for (int width : {1, 2, 3, 5, 17, 63, 64, 65, 128, 150})
            for (int height : {1, 2, 7, 40})
                for (int share : {8, 64, 128, 150, 200, 250, 256})
                    for (int trial = 0; trial < 6; ++trial) {
                        const Picture picture = randomPicture(width, height, share, 1 + trial % 3, random());
                        const BlobQuery query = randomQuery(random, picture);
                        ASSERT_EQ(searched(picture.view(), query),
                                  walkBlobs(picture.view(), query.region, query.levels, query.sizes))
                            << int(target) << " " << width << "x" << height << " share " << share
                            << " region " << query.region.left << " " << query.region.top << " "
                            << query.region.right << " " << query.region.bottom;
                    }
    });
}

TEST(BlobSearch, JoinsSpiralsAndCombsAcrossWords)
{
    // Every arm starts as a blob of its own and is joined by what comes below or behind it.
    Picture comb{200, 60, std::vector<std::uint8_t>(200 * 60, 50)};
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 200; ++x)
            if (x % 2 == 0 || y == 59 || (y % 7 == 3 && x % 66 > 60))
                comb.pixels[std::size_t(y) * 200 + x] = 200;
    Picture spiral{131, 131, std::vector<std::uint8_t>(131 * 131, 50)};
    for (int ring = 0; ring < 33; ++ring)
        for (int i = 2 * ring; i < 131 - 2 * ring; ++i)
            for (auto [x, y] :
                 {std::pair{i, 2 * ring}, {130 - 2 * ring, i}, {i, 130 - 2 * ring}, {2 * ring, i}})
                if (!(x == 2 * ring && y == 2 * ring + 1))
                    spiral.pixels[std::size_t(y) * 131 + x] = 200;
    for (const Picture* picture : {&comb, &spiral})
        for (ObjectLevels levels : {levelsEqualTo(200), levelsEqualTo(50)}) {
            const BlobQuery query{{0, 0, picture->width, picture->height}, levels, {2, 1000, 1, 1000}};
            EXPECT_EQ(searched(picture->view(), query),
                      walkBlobs(picture->view(), query.region, query.levels, query.sizes));
        }
}

TEST(BlobSearch, PacksEveryLevelRangeAtEveryLength)
{
    const auto pixels = randomBytes(300, 3);
    forEachKernelTarget([&](auto target) {
        for (std::size_t count : {1u, 15u, 16u, 63u, 64u, 65u, 127u, 200u, 300u})
            for (auto [low, high] : {std::pair{0, 255}, {0, 0}, {255, 255}, {100, 180}, {1, 254}}) {
                std::vector<std::uint64_t> words((count + 63) / 64, ~std::uint64_t(0));
                kernels::packLevels({pixels.data(), 300, count, 1}, std::uint8_t(low), std::uint8_t(high),
                                    words.data(), 1);
                for (std::size_t i = 0; i < words.size() * 64; ++i)
                    ASSERT_EQ(words[i / 64] >> i % 64 & 1,
                              std::uint64_t(i < count && pixels[i] >= low && pixels[i] <= high))
                        << int(target) << " " << count << " " << i;
            }
    });
}

TEST(BlobSearch, TestsLevelsAsGiven)
{
    EXPECT_TRUE(levelsEqualTo(256).none() && levelsEqualTo(-1).none());
    for (int color : {-1, 1, 254, 256, 511})
        EXPECT_TRUE(levelsOfColor(100, color).none()) << color;
    for (int threshold : {INT32_MIN, -2, -1, 0, 128, 254, 255, 256, INT32_MAX})
        for (int color : {0, 255})
            for (int p = 0; p < 256; ++p) {
                const ObjectLevels levels = levelsOfColor(threshold, color);
                ASSERT_EQ(p >= levels.low && p <= levels.high, (p > threshold ? 255 : 0) == color)
                    << threshold << " " << color << " " << p;
            }
}
