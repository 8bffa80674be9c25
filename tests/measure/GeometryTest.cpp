#include "image/VisionImage.h"
#include "measure/Geometry.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace {

/// The points of a square grid, for exhaustive pairs and quadruples.
std::vector<POINT> gridPoints(int side)
{
    std::vector<POINT> points;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            points.push_back({x, y});
    return points;
}

TEST(Geometry, DistanceTruncates)
{
    EXPECT_EQ(CKestImage::Distance(0, 0, 3, 4), 5);
    EXPECT_EQ(CKestImage::Distance(0, 0, 1, 1), 1);
    EXPECT_EQ(CKestImage::Distance(-1000000000, 0, 1000000000, 0), 2000000000);
}

TEST(Geometry, AnglesGrowCounterClockwiseWithYUp)
{
    EXPECT_EQ(CKestImage::GetAngle(0, 0, 0, 0), 0);
    EXPECT_EQ(CKestImage::GetAngle(0, 0, 9, 0), 0);
    EXPECT_EQ(CKestImage::GetAngle(0, 0, 0, -5), 90);
    EXPECT_EQ(CKestImage::GetAngle(0, 0, -2, 0), 180);
    EXPECT_EQ(CKestImage::GetAngle(0, 0, 0, 5), 270);
    for (int degree = 1; degree < 360; ++degree) {
        const double t = degree * std::numbers::pi / 180;
        const int x = int(std::lround(1e6 * std::cos(t))), y = int(std::lround(-1e6 * std::sin(t)));
        EXPECT_NEAR(CKestImage::GetAngle(100, -7, 100 + x, -7 + y), degree, 1e-4);
    }
    EXPECT_EQ(CKestImage::GetAngle(INT_MIN, INT_MAX, INT_MAX, INT_MIN), 45);
}

TEST(Geometry, RotatedPointsTurnClockwiseAndSurviveOddAngles)
{
    int x, y;
    CKestImage::RotatePoint(10, 0, 90, 0, 0, &x, &y);
    EXPECT_EQ(x, 0);
    EXPECT_EQ(y, 10);
    CKestImage::RotatePoint(12, 5, 180, 10, 5, &x, &y);
    EXPECT_EQ(x, 8);
    CKestImage::RotatePoint(-7, 0, 45, 0, 0, &x, &y); // -4.95: toward 0
    EXPECT_EQ(x, -4);
    EXPECT_EQ(y, -4);
    for (double angle : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        CKestImage::RotatePoint(1, 2, angle, 3, 4, &x, &y);
        EXPECT_EQ(x, INT_MIN);
        EXPECT_EQ(y, INT_MIN);
    }
    CKestImage::RotatePoint(INT_MAX, INT_MAX, 225, INT_MIN, INT_MIN, nullptr, &y);
    EXPECT_EQ(y, INT_MIN);
}

TEST(Geometry, PointInRectangleKeepsItsOddRule)
{
    EXPECT_EQ(CKestImage::PtInRectangle(0, 0, 10, 10, 5, 5), 0);
    EXPECT_EQ(CKestImage::PtInRectangle(10, 10, 0, 0, 0, 0), 1);
    EXPECT_EQ(CKestImage::PtInRectangle(0, 0, 10, 10, -3, -3), 1);
    EXPECT_EQ(CKestImage::PtInRectangle(0, 0, 10, 10, 0, 1), 0);
}

TEST(Geometry, CrossingRuleIgnoresVerticesOnTheRow)
{
    const POINT square[] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    EXPECT_EQ(CKestImage::PtInPolygon(square, 4, POINT{5, 5}), 1);
    EXPECT_EQ(CKestImage::PtInPolygon(square, 4, POINT{15, 5}), 0);
    EXPECT_EQ(CKestImage::PtInPolygon(square, 4, POINT{5, 0}), 0);
    // Both edges of a tip on the row are left out; so are those of a corner that the row passes through.
    const POINT diamond[] = {{5, 0}, {10, 5}, {5, 10}, {0, 5}};
    EXPECT_EQ(CKestImage::PtInPolygon(diamond, 4, POINT{5, 5}), 0);
    EXPECT_EQ(CKestImage::PtInPolygon(diamond, 4, POINT{5, 6}), 1);
    EXPECT_EQ(CKestImage::PtInPolygon(nullptr, 4, POINT{0, 0}), 0);
    EXPECT_EQ(CKestImage::PtInPolygon(square, 0, POINT{5, 5}), 0);
    const POINT widest[] = {{INT_MIN, INT_MIN}, {INT_MAX, INT_MIN}, {INT_MAX, INT_MAX}, {INT_MIN, INT_MAX}};
    EXPECT_EQ(CKestImage::PtInPolygon(widest, 4, POINT{0, 0}), 1);
}

TEST(Geometry, CircleHoldsItsInside)
{
    for (int y = -30; y <= 30; ++y)
        for (int x = -30; x <= 30; ++x) {
            const double distance = std::hypot(x, y);
            const int inside = CKestImage::PtInCycle(100, -50, 20, 100 + x, -50 + y);
            EXPECT_TRUE(std::abs(distance - 20) <= 1.5 || (inside != 0) == (distance < 20)) << x << " " << y;
        }
    EXPECT_EQ(CKestImage::PtInCycle(0, 0, 0, 0, 0), 0);
    CKestImage::PtInCycle(INT_MAX, INT_MIN, INT_MAX, 0, 0);
}

/// Whether the crossing's exact x lies in both segments.
int crossesExactly(POINT a, POINT b, POINT c, POINT d)
{
    const long den = long(b.x - a.x) * (d.y - c.y) - long(b.y - a.y) * (d.x - c.x);
    if (den == 0)
        return 0;
    const long share = long(c.x - a.x) * (d.y - c.y) - long(c.y - a.y) * (d.x - c.x);
    const long sign = den > 0 ? 1 : -1, x = sign * (a.x * den + (b.x - a.x) * share); // times |den|
    const auto holds = [&](POINT p, POINT q) {
        return x >= std::min(p.x, q.x) * sign * den && x <= std::max(p.x, q.x) * sign * den;
    };
    return holds(a, b) && holds(c, d);
}

/// Both segments traced in full and searched pair by pair.
bool crossingPixelPlainly(CPointArray& first, CPointArray& second, POINT& crossing)
{
    for (const POINT& p : first.records())
        for (const POINT& q : second.records())
            if (p == q || (p.x == q.x - 1 && p.y == q.y) || (p.x == q.x && p.y == q.y + 1)) {
                crossing = q;
                return true;
            }
    return false;
}

TEST(Geometry, AllSegmentPairsOfASmallGridCrossAsTheTextSays)
{
    const std::vector<POINT> grid = gridPoints(5);
    for (const POINT& a : grid)
        for (const POINT& b : grid) {
            CPointArray first;
            CKestImage::GetLineSegment(a.x, a.y, b.x, b.y, first);
            for (const POINT& c : grid)
                for (const POINT& d : grid) {
                    const int crosses = crossesExactly(a, b, c, d);
                    ASSERT_EQ(CKestImage::IntersectLine(a.x, a.y, b.x, b.y, c.x, c.y, d.x, d.y), crosses);
                    CPointArray second;
                    if (crosses)
                        CKestImage::GetLineSegment(c.x, c.y, d.x, d.y, second);
                    POINT expected{-1, -1};
                    const bool meets = crosses && crossingPixelPlainly(first, second, expected);
                    int x, y;
                    ASSERT_EQ(CKestImage::GetCrossPoint(a.x, a.y, b.x, b.y, c.x, c.y, d.x, d.y, x, y), meets);
                    ASSERT_EQ((POINT{x, y}), expected);
                }
        }
}

TEST(Geometry, LongSegmentsCrossWithoutWrappingAndInTime)
{
    EXPECT_EQ(
        CKestImage::IntersectLine(INT_MIN, INT_MIN, INT_MAX, INT_MAX, INT_MIN, INT_MAX, INT_MAX, INT_MIN), 1);
    EXPECT_EQ(CKestImage::IntersectLine(40000, 0, 90000, 60000, 90000, 0, 40000, 60000), 1);
    int x, y;
    EXPECT_EQ(CKestImage::GetCrossPoint(0, 0, 1000000, 700000, 0, 700000, 1000000, 0, x, y), 1);
    EXPECT_NEAR(x, 500000, 1);
    EXPECT_NEAR(y, 350000, 1);
    EXPECT_EQ(CKestImage::GetCrossPoint(INT_MIN, 0, INT_MAX, 1, INT_MIN, 1, INT_MAX, 0, x, y), 0);
    EXPECT_EQ(x, -1);
    EXPECT_EQ(y, -1);
}

} // namespace
