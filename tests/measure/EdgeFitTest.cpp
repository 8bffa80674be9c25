#include "measure/EdgeMeasure.h"
#include "tests/support/DrawnTruth.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

using namespace testing_support;

namespace {

struct LineErrors
{
    ErrorStatistics distance;
    ErrorStatistics angle;
    int leastUsed = 1 << 30;
};

/// Edges of 130 directions, measured in boxes 100 long that expect them up to 2 degrees aside. spoil may draw
/// over pixels by their place along the edge and to its right.
LineErrors measureLines(double contrast, double noise,
                        const std::function<void(double&, double u, double v)>& spoil = {})
{
    std::mt19937 engine(11);
    const auto random = [&] { return engine() / 4294967296.0; };
    LineErrors errors;
    for (int i = 0; i < 130; ++i) {
        const double angle = i % 10 == 0 ? (i / 10 - 6) * 15 : i * 180.0 / 130 - 90 + random();
        const double dx = std::cos(radians(angle)), dy = -std::sin(radians(angle)), off = 2 * random() - 1;
        DrawnTruth truth(140, 140, 40);
        truth.drawHalfPlane(-dy, dx, 70 * (dx - dy) + off, 40 + contrast);
        for (int y = 0; y < 140 && spoil; ++y)
            for (int x = 0; x < 140; ++x)
                spoil(truth.at(x, y), (x - 70) * dx + (y - 70) * dy, (y - 70) * dx - (x - 70) * dy - off);
        const CEdgeBox box{70 + random() - 0.5, 70 + random() - 0.5, 100, 30, angle + 4 * random() - 2, 100};
        CEdgeLine line{};
        if (truth.shot(noise, unsigned(i) + 1).GetEdgeLine(box, {}, line) != 1) {
            ADD_FAILURE() << "no line at " << angle;
            continue;
        }
        errors.distance.add((line.y - 70) * dx - (line.x - 70) * dy - off);
        errors.angle.add(std::remainder(line.angle - angle, 180));
        errors.leastUsed = std::min(errors.leastUsed, line.used);
        EXPECT_TRUE(line.angle > -90 && line.angle <= 90);
    }
    return errors;
}

TEST(EdgeLine, LiesWhereItWasDrawnInEveryDirection)
{
    for (double contrast : {40.0, 180.0}) {
        const LineErrors errors = measureLines(contrast, 0);
        // Rounding to levels alone moves an upright edge by half a level over the contrast.
        EXPECT_LT(errors.distance.worst, std::max(0.01, 0.5 / contrast)) << contrast;
        EXPECT_LT(errors.angle.worst, 0.01) << contrast;
        EXPECT_EQ(errors.leastUsed, 100) << contrast;
    }
    const LineErrors noisy = measureLines(100, 4);
    EXPECT_LT(std::abs(noisy.distance.mean()), 0.005);
    EXPECT_LT(noisy.distance.spread(), 0.02);
    EXPECT_LT(std::abs(noisy.angle.mean()), 0.005);
    EXPECT_LT(noisy.angle.spread(), 0.02);
}

TEST(EdgeLine, IsNotMovedByThirtyPercentOfOthers)
{
    const auto notch = [](double& level, double u, double v) {
        if (u > -50 && u < -20 && v > -7 && v < 7)
            level = v > -6 ? 140 : 40;
    };
    const auto scratches = [](double& level, double u, double v) {
        if (std::abs(std::remainder(u, 25)) < 3.75 && v > -12 && v < 9)
            level = v > 5 ? 140 : 40;
    };
    for (double noise : {0.0, 4.0}) {
        const LineErrors notched = measureLines(100, noise, notch),
                         scratched = measureLines(100, noise, scratches);
        for (const LineErrors& errors : {notched, scratched}) {
            EXPECT_LT(errors.distance.worst, noise > 0 ? 0.08 : 0.03);
            EXPECT_LT(errors.distance.spread(), 0.02);
            EXPECT_LT(errors.angle.worst, noise > 0 ? 0.12 : 0.04);
            EXPECT_GT(errors.leastUsed, 50);
        }
    }
}

TEST(EdgeLine, IsNotMovedByAStepOfLessThanAPixel)
{
    DrawnTruth truth(120, 40, 60);
    truth.drawHalfPlane(0, 1, 20.25, 160);
    for (int x = 10; x < 40; ++x) { // there at 20.65
        truth.at(x, 20) = 60;
        truth.at(x, 21) = 145;
    }
    CEdgeLine line{};
    ASSERT_EQ(truth.shot().GetEdgeLine({60, 20, 100, 20, 0, 100}, {}, line), 1);
    EXPECT_NEAR(line.y, 20.25, 0.01);
    EXPECT_NEAR(line.angle, 0, 0.01);
    EXPECT_NEAR(line.used, 70, 3);
}

TEST(EdgeLine, TellsWhereItLeavesTheBoxAndWhatItUsed)
{
    DrawnTruth truth(120, 60, 60);
    truth.drawHalfPlane(0, 1, 20.25, 160);
    const CKestImage image = truth.shot();
    CEdgeLine line{};
    CEdgeSettings settings;
    settings.polarity = CEdgePolarity::DarkBright;
    ASSERT_EQ(image.GetEdgeLine({60, 22, 80, 20}, settings, line), 1)
        << "downwards, from the left to the right";
    EXPECT_NEAR(line.x, 60, 0.01);
    EXPECT_NEAR(line.y, 20.25, 0.01);
    EXPECT_NEAR(line.angle, 0, 0.01);
    EXPECT_NEAR(line.x1, 20, 1e-9);
    EXPECT_NEAR(line.y2, 20.25, 0.01);
    EXPECT_NEAR(line.x2, 100, 1e-9);
    EXPECT_EQ(line.scans, 50);
    EXPECT_EQ(line.used, 50);
    EXPECT_LT(line.rms, 0.01);
    ASSERT_EQ(image.GetEdgeLine({60, 22, 80, 20, 180}, {}, line), 1);
    EXPECT_NEAR(line.x1, 100, 1e-9) << "ends in the box's direction";
    EXPECT_EQ(image.GetEdgeLine({60, 22, 80, 20, 180}, settings, line), 0) << "the other way round";
    ASSERT_EQ(image.GetEdgeLine({60, 20, 100, 10, 30}, {}, line), 0) << "on too few scans";
    ASSERT_EQ(image.GetEdgeLine({60, 20, 100, 10, 10}, {}, line), 1) << "leaves through the long sides";
    EXPECT_NEAR(line.x2 - line.x1, 10 / std::sin(radians(10)), 0.2);
}

TEST(EdgeLine, NeedsAQuarterOfItsScansAndThree)
{
    DrawnTruth truth(200, 40, 60);
    truth.drawBox(0, 20, 50, 40, 160); // an edge on 50 of 200 columns
    const CKestImage image = truth.shot();
    CEdgeLine line{};
    line.x = -7;
    const auto scans = [&](double left, double right, int count) {
        return image.GetEdgeLine({(left + right) / 2, 20, right - left, 16, 0, count}, {}, line);
    };
    EXPECT_EQ(scans(0, 160, 40), 1) << "50 of 160";
    line.x = -7;
    EXPECT_EQ(scans(10, 190, 45), 0) << "40 of 180";
    EXPECT_EQ(scans(35, 60, 5), 1) << "3 of 5";
    line.x = -7;
    EXPECT_EQ(scans(40, 65, 5), 0) << "2 of 5";
    EXPECT_EQ(line.x, -7);
}

/// Errors of centre (distance) and radius of discs about 30 by 30 offsets.
void measureCircles(double radius, double hidden, double noise, ErrorStatistics& centre,
                    ErrorStatistics& size)
{
    std::mt19937 engine(17);
    const auto random = [&] { return engine() / 4294967296.0; };
    for (int i = 0; i < 12; ++i) {
        const int extent = int(2 * radius) + 50;
        const double x = extent / 2 + random(), y = extent / 2 + random(), from = 360 * random();
        const bool bright = i % 2 == 0;
        DrawnTruth truth(extent, extent, bright ? 50 : 150);
        truth.drawDisc(x, y, radius, bright ? 150 : 50);
        for (int k = 0; k < extent * extent; ++k) { // the background covers the rim
            const double dx = k % extent - x, dy = k / extent - y;
            if (std::fmod(std::atan2(-dy, dx) * 180 / std::numbers::pi + 720 - from, 360) < hidden)
                truth.at(k % extent, k / extent) = bright ? 50 : 150;
        }
        const CEdgeRing ring{x + random() - 0.5, y + random() - 0.5, radius + 8, std::max(radius - 8, 1.0)};
        CEdgeSettings settings;
        settings.polarity = bright ? CEdgePolarity::BrightDark : CEdgePolarity::DarkBright;
        CEdgeCircle circle{};
        ASSERT_EQ(truth.shot(noise, unsigned(i) + 1).GetEdgeCircle(ring, settings, circle), 1);
        centre.add(std::hypot(circle.x - x, circle.y - y));
        size.add(circle.radius - radius);
        EXPECT_EQ(circle.scans, 64);
        EXPECT_GE(circle.used, hidden > 0 ? 36 : 60);
    }
}

TEST(EdgeCircle, HasItsCentreAndRadiusWhatEverHalfOfItsRimIsHidden)
{
    for (double radius : {8.0, 15.5, 40.0, 120.0})
        for (double hidden : {0.0, 120.0}) {
            ErrorStatistics centre, size;
            ASSERT_NO_FATAL_FAILURE(measureCircles(radius, hidden, 0, centre, size));
            EXPECT_LT(centre.worst, 0.02) << radius << " hidden " << hidden;
            EXPECT_LT(size.worst, 0.02) << radius << " hidden " << hidden;
            EXPECT_LT(std::abs(size.mean()), 0.01) << radius << " hidden " << hidden;
        }
    ErrorStatistics centre, size;
    ASSERT_NO_FATAL_FAILURE(measureCircles(40, 0, 4, centre, size));
    EXPECT_LT(centre.mean(), 0.03);
    EXPECT_LT(size.spread(), 0.02);
}

TEST(EdgeCircle, IsNotMovedByAnArcOfAnother)
{
    DrawnTruth truth(160, 160, 50);
    truth.drawDisc(80.3, 79.6, 45, 150);
    truth.drawDisc(80.3 + 42, 79.6, 24, 150); // a bulge over a quarter of the rim
    CEdgeCircle circle{};
    ASSERT_EQ(truth.shot().GetEdgeCircle({80, 80, 25, 75, 90}, {}, circle), 1);
    EXPECT_NEAR(circle.x, 80.3, 0.02);
    EXPECT_NEAR(circle.y, 79.6, 0.02);
    EXPECT_NEAR(circle.radius, 45, 0.02);
    EXPECT_LT(circle.used, 80);
}

TEST(EdgeFits, RefuseWhatIsOutOfRange)
{
    const double bad = std::numeric_limits<double>::quiet_NaN();
    auto pixels = randomBytes(64 * 64, 9);
    const CKestImage image(64, 64, pixels.data());
    CEdgeLine line{};
    CEdgeCircle circle{};
    ASSERT_EQ(image.GetEdgeLine({32, 32, 30, 20, 0, 10000}, {}, line), 1);
    for (double value : {bad, HUGE_VAL, 1e300, 0.0, -1.0}) {
        EXPECT_EQ(image.GetEdgeLine({32, 32, value, 20}, {}, line), 0);
        EXPECT_EQ(image.GetEdgeLine({32, 32, 30, value}, {}, line), 0);
        EXPECT_EQ(image.GetEdgeCircle({value * 1e12, 32, 3, 20}, {}, circle), value == 0);
    }
    for (double value : {bad, HUGE_VAL, 1e300})
        EXPECT_EQ(image.GetEdgeLine({32, 32, 30, 20, value}, {}, line), 0);
    for (int scans : {-1, 0, 2, 10001}) {
        EXPECT_EQ(image.GetEdgeLine({32, 32, 30, 20, 0, scans}, {}, line), 0);
        EXPECT_EQ(image.GetEdgeCircle({32, 32, 3, 20, scans}, {}, circle), 0);
    }
    EXPECT_EQ(image.GetEdgeCircle({32, 32, 5, 5}, {}, circle), 0);
    EXPECT_EQ(image.GetEdgeCircle({32, 32, -5, 5}, {}, circle), 0);
    EXPECT_EQ(CKestImage().GetEdgeLine({32, 32, 30, 20}, {}, line), 0);
    EXPECT_EQ(CKestImage().GetEdgeCircle({32, 32, 3, 20}, {}, circle), 0);
}

} // namespace
