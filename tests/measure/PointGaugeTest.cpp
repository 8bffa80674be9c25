#include "image/VisionImage.h"
#include "tests/support/PlainGauge.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <vector>

using namespace testing_support;

namespace {

/// A row of levels above a row of the same levels.
CKestImage twoRows(std::vector<std::uint8_t> levels)
{
    const int width = int(levels.size());
    levels.insert(levels.end(), levels.begin(), levels.begin() + width);
    return CKestImage(width, 2, levels.data());
}

TEST(PointGauge, ReportsTheCompletingSampleWithItsContrast)
{
    const CKestImage image = twoRows({0, 0, 200, 200, 0});
    CPixelArray ar;
    ASSERT_EQ(image.GetPointGauge(0, 0, 4, 0, BLACK_AND_WHITE, 100, ar), 1);
    EXPECT_EQ(ar[0].x, 2);
    EXPECT_EQ(ar[0].gray_level, 200);
    EXPECT_EQ(ar[0].parameter, 200.0);
    ASSERT_EQ(image.GetPointGauge(4, 0, 0, 0, WHITE_AND_BLACK, 100, ar), 2)
        << "walked from the left all the same";
    EXPECT_EQ(ar[1].x, 4);
    EXPECT_EQ(ar[1].y, 1) << "tilted into the next row";
    EXPECT_EQ(ar[1].gray_level, 0);
    EXPECT_EQ(ar[1].parameter, 200.0);
    EXPECT_EQ(image.GetPointGauge(0, 0, 4, 0, 2, 100, ar), 2) << "no such polarity";
    EXPECT_EQ(image.GetPointGauge(0, 0, 4, 0, BLACK_AND_WHITE, 0, ar), 0) << "no threshold";
    EXPECT_EQ(image.GetPointGauge(2, 0, 4, 0, BLACK_AND_WHITE, 100, ar), 2) << "bright from the start";
}

TEST(PointGauge, TheLastOfEqualEdgesIsTheBest)
{
    const CKestImage image = twoRows({0, 90, 0, 90, 20, 90, 0});
    long x = -7, y = -7;
    ASSERT_EQ(image.GetPointGauge(0, 0, 6, 0, BLACK_AND_WHITE, 50, &x, &y), 1);
    EXPECT_EQ(x, 3);
    EXPECT_EQ(y, 0);
    ASSERT_EQ(image.GetPointGauge(0, 0, 6, 0, WHITE_AND_BLACK, 50, &x, &y), 1);
    EXPECT_EQ(x, 6);
    x = y = -7;
    EXPECT_EQ(image.GetPointGauge(0, 0, 6, 0, BLACK_AND_WHITE, 99, &x, &y), 0);
    EXPECT_EQ(x, -7);
    EXPECT_EQ(image.GetPointGauge(0, 0, 6, 0, BLACK_AND_WHITE, 50, nullptr, nullptr), 1);
}

TEST(PointGauge, TheTiltOutOfTheImageInventsNoEdge)
{
    std::vector<std::uint8_t> dark(20 * 20, 10);
    const CKestImage image(20, 20, dark.data());
    CPixelArray ar;
    for (int polarity : {BLACK_AND_WHITE, WHITE_AND_BLACK}) {
        EXPECT_EQ(image.GetPointGauge(0, 19, 19, 19, polarity, 5, ar), 0);
        EXPECT_EQ(image.GetPointGauge(19, 0, 19, 19, polarity, 20, ar), 0);
        EXPECT_EQ(image.GetPointGauge(INT_MAX, INT_MAX, INT_MAX, INT_MAX, polarity, 5, ar), 0);
    }
    EXPECT_EQ(image.GetPointGauge(0, 19, 19, 19, BLACK_AND_WHITE, ar), 0) << "no automatic threshold there";
    EXPECT_EQ(CKestImage().GetPointGauge(0, 0, 5, 5, BLACK_AND_WHITE, 5, ar), 0);
}

/// Ramps with rising and falling flanks, plateaus of equal contrast and some noise.
std::vector<std::uint8_t> rampPicture(int width, int height, unsigned seed)
{
    std::vector<std::uint8_t> pixels = randomBytes(std::size_t(width) * height, seed);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            std::uint8_t& p = pixels[std::size_t(y) * width + x];
            p = p < 40 ? p : std::uint8_t(((x + y) % 23 < 12 ? (x + 2 * y) % 12 : 11 - x % 5) * 20);
        }
    return pixels;
}

void expectPlainEdges(const CKestImage& image, const plain::Picture& picture, const plain::Line& ends,
                      int polarity, int threshold)
{
    std::vector<_stPixel> expected;
    plain::edges(picture, ends, polarity, threshold, expected);
    CPixelArray ar;
    image.GetPointGauge(ends.x1, ends.y1, ends.x2, ends.y2, polarity, threshold, ar);
    ASSERT_EQ(ar.records().size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const _stPixel &found = ar.records()[i], &wanted = expected[i];
        ASSERT_TRUE(found.x == wanted.x && found.y == wanted.y && found.gray_level == wanted.gray_level &&
                    found.parameter == wanted.parameter);
    }
    POINT best{-7, -7};
    const int any = plain::bestEdge(picture, ends, polarity, threshold, best);
    long x = -7, y = -7;
    ASSERT_EQ(image.GetPointGauge(ends.x1, ends.y1, ends.x2, ends.y2, polarity, threshold, &x, &y), any);
    ASSERT_EQ((POINT{LONG(x), LONG(y)}), best);
}

TEST(PointGauge, EqualsThePlainGaugeOnEveryKindOfLine)
{
    forEachKernelTarget([](auto target) {
        std::mt19937 engine(17);
        const auto random = [&](int low, int high) {
            return std::uniform_int_distribution(low, high)(engine);
        };
        for (int width : oddSizes)
            for (int height : {1, 2, 5, 64, 301}) {
                auto pixels = rampPicture(width, height, unsigned(width * height));
                const CKestImage image(width, height, pixels.data());
                const plain::Picture picture{pixels.data(), width, height};
                for (int i = 0; i < 40; ++i) {
                    plain::Line ends{random(-9, width + 9), random(-9, height + 9), random(-9, width + 9),
                                     random(-9, height + 9)};
                    if (i % 5 == 0)
                        ends.x2 = ends.x1;
                    if (i % 5 == 1)
                        ends.y2 = ends.y1;
                    const int threshold = i % 10 == 9 ? random(-300, 300) : random(1, 254);
                    ASSERT_NO_FATAL_FAILURE(expectPlainEdges(image, picture, ends, i % 3, threshold))
                        << int(target) << " " << width << "x" << height << " line " << i;
                }
            }
    });
}

TEST(PointGauge, LongProfilesAreSearchedAcrossTheirPieces)
{
    // Edges of every contrast where the profile is read in pieces, in long rows and on a steep line.
    for (auto [width, height] : {std::pair{20000, 3}, {3, 20000}, {9000, 450}, {3, 1100000}}) {
        auto pixels = rampPicture(width, height, 3);
        const CKestImage image(width, height, pixels.data());
        const plain::Picture picture{pixels.data(), width, height};
        for (int threshold : {30, 100, 219})
            for (int polarity : {0, 1})
                ASSERT_NO_FATAL_FAILURE(
                    expectPlainEdges(image, picture, {INT_MAX, 0, INT_MIN, INT_MAX}, polarity, threshold));
    }
}

TEST(PointGauge, TheAutomaticThresholdIsThatOfTheTiltedRectangle)
{
    std::mt19937 engine(23);
    const auto random = [&](int low, int high) { return std::uniform_int_distribution(low, high)(engine); };
    auto pixels = rampPicture(300, 200, 4);
    const CKestImage image(300, 200, pixels.data());
    const plain::Picture picture{pixels.data(), 300, 200};
    int measured = 0;
    for (int i = 0; i < 200; ++i) {
        plain::Line ends{random(-9, 310), random(-9, 210), random(-9, 310), random(-9, 210)};
        if (i % 2)
            ends.y2 = ends.y1;
        const plain::Line line = plain::gaugeLine(picture, ends);
        const int threshold = plain::edgeThreshold(picture, line.x1, line.y1, line.x2, line.y2);
        std::vector<_stPixel> expected;
        plain::edges(picture, ends, i % 4 / 2, threshold, expected);
        CPixelArray ar;
        ASSERT_EQ(image.GetPointGauge(ends.x1, ends.y1, ends.x2, ends.y2, i % 4 / 2, ar),
                  int(expected.size()));
        long x, y;
        ASSERT_EQ(image.GetPointGauge(ends.x1, ends.y1, ends.x2, ends.y2, i % 4 / 2, &x, &y),
                  !expected.empty());
        measured += !expected.empty();
    }
    EXPECT_GT(measured, 100);
}

} // namespace
