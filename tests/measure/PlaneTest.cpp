#include "image/VisionImage.h"
#include "measure/PlaneMeasure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

TEST(PlaneRelations, OfPointsAndLines)
{
    const CPlaneLine level{10, 5, 0}, upright{3, 40, 90}, falling{0, 0, -45};
    EXPECT_DOUBLE_EQ(CKestImage::GetDistance(CPlanePoint{1, 2}, CPlanePoint{4, 6}), 5);
    EXPECT_DOUBLE_EQ(CKestImage::GetDistance(CPlanePoint{-90, 2}, level), 3);
    EXPECT_DOUBLE_EQ(CKestImage::GetDistance(CPlanePoint{10, 0}, falling), 10 / std::sqrt(2));
    EXPECT_DOUBLE_EQ(CKestImage::GetDistance(level, upright), 7) << "from the first line's point";
    EXPECT_DOUBLE_EQ(CKestImage::GetDistance(upright, level), 35);
    EXPECT_DOUBLE_EQ(CKestImage::GetLineAngle(level, upright), 90);
    EXPECT_DOUBLE_EQ(CKestImage::GetLineAngle(falling, {0, 0, 75}), 60);
    EXPECT_NEAR(CKestImage::GetLineAngle({0, 0, 89.9}, {5, 5, -89.9}), 0.2, 1e-9);
    CPlanePoint at{-7, -7};
    ASSERT_EQ(CKestImage::GetIntersection(level, falling, at), 1);
    EXPECT_NEAR(at.x, 5, 1e-9) << "y runs downward: a line of -45 degrees goes to the lower right";
    EXPECT_NEAR(at.y, 5, 1e-9);
    EXPECT_EQ(CKestImage::GetIntersection({0, 0, 30}, {0, 9, -150}, at), 0);
    EXPECT_EQ(CKestImage::GetIntersection({0, 0, std::nan("")}, level, at), 0);
    EXPECT_NEAR(at.x, 5, 1e-9);
}

/// A view of a plane from aside, in millimetres.
CPlanePoint seen(double x, double y)
{
    const double w = 1 + 0.0004 * x - 0.0002 * y;
    return {(0.05 * x + 0.004 * y - 3) / w, (-0.003 * x + 0.06 * y + 2) / w};
}

std::vector<CPlanePair> pairsOf(std::vector<CPlanePoint> points)
{
    std::vector<CPlanePair> pairs;
    for (const CPlanePoint& p : points)
        pairs.push_back({p, seen(p.x, p.y)});
    return pairs;
}

const std::vector<CPlanePoint> corners{{10, 20}, {600, 5}, {620, 470}, {30, 450}};

TEST(PlaneScale, MapsAsThePairsSay)
{
    CKestPlaneScale scale;
    ASSERT_EQ(scale.SetPoints(pairsOf(corners)), 1);
    for (double x : {0.0, 333.0, 640.0})
        for (double y : {0.0, 222.0, 480.0}) {
            CPlanePoint at{};
            ASSERT_EQ(scale.Map({x, y}, at), 1);
            EXPECT_NEAR(at.x, seen(x, y).x, 1e-9);
            EXPECT_NEAR(at.y, seen(x, y).y, 1e-9);
            // The area of a small square, by differences.
            const CPlanePoint l = seen(x - 0.5, y), r = seen(x + 0.5, y), t = seen(x, y - 0.5),
                              b = seen(x, y + 0.5);
            const double area = (r.x - l.x) * (b.y - t.y) - (r.y - l.y) * (b.x - t.x);
            EXPECT_NEAR(scale.GetScale({x, y}), std::sqrt(area), 1e-6);
        }
    const CPlanePoint a = seen(50, 60), b = seen(500, 300);
    EXPECT_NEAR(scale.GetDistance({50, 60}, {500, 300}), std::hypot(a.x - b.x, a.y - b.y), 1e-9);
    ASSERT_EQ(scale.SetPerPixel(0.05), 1);
    EXPECT_DOUBLE_EQ(scale.GetDistance({1, 2}, {4, 6}), 0.25);
    EXPECT_DOUBLE_EQ(scale.GetScale({-1e6, 7}), 0.05);
}

TEST(PlaneScale, HasTheLeastSquaresOfManyPairs)
{
    std::mt19937 engine(3);
    std::vector<CPlanePair> pairs;
    for (int i = 0; i < 30; ++i) {
        const double x = engine() % 640, y = engine() % 480;
        CPlanePoint at = seen(x, y);
        pairs.push_back({{x, y}, {at.x + engine() % 100 * 1e-3, at.y + engine() % 100 * 1e-3}});
    }
    const auto squares = [&](const CKestPlaneScale& scale) {
        double sum = 0;
        for (const CPlanePair& pair : pairs) {
            CPlanePoint at{};
            EXPECT_EQ(scale.Map(pair.picture, at), 1);
            sum += std::pow(at.x - pair.plane.x, 2) + std::pow(at.y - pair.plane.y, 2);
        }
        return sum;
    };
    CKestPlaneScale best;
    ASSERT_EQ(best.SetPoints(pairs), 1);
    const double least = squares(best);
    EXPECT_LT(std::sqrt(least / 30), 0.05);
    // Any other homography is worse: those through corners that are slightly moved.
    for (int i = 0; i < 8; ++i)
        for (double change : {-1e-4, 1e-4}) {
            std::vector<CPlanePair> moved;
            for (const CPlanePoint& corner : corners) {
                CPlanePoint at{};
                best.Map(corner, at);
                moved.push_back({corner, at});
            }
            (i % 2 ? moved[i / 2].plane.x : moved[i / 2].plane.y) += change;
            CKestPlaneScale other;
            ASSERT_EQ(other.SetPoints(moved), 1);
            EXPECT_GT(squares(other), least);
        }
}

TEST(PlaneScale, RefusesWhatGivesNoPlane)
{
    CKestPlaneScale scale;
    ASSERT_EQ(scale.SetPerPixel(2), 1);
    const auto refused = [&](const std::vector<CPlanePair>& pairs) { return scale.SetPoints(pairs) == 0; };
    auto pairs = pairsOf(corners);
    pairs[2].plane.x = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(refused(pairs)) << "not finite";
    EXPECT_TRUE(refused(pairsOf({{0, 0}, {9, 0}, {9, 9}}))) << "three";
    EXPECT_TRUE(refused(pairsOf({{0, 0}, {10, 20}, {20, 40}, {30, 60}, {7, 14}}))) << "in a line";
    EXPECT_TRUE(refused(pairsOf({{0, 0}, {10, 20}, {20, 40}, {50, 0}}))) << "three of four in a line";
    EXPECT_TRUE(refused({4, {{5, 5}, {1, 1}}})) << "one point";
    EXPECT_TRUE(refused({})) << "none";
    // Two corners exchanged: the plane would have to fold.
    pairs = pairsOf(corners);
    std::swap(pairs[0].plane, pairs[1].plane);
    EXPECT_TRUE(refused(pairs));
    for (double wrong : {0.0, -1.0, HUGE_VAL, std::nan("")})
        EXPECT_EQ(scale.SetPerPixel(wrong), 0);
    EXPECT_DOUBLE_EQ(scale.GetScale({5, 5}), 2) << "what was set stays";

    ASSERT_EQ(scale.SetPoints(pairsOf(corners)), 1);
    CPlanePoint at{-7, -7};
    for (double x : {-1e5, -2500.0, HUGE_VAL, std::nan("")}) {
        EXPECT_EQ(scale.Map({x, 0}, at), 0) << "on or beyond the horizon";
        EXPECT_EQ(scale.GetScale({x, 0}), x == HUGE_VAL ? scale.GetScale({x, 0}) : 0);
        EXPECT_LT(scale.GetDistance({x, 0}, {1, 1}), 0);
    }
    EXPECT_EQ(at.x, -7);
}

} // namespace
