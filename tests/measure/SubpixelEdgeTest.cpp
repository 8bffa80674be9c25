#include "measure/EdgeMeasure.h"
#include "tests/support/DrawnTruth.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

using namespace testing_support;

namespace {

std::vector<CEdgePoint> edgesOf(const CKestImage& image, double x1, double y1, double x2, double y2,
                                const CEdgeSettings& settings = {})
{
    std::vector<CEdgePoint> edges;
    const int count = image.GetEdges(x1, y1, x2, y2, settings, edges);
    EXPECT_EQ(count, int(edges.size()));
    return edges;
}

struct Errors
{
    ErrorStatistics position;
    ErrorStatistics contrast;
};

/// Scans of 30 pixels at right angles across edges of 130 directions, crossing them anywhere.
Errors scanEveryDirection(int width, double noise, double contrast)
{
    std::mt19937 engine(5);
    const auto random = [&] { return engine() / 4294967296.0; };
    Errors errors;
    for (int i = 0; i < 130; ++i) {
        const double angle = radians(i % 8 == 0 ? i / 8 * 45 : i * 360.0 / 130);
        const double nx = std::cos(angle), ny = std::sin(angle), x = 32 + random(), y = 32 + random();
        const double position = 14 + 2 * random();
        DrawnTruth truth(64, 64, 40);
        truth.drawHalfPlane(nx, ny, nx * x + ny * y + position - 15, 40 + contrast);
        CEdgeSettings settings;
        settings.width = width;
        const auto edges = edgesOf(truth.shot(noise, unsigned(i) + 1), x - 15 * nx, y - 15 * ny, x + 15 * nx,
                                   y + 15 * ny, settings);
        EXPECT_EQ(edges.size(), 1u) << "direction " << i;
        if (edges.empty())
            continue;
        errors.position.add(edges[0].position - position);
        errors.contrast.add(edges[0].contrast - contrast);
        EXPECT_NEAR(edges[0].x, x + (edges[0].position - 15) * nx, 1e-9);
        EXPECT_EQ(edges[0].polarity, CEdgePolarity::DarkBright);
    }
    return errors;
}

TEST(SubpixelEdges, LieWhereTheyWereDrawnInEveryDirection)
{
    for (double contrast : {40.0, 100.0, 180.0}) {
        const Errors single = scanEveryDirection(1, 0, contrast), wide = scanEveryDirection(5, 0, contrast);
        EXPECT_LT(std::abs(single.position.mean()), 0.003) << contrast;
        EXPECT_LT(single.position.worst, 0.03) << contrast;
        EXPECT_LT(wide.position.worst, 0.015) << contrast;
        EXPECT_LT(single.contrast.worst, 1) << "smoothing takes nothing from the contrast";
        EXPECT_LT(wide.contrast.worst, 0.3);
    }
}

TEST(SubpixelEdges, ScatterLittleInNoise)
{
    const Errors single = scanEveryDirection(1, 4, 100), wide = scanEveryDirection(15, 4, 100);
    EXPECT_LT(single.position.spread(), 0.06);
    EXPECT_LT(wide.position.spread(), 0.02);
    EXPECT_LT(std::abs(wide.position.mean()), 0.01);
    EXPECT_LT(std::abs(wide.contrast.mean()), 0.5);
    int invented = 0;
    for (unsigned seed = 1; seed <= 100; ++seed)
        invented += int(edgesOf(DrawnTruth(200, 9, 100).shot(4, seed), 0, 4, 199, 4).size());
    EXPECT_EQ(invented, 0) << "of noise alone";
}

TEST(SubpixelEdges, AreSelectedAsSeenFromTheFirstEnd)
{
    DrawnTruth truth(100, 20, 100); // steps of +40, -60 and +60
    truth.drawHalfPlane(1, 0, 20.25, 140);
    truth.drawHalfPlane(1, 0, 50.5, 80);
    truth.drawHalfPlane(1, 0, 70.75, 140);
    const CKestImage image = truth.shot();
    CEdgeSettings settings;
    auto edges = edgesOf(image, 5, 10, 95, 10, settings);
    ASSERT_EQ(edges.size(), 3u);
    EXPECT_NEAR(edges[0].x, 20.25, 0.01);
    EXPECT_NEAR(edges[0].position, 15.25, 0.01);
    EXPECT_NEAR(edges[1].contrast, 60, 0.05);
    EXPECT_EQ(edges[1].polarity, CEdgePolarity::BrightDark);
    EXPECT_EQ(edgesOf(image, 20.3, 10, 70.7, 10).size(), 1u) << "the ends cut";

    settings.contrast = 40;
    EXPECT_EQ(edgesOf(image, 5, 10, 95, 10, settings).size(), 3u);
    settings.contrast = 40.5;
    EXPECT_EQ(edgesOf(image, 5, 10, 95, 10, settings).size(), 2u);
    settings = {CEdgePolarity::BrightDark, CEdgeSelect::All, 20, 1, 1};
    EXPECT_EQ(edgesOf(image, 5, 10, 95, 10, settings).size(), 1u);
    edges = edgesOf(image, 95, 10, 5, 10, settings);
    ASSERT_EQ(edges.size(), 2u) << "from the other end";
    EXPECT_NEAR(edges[0].position, 24.25, 0.01);

    const auto chosen = [&](CEdgeSelect select, double from, double to) {
        const auto one = edgesOf(image, from, 10, to, 10, {CEdgePolarity::Any, select, 20, 1, 1});
        return one.size() == 1 ? one[0].x : -1;
    };
    EXPECT_NEAR(chosen(CEdgeSelect::First, 5, 95), 20.25, 0.01);
    EXPECT_NEAR(chosen(CEdgeSelect::Last, 5, 95), 70.75, 0.01);
    EXPECT_NEAR(chosen(CEdgeSelect::Strongest, 60, 5), 50.5, 0.01);
}

TEST(SubpixelEdges, OfStripesDoNotPullAtEachOther)
{
    for (double angle : {0.0, 20.0, 45.0}) {
        const double nx = std::cos(radians(angle)), ny = std::sin(radians(angle));
        DrawnTruth truth(80, 80, 60);
        const double middle = 40 * (nx + ny) + 0.3;
        for (int j = 0; j < 6; ++j)
            truth.drawHalfPlane(nx, ny, middle + (j - 2.5) * 5, j % 2 ? 60 : 160);
        CEdgeSettings settings;
        settings.width = 3;
        const auto edges =
            edgesOf(truth.shot(), 40 - 30 * nx, 40 - 30 * ny, 40 + 30 * nx, 40 + 30 * ny, settings);
        ASSERT_EQ(edges.size(), 6u) << angle;
        for (int j = 0; j < 6; ++j)
            EXPECT_NEAR(edges[std::size_t(j)].position, 30.3 + (j - 2.5) * 5, 0.025) << angle;
    }
}

TEST(SubpixelEdges, OfABlurredStepIsOneInItsMiddle)
{
    for (double length : {4.0, 8.0}) {
        DrawnTruth truth(100, 20, 60);
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < 100; ++x)
                truth.at(x, y) = 60 + 100 * std::clamp((x - 50.3) / length + 0.5, 0.0, 1.0);
        const auto edges = edgesOf(truth.shot(), 20, 10, 80, 10);
        ASSERT_EQ(edges.size(), 1u) << length;
        EXPECT_NEAR(edges[0].x, 50.3, 0.025) << length;
    }
}

TEST(SubpixelEdges, AreNotInventedOutsideThePicture)
{
    DrawnTruth slope(60, 40,
                     0); // brighter downwards: what a wide scan averages depends on how much is inside
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 60; ++x)
            slope.at(x, y) = 6 * y;
    const CKestImage image = slope.shot();
    for (int width : {1, 2, 15, 100, 1000}) {
        CEdgeSettings settings;
        settings.width = width;
        settings.contrast = 3;
        for (double y : {-30.0, -0.5, 0.0, 20.0, 39.0, 39.4, 60.0}) {
            EXPECT_TRUE(edgesOf(image, -50, y, 110, y, settings).empty()) << width << " at " << y;
            EXPECT_TRUE(edgesOf(image, 30.5, y, -1e8, y, settings).empty()) << width << " at " << y;
        }
    }
    DrawnTruth truth(60, 40, 50);
    truth.drawHalfPlane(1, 0, 3.3, 150);
    const auto edges = edgesOf(truth.shot(), -1e6, 5, 1e6, 5);
    ASSERT_EQ(edges.size(), 1u) << "near the border";
    EXPECT_NEAR(edges[0].x, 3.3, 0.02);
}

TEST(SubpixelEdges, AreTheSameBitsOnEveryInstructionSet)
{
    auto pixels = randomBytes(97 * 61, 3);
    const CKestImage image(97, 61, pixels.data());
    std::vector<CEdgePoint> reference;
    forEachKernelTarget([&](auto target) {
        std::vector<CEdgePoint> edges;
        for (int i = 0; i < 60; ++i) {
            const CEdgeSettings settings{CEdgePolarity::Any, CEdgeSelect::All, 5, 0.4 + i % 4, 1 + i % 5};
            image.GetEdges(i - 5.3, -3, 100 - i * 1.7, 70 - i % 7, settings, edges);
        }
        if (reference.empty())
            reference = edges;
        ASSERT_GT(edges.size(), 100u);
        ASSERT_EQ(edges.size(), reference.size()) << int(target);
        for (std::size_t i = 0; i < edges.size(); ++i)
            ASSERT_TRUE(edges[i].position == reference[i].position &&
                        edges[i].contrast == reference[i].contrast && edges[i].x == reference[i].x);
    });
}

TEST(SubpixelEdges, SurviveEveryArgument)
{
    const double values[] = {
        0, 1, 2.5, -3, 1e8, -1e10, 1e300, std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, 4.9e-324};
    for (int width : {1, 2, 3, 4, 5, 17})
        for (int height : {1, 3, 4, 17}) {
            auto pixels = randomBytes(std::size_t(width) * height, unsigned(width));
            const CKestImage image(width, height, pixels.data());
            for (double x1 : values)
                for (double y1 : values)
                    for (double x2 : values)
                        for (double y2 : values)
                            for (const CEdgePoint& e : edgesOf(image, x1, y1, x2, y2, {{}, {}, 1, 0.5, 2}))
                                ASSERT_TRUE(e.x >= -2 && e.x <= width + 1 && e.y >= -2 && e.y <= height + 1);
        }
    const CKestImage image = DrawnTruth(20, 20, 30).shot(30);
    CEdgeSettings settings;
    settings.contrast = 5;
    ASSERT_FALSE(edgesOf(image, 0, 10, 19, 10, settings).empty());
    for (double wrong : {0.0, -1.0, 20.5, HUGE_VAL, std::numeric_limits<double>::quiet_NaN()}) {
        settings.sigma = wrong;
        EXPECT_TRUE(edgesOf(image, 0, 10, 19, 10, settings).empty());
    }
    for (int wrong : {0, 1001, -5})
        EXPECT_TRUE(edgesOf(image, 0, 10, 19, 10, {{}, {}, 5, 1, wrong}).empty());
    EXPECT_TRUE(edgesOf(CKestImage(), 0, 0, 5, 5).empty());
}

} // namespace
