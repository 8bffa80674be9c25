#include "image/VisionImage.h"
#include "measure/EdgeTable.h"
#include "measure/LineGauge.h"
#include "measure/PointGauge.h"
#include "tests/support/PlainGauge.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

using namespace testing_support;

namespace {

constexpr int width = 301, height = 241;

/// Dark above an edge that rises to the right by the angle, bright below; or, turned, dark left of it.
std::vector<std::uint8_t> edgePicture(double degrees, bool upright)
{
    std::vector<std::uint8_t> pixels(std::size_t(width) * height);
    const double slope = std::tan(degrees * std::numbers::pi / 180);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const double u = x - width / 2, v = y - height / 2;
            const bool bright = upright ? u + slope * v > 0.25 : v + slope * u > 0.25;
            pixels[std::size_t(y) * width + x] = bright ? 200 : 50;
        }
    return pixels;
}

void expectEqual(const _stLineGaugeResult& found, const ormalux::LineFit& wanted)
{
    EXPECT_EQ((POINT{found.x1, found.y1}), wanted.first);
    EXPECT_EQ((POINT{found.x2, found.y2}), wanted.second);
    EXPECT_EQ((POINT{found.center_x, found.center_y}), wanted.center);
    EXPECT_TRUE(found.angle == wanted.angle || (std::isnan(found.angle) && std::isnan(wanted.angle)))
        << found.angle << " " << wanted.angle;
}

/// Ours and the plain gauge's result; false on both sides leaves the result untouched.
void expectPlainLine(const CKestImage& image, const plain::Picture& picture, const RECT& area, int polarity,
                     int direction, int step, int threshold)
{
    _stLineGaugeResult found{1, 2, 3, 4, 5, 6, 7};
    ormalux::LineFit wanted{{1, 2}, {3, 4}, {5, 6}, 7};
    const bool expected =
        plain::lineGauge(picture, area, polarity, direction, step, threshold, ormalux::bandCount(), wanted);
    ASSERT_EQ(image.GetLineGauge(area.left, area.top, area.right, area.bottom, polarity, direction, step,
                                 threshold, found),
              int(expected));
    expectEqual(found, wanted);
}

/// What the measured angle of a straight edge comes to: the pairs of either side point in opposite
/// directions, the centre line counts as 0, and with an even extent the side behind the centre has a line
/// less.
double predictedAngle(double rise, bool upright, int extent)
{
    const double ahead = upright ? 270 - rise : rise < 0 ? 360 + rise : rise;
    const double behind = ahead >= 180 ? ahead - 180 : ahead + 180;
    return (extent / 2 * ahead + (extent - extent / 2 - 1) * behind) / extent - 90;
}

TEST(LineGauge, MeasuresKnownEdgesInBothDirections)
{
    for (double degrees : {0.0, 0.1, 0.5, 1.0, 5.0, 12.3, 30.0, 44.0})
        for (bool upright : {false, true})
            for (bool falling : {false, true}) {
                if (degrees == 0 && falling)
                    continue;
                auto pixels = edgePicture(falling ? -degrees : degrees, upright);
                const CKestImage image(width, height, pixels.data());
                const plain::Picture picture{pixels.data(), width, height};
                // As wide as the edge stays inside the area.
                const int half = degrees > 20 ? 60 : 100;
                const RECT area{width / 2 - half, height / 2 - 110, width / 2 + half, height / 2 + 110};
                const RECT turned{width / 2 - 110, height / 2 - half, width / 2 + 110, height / 2 + half};
                const RECT& used = upright ? turned : area;
                const int direction = upright ? DIRECTION_VERTICAL : DIRECTION_HORIZENTAL;
                ASSERT_NO_FATAL_FAILURE(
                    expectPlainLine(image, picture, used, BLACK_AND_WHITE, direction, 1, 100));
                _stLineGaugeResult result;
                ASSERT_EQ(image.GetLineGauge(used.left, used.top, used.right, used.bottom, BLACK_AND_WHITE,
                                             direction, 1, 100, result),
                          1);
                // Of an edge that falls little, the pairs within one row count as 0 beside others near 360.
                const double predicted = predictedAngle(falling ? -degrees : degrees, upright, 2 * half);
                EXPECT_TRUE(std::abs(result.angle - predicted) < 0.25 ||
                            (!upright && falling && degrees < 30))
                    << degrees << ": " << result.angle << " " << predicted;
            }
}

TEST(LineGauge, RefusesWhatItCannotMeasure)
{
    auto pixels = edgePicture(0, false);
    const CKestImage image(width, height, pixels.data());
    _stLineGaugeResult result{1, 2, 3, 4, 5, 6, 7};
    EXPECT_EQ(image.GetLineGauge(50, 50, 200, 200, BLACK_AND_WHITE, 2, 1, 100, result), 0);
    EXPECT_EQ(image.GetLineGauge(50, 50, 200, 200, WHITE_AND_BLACK, DIRECTION_HORIZENTAL, 1, 100, result), 0);
    EXPECT_EQ(image.GetLineGauge(50, 50, 200, 90, BLACK_AND_WHITE, DIRECTION_HORIZENTAL, 1, 100, result), 0);
    EXPECT_EQ(image.GetLineGauge(50, 50, 200, 200, BLACK_AND_WHITE, DIRECTION_HORIZENTAL, 1, 0, result), 0);
    EXPECT_EQ(image.GetLineGauge(50, 50, width, 200, BLACK_AND_WHITE, DIRECTION_HORIZENTAL, 1, result), 0)
        << "no automatic threshold outside the image";
    EXPECT_EQ(CKestImage().GetLineGauge(0, 0, 9, 9, BLACK_AND_WHITE, DIRECTION_HORIZENTAL, 1, 100, result),
              0);
    EXPECT_EQ(result.angle, 7);
    // An area is put in order first; one without any pair has no angle.
    EXPECT_EQ(image.GetLineGauge(200, 200, 50, 50, BLACK_AND_WHITE, DIRECTION_HORIZENTAL, 1, 100, result), 1);
    EXPECT_EQ(result.angle, 74 * 180.0 / 150 - 90);
    EXPECT_EQ(result.center_x, 125);
    EXPECT_EQ(image.GetLineGauge(50, 50, 50, 200, BLACK_AND_WHITE, DIRECTION_HORIZENTAL, 1, 100, result), 1);
    EXPECT_TRUE(std::isnan(result.angle));
    EXPECT_EQ(result.x1, INT_MIN);
    EXPECT_EQ(result.y2, INT_MIN);
}

TEST(LineGauge, EqualsThePlainGaugeForEverySetBandCountAndStep)
{
    forEachKernelTarget([](auto) {
        forEachBandCount([](int bands) {
            std::mt19937 engine{unsigned(bands)};
            const auto random = [&](int low, int high) {
                return std::uniform_int_distribution(low, high)(engine);
            };
            for (int w : {1, 2, 63, 64, 65, 66, 129, 200})
                for (int h : {1, 2, 3, 70, 600}) {
                    auto pixels = randomBytes(std::size_t(w) * h, unsigned(w + h));
                    const CKestImage image(w, h, pixels.data());
                    const plain::Picture picture{pixels.data(), w, h};
                    for (int i = 0; i < 8; ++i) {
                        RECT area{random(-30, w / 2), random(-30, h / 2), 0, 0};
                        area.right = area.left + random(0, w + 60);
                        area.bottom = area.top + random(0, h / 2 + 40);
                        const int steps[] = {1, 2, 3, 17, 40, INT_MAX, 0, INT_MIN};
                        const int threshold = i == 7 ? 254 : random(1, 250);
                        ASSERT_NO_FATAL_FAILURE(expectPlainLine(image, picture, area, i & 1, random(0, 1),
                                                                steps[random(0, 7)], threshold))
                            << w << "x" << h << " in " << bands << " bands";
                    }
                }
        });
    });
}

TEST(LineGauge, LinesMeasuredTogetherEqualLinesOnTheirOwn)
{
    // Two levels: equal edges before, at and behind the column or row where a line is tilted.
    forEachKernelTarget([](auto target) {
        std::mt19937 engine(61);
        for (int round = 0; round < 300; ++round) {
            const int w = 1 + int(engine() % 280), h = 1 + int(engine() % 40);
            const bool columns = engine() % 2, sparse = engine() % 2;
            std::vector<std::uint8_t> pixels(std::size_t(w) * h);
            for (auto& p : pixels)
                p = (sparse ? engine() % 64 == 0 : engine() % 2) ? 200 : 50;
            const ormalux::ConstGrayView view{pixels.data(), w, h, w};
            const LONG left = LONG(engine() % w), top = LONG(engine() % h);
            const ormalux::LineGaugeTask task{
                {left, top, w - 1 - LONG(engine() % (w - left)), h - 1}, int(engine() % 2), columns, 1, 100};
            ormalux::EdgeTable table(view, task);
            table.measureAll();
            for (std::int64_t line = table.firstLine(); line <= table.lastLine(); ++line) {
                const RECT& area = task.area;
                const auto scan = columns ? ormalux::gaugeLine(view, line, area.top, line, area.bottom)
                                          : ormalux::gaugeLine(view, area.left, line, area.right, line);
                ormalux::EdgePoint edge;
                POINT at;
                const bool expected = ormalux::strongestEdge(view, scan, task.polarity, task.threshold, edge);
                ASSERT_EQ(table.find(line, at), expected);
                ASSERT_TRUE(!expected || at == edge.at) << int(target) << " line " << line << " of " << w;
            }
        }
    });
}

TEST(LineGauge, TheAutomaticThresholdIsThatOfTheArea)
{
    std::vector<std::uint8_t> pixels(100 * 100);
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 100; ++x)
            pixels[std::size_t(y) * 100 + x] = std::uint8_t(std::clamp(30 + 10 * (y - 40 + x / 20), 30, 230));
    const CKestImage image(100, 100, pixels.data());
    const int threshold = plain::edgeThreshold({pixels.data(), 100, 100}, 10, 10, 90, 90);
    _stLineGaugeResult given, automatic;
    ASSERT_EQ(image.GetLineGauge(10, 10, 90, 90, BLACK_AND_WHITE, DIRECTION_HORIZENTAL, 1, threshold, given),
              1);
    ASSERT_EQ(image.GetLineGauge(90, 90, 10, 10, BLACK_AND_WHITE, DIRECTION_HORIZENTAL, 1, automatic), 1);
    EXPECT_EQ(automatic.angle, given.angle);
    EXPECT_EQ(automatic.center_y, given.center_y);
}

TEST(LineGauge, AnAreaWithoutEndEndsInTime)
{
    auto pixels = edgePicture(3, false);
    const CKestImage image(width, height, pixels.data());
    _stLineGaugeResult result;
    for (int step : {1, 100, INT_MAX})
        for (int direction : {DIRECTION_VERTICAL, DIRECTION_HORIZENTAL}) {
            image.GetLineGauge(INT_MIN, INT_MIN, INT_MAX, INT_MAX, BLACK_AND_WHITE, direction, step, 100,
                               result);
            image.GetLineGauge(INT_MAX, INT_MIN, INT_MAX, INT_MAX, BLACK_AND_WHITE, direction, step, 100,
                               result);
        }
}

TEST(LineGauge, RepeatedAdditionRoundsAsOneByOne)
{
    std::mt19937_64 engine(3);
    for (int i = 0; i < 400; ++i) {
        // Values with few and with many bits: ties and inexact sums.
        const double value = i % 2 ? double(engine() >> 11) * 0x1p-46 : double(engine() % 64) / 8 + 1;
        double sum = i % 3 ? double(engine() >> 11) * std::ldexp(1.0, int(engine() % 50) - 50) : 0;
        const std::int64_t n = std::int64_t(engine() % 200000);
        const double fast = ormalux::addRepeatedly(sum, value, n);
        for (std::int64_t k = 0; k < n; ++k)
            sum += value;
        ASSERT_EQ(fast, sum) << value << " " << n;
    }
}

} // namespace
