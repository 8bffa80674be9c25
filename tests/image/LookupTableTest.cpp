#include "image/HistogramTables.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

using namespace ormalux;

namespace {

LevelCounts countsOf(std::initializer_list<std::pair<int, std::int64_t>> levels)
{
    LevelCounts counts{};
    for (auto [level, number] : levels)
        counts[level] = number;
    return counts;
}

std::int64_t totalOf(const LevelCounts& counts)
{
    std::int64_t total = 0;
    for (std::int64_t n : counts)
        total += n;
    return total;
}

LookupTable identity()
{
    LookupTable table;
    for (int i = 0; i < 256; ++i)
        table[i] = std::uint8_t(i);
    return table;
}

} // namespace

TEST(LookupTable, LightRoundsByTruncationAndClamps)
{
    EXPECT_EQ(buildLightTable(0, 0), identity());
    const auto steep = *buildLightTable(0, 100);
    EXPECT_EQ(steep[64], 0);
    EXPECT_EQ(steep[100], 72);
    EXPECT_EQ(steep[192], 255);
    const auto flat = *buildLightTable(10, -100);
    EXPECT_EQ(flat[0], 138);
    EXPECT_EQ(flat[255], 138);
    // (3 - 128) x 101 / 100.0 + 128.5 = 2.25
    EXPECT_EQ((*buildLightTable(0, 1))[3], 2);
    EXPECT_EQ((*buildLightTable(-255, 0))[255], 0);
}

TEST(LookupTable, ArgumentsOutOfRangeGiveNoTable)
{
    constexpr float inf = std::numeric_limits<float>::infinity();
    for (auto [brightness, contrast] : {std::pair{256L, 0L}, {-256L, 0L}, {0L, 101L}, {0L, -101L}})
        EXPECT_FALSE(buildLightTable(brightness, contrast));
    for (float gamma : {0.0f, -1.0f, -inf, inf, std::nanf("")})
        EXPECT_FALSE(buildGammaTable(gamma)) << gamma;
}

TEST(LookupTable, GammaKeepsBothEndsAndStaysMonotonic)
{
    EXPECT_EQ(buildGammaTable(1.0f), identity());
    EXPECT_EQ((*buildGammaTable(2.0f))[64], 127);
    EXPECT_EQ((*buildGammaTable(0.5f))[128], 64);
    for (float gamma : {1e-45f, 1e-3f, 0.007f, 0.0079f, 0.1f, 0.45f, 2.2f, 50.0f, 3e38f}) {
        const auto table = *buildGammaTable(gamma);
        EXPECT_EQ(table[0], 0);
        EXPECT_EQ(table[255], 255) << gamma;
        for (int i = 1; i < 256; ++i)
            EXPECT_GE(table[i], table[i - 1]) << gamma << " " << i;
    }
}

TEST(HistogramTables, EqualizeMultipliesByTheFactorFormedFirst)
{
    const auto bytes = testing_support::randomBytes(256, 3);
    LevelCounts counts{};
    for (int i = 0; i < 256; ++i)
        counts[i] = bytes[i] * 7;
    const std::int64_t total = totalOf(counts);
    const auto table = buildEqualizeTable(counts, total);
    std::int64_t met = 0;
    for (int i = 0; i < 256; ++i) {
        met += counts[i];
        EXPECT_EQ(table[i], int(met * (255.0 / total))) << i;
    }
}

TEST(HistogramTables, LogAndRootScaleByTheBrightestLevel)
{
    for (int brightest : {0, 1, 2, 100, 255}) {
        const auto counts = countsOf({{0, 5}, {brightest, 1}});
        const auto log = buildLogTable(counts);
        const auto root = buildRootTable(counts);
        const double scale = std::log(std::max(brightest, 1) + 1.0);
        for (int i = 0; i <= brightest; ++i) {
            EXPECT_EQ(log[i], int(255 * std::log(i + 1.0) / scale)) << i;
            EXPECT_EQ(root[i], std::min(255, int(std::sqrt(double(i)) * 128 / scale))) << i;
        }
    }
}

TEST(HistogramTables, NormalizeMapsTheTopOfTheRangeTo254)
{
    const auto two = *buildNormalizeTable(countsOf({{10, 50}, {20, 50}}), 100);
    EXPECT_EQ(two[10], 0);
    EXPECT_EQ(two[15], 127);
    EXPECT_EQ(two[20], 254);
    EXPECT_EQ(two[21], 255);
    // 1 of 100 does not exceed the cut of 1 at either end.
    const auto cut = *buildNormalizeTable(countsOf({{3, 1}, {10, 49}, {20, 49}, {30, 1}}), 100);
    EXPECT_EQ(cut[3], 0);
    EXPECT_EQ(cut[20], 254);
    EXPECT_EQ(cut[30], 255);
}

TEST(HistogramTables, NormalizeFallsBackToTheOccupiedLevels)
{
    const auto table = *buildNormalizeTable(countsOf({{5, 1}, {10, 998}, {15, 1}}), 1000);
    EXPECT_EQ(table[5], 0);
    EXPECT_EQ(table[10], 127);
    EXPECT_EQ(table[15], 254);
    for (int level : {0, 77, 255})
        EXPECT_FALSE(buildNormalizeTable(countsOf({{level, 9}}), 9)) << level;
}

TEST(HistogramTables, StretchLeavesFullAndFlatPicturesAlone)
{
    const auto table = *buildStretchTable(countsOf({{100, 1}, {103, 1}}));
    EXPECT_EQ(table[99], 0);
    EXPECT_EQ(table[101], 85);
    EXPECT_EQ(table[103], 255);
    EXPECT_EQ(table[255], 255);
    EXPECT_FALSE(buildStretchTable(countsOf({{0, 1}, {255, 1}})));
    for (int level : {0, 9, 255})
        EXPECT_FALSE(buildStretchTable(countsOf({{level, 4}}))) << level;
}

TEST(HistogramTables, AutoContrastCutsWhereThreePercentAreReached)
{
    const auto table = *buildAutoContrastTable(countsOf({{1, 2}, {10, 1}, {50, 94}, {101, 3}}), 100);
    EXPECT_EQ(table[9], 0);
    EXPECT_EQ(table[10], 0);
    EXPECT_EQ(table[50], 112); // 40 x 255 / 91 = 112.09
    EXPECT_EQ(table[101], 255);
    EXPECT_EQ(table[102], 255);
    EXPECT_FALSE(buildAutoContrastTable(countsOf({{50, 100}}), 100));
    EXPECT_FALSE(buildAutoContrastTable(countsOf({{40, 2}, {50, 96}, {60, 2}}), 100));
}
