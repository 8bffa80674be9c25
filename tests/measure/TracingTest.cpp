#include "image/VisionImage.h"
#include "measure/Tracing.h"
#include "tests/support/Random.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <random>
#include <vector>

using testing::ElementsAre;

namespace {

using Points = std::vector<POINT>;

Points pointsOf(CPointArray& ar)
{
    return {ar.records().begin(), ar.records().end()};
}

Points linePlainly(int x1, int y1, int x2, int y2)
{
    Points points;
    const bool steep = std::abs(x2 - x1) <= std::abs(y2 - y1);
    if (steep)
        std::swap(x1, y1), std::swap(x2, y2);
    if (x1 > x2)
        std::swap(x1, x2), std::swap(y1, y2);
    const int dx = x2 - x1, ady = std::abs(y2 - y1), sy = y2 > y1 ? 1 : -1;
    int e = 2 * ady - dx;
    for (int x = x1, y = y1; x <= x2; ++x) {
        points.push_back(steep ? POINT{y, x} : POINT{x, y});
        if (e > 0) {
            e += 2 * (ady - dx);
            y += sy;
        } else {
            e += 2 * ady;
        }
    }
    return points;
}

Points circlePlainly(int cx, int cy, int r)
{
    Points points;
    std::int64_t d = 1 - r, straight = 3, diagonal = 5 - 2 * std::int64_t(r);
    for (int x = 0, y = r; y >= x; ++x) {
        for (POINT p : {POINT{x, y}, POINT{-x, y}, POINT{x, -y}, POINT{-x, -y}, POINT{y, x}, POINT{-y, x},
                        POINT{y, -x}, POINT{-y, -x}})
            points.push_back({cx + p.x, cy + p.y});
        if (d >= 0) {
            --y;
            d += diagonal;
            straight += 2;
            diagonal += 4;
        } else {
            d += straight;
            straight += 2;
            diagonal += 2;
        }
    }
    return points;
}

TEST(Tracing, AllSegmentsOfAGridEqualPlainBresenham)
{
    for (int from = 0; from < 144; ++from)
        for (int to = 0; to < 144; ++to) {
            CPointArray ar;
            const int x1 = from % 12, y1 = from / 12, x2 = to % 12, y2 = to / 12;
            const Points expected = linePlainly(x1, y1, x2, y2);
            ASSERT_EQ(CKestImage::GetLineSegment(x1, y1, x2, y2, ar), int(expected.size()));
            ASSERT_EQ(pointsOf(ar), expected);
        }
}

TEST(Tracing, CirclesEqualThePlainMidpointWalk)
{
    for (int r = -2; r <= 100; ++r) {
        CPointArray ar;
        CKestImage::GetCycleSegment(-3, 40, r, ar);
        ASSERT_EQ(pointsOf(ar), circlePlainly(-3, 40, r)) << r;
    }
    for (std::int64_t r : {std::int64_t(5000), std::int64_t(1) << 20, std::int64_t(INT_MAX)})
        for (std::int64_t x : {std::int64_t(1), r / 7, r / 2, std::int64_t(double(r) * 0.7071)}) {
            const std::int64_t y = ormalux::circleOffset(r, x), limit = r * r - x * x;
            ASSERT_TRUE(y * (y - 1) < limit && limit <= (y + 1) * y) << r << " " << x;
        }
}

TEST(Tracing, EllipsesAreTheNearestPixelsOfTheirTopAndSymmetric)
{
    for (int a = 1; a <= 40; ++a)
        for (int b = 1; b <= 40; ++b) {
            CPointArray ar;
            CKestImage::GetEllipseSegment(100, 50, a, b, ar);
            const Points points = pointsOf(ar);
            ASSERT_EQ(points.size() % 4, 0u);
            int x = 0;
            for (std::size_t i = 0; i < points.size(); i += 4) {
                const int u = points[i].x - 100, v = points[i].y - 50;
                ASSERT_THAT(std::vector(points.begin() + i, points.begin() + i + 4),
                            ElementsAre(POINT{100 + u, 50 + v}, POINT{100 - u, 50 + v},
                                        POINT{100 + u, 50 - v}, POINT{100 - u, 50 - v}));
                if (u == x && b * b * u <= a * a * v) { // the first part goes on
                    const double exact = b * std::sqrt(std::max(0.0, 1 - double(u) * u / (double(a) * a)));
                    ASSERT_NEAR(v, exact, 1.0) << a << " " << b << " " << u;
                    ++x;
                }
            }
        }
}

TEST(Tracing, EllipsesKeepTheirDecisionValues)
{
    CPointArray ar;
    CKestImage::GetEllipseSegment(0, 0, 4, 9, ar);
    Points quarter;
    for (int i = 0; i < ar.GetCount(); i += 4)
        quarter.push_back(ar[i]);
    EXPECT_THAT(quarter,
                ElementsAre(POINT{0, 9}, POINT{1, 9}, POINT{4, 0}, POINT{4, 1}, POINT{4, 2}, POINT{4, 3},
                            POINT{4, 4}, POINT{3, 5}, POINT{3, 6}, POINT{3, 7}, POINT{2, 8}));
    for (auto [a, b] : {std::pair{0, 0}, {0, 7}, {7, 0}}) {
        ar.RemoveAll();
        EXPECT_EQ(CKestImage::GetEllipseSegment(0, 0, a, b, ar), 4);
    }
}

TEST(Tracing, ArcsRepeatInnerPointsAndAddHalfBeforeTruncation)
{
    CPointArray ar;
    EXPECT_EQ(CKestImage::GetArcSegment(0, 0, 10, 0, 90, ar), 180);
    EXPECT_EQ(ar[0], (POINT{10, 0}));
    EXPECT_EQ(ar[179], (POINT{0, 10}));
    for (int i = 1; i + 1 < 180; i += 2)
        EXPECT_EQ(ar[i], ar[i + 1]);
    EXPECT_EQ(CKestImage::GetArcSegment(5, 5, 10, 180, 181, ar), 182);
    EXPECT_EQ(ar[180], (POINT{5 - 9, 5})); // -10 + 0.5, toward 0
    EXPECT_EQ(CKestImage::GetArcSegment(0, 0, 10, 90, 90, ar), 182);
}

TEST(Tracing, EndlessShapesAppendNothingAndEndAtOnce)
{
    CPointArray ar;
    EXPECT_EQ(CKestImage::GetLineSegment(INT_MIN, INT_MIN, INT_MAX, INT_MAX, ar), 0);
    EXPECT_EQ(CKestImage::GetCycleSegment(0, 0, INT_MAX, ar), 0);
    EXPECT_EQ(CKestImage::GetCycleSegment(0, 0, INT_MIN, ar), 0);
    EXPECT_EQ(CKestImage::GetEllipseSegment(0, 0, INT_MIN, INT_MAX, ar), 0);
    EXPECT_EQ(CKestImage::GetArcSegment(0, 0, 5, INT_MIN, INT_MAX, ar), 0);
    EXPECT_EQ(CKestImage::GetLineSegment(INT_MAX - 2, INT_MIN, INT_MAX, INT_MIN, ar), 3);
    // Pixels outside the 32-bit plane are left out.
    EXPECT_EQ(CKestImage::GetCycleSegment(INT_MAX, 0, 0, ar), 11);
    EXPECT_LT(CKestImage::GetCycleSegment(INT_MAX, INT_MAX, 5, ar), 11 + 32);
    CKestImage::GetEllipseSegment(INT_MIN, INT_MAX, 1 << 19, 1 << 19, ar);
    CKestImage::GetEllipseSegment(0, 0, 1, 1 << 19, ar);
    CKestImage::GetEllipseSegment(0, 0, 1 << 19, 1, ar);
    CKestImage::GetArcSegment(INT_MAX, INT_MIN, INT_MIN, INT_MAX - 5, INT_MAX, ar);
}

/// An image of random levels, and what sampling must give: the traced points inside, those in range.
class Sampling : public testing::Test
{
protected:
    static constexpr int width = 61, height = 47;

    void expectSampled(CPixelArray& sampled, const Points& traced, int low = 40, int high = 200)
    {
        std::size_t next = 0;
        for (const POINT& p : traced) {
            if (p.x < 0 || p.x >= width || p.y < 0 || p.y >= height)
                continue;
            const std::uint8_t level = pixels[std::size_t(p.y * width + p.x)];
            if (level < low || level > high)
                continue;
            ASSERT_LT(next, sampled.records().size());
            const _stPixel& pixel = sampled.records()[next++];
            ASSERT_EQ((POINT{pixel.x, pixel.y}), p);
            ASSERT_EQ(pixel.gray_level, level);
            ASSERT_EQ(pixel.parameter, 0.0);
        }
        ASSERT_EQ(next, sampled.records().size());
    }

    std::vector<std::uint8_t> pixels = testing_support::randomBytes(width * height, 5);
    CKestImage image{width, height, pixels.data()};
    std::mt19937 engine{9};
    int random(int low, int high) { return std::uniform_int_distribution(low, high)(engine); }
};

TEST_F(Sampling, LinesGiveTheTracedPixelsInside)
{
    for (int i = 0; i < 3000; ++i) {
        const int far = i % 3 == 0 ? 70 : i % 3 == 1 ? 300 : 20000;
        const int x1 = random(-far, far), y1 = random(-far, far), x2 = random(-far, far),
                  y2 = random(-far, far);
        CPixelArray sampled;
        image.GetLinePixelArray(x1, y1, x2, y2, 40, 200, sampled);
        ASSERT_NO_FATAL_FAILURE(expectSampled(sampled, linePlainly(x1, y1, x2, y2)));
    }
}

TEST_F(Sampling, EndlessLinesAreCutToTheImage)
{
    CPixelArray sampled;
    EXPECT_EQ(image.GetLinePixelArray(INT_MIN, INT_MIN, INT_MAX, INT_MAX, 0, 255, sampled), height);
    for (int i = 0; i < height; ++i)
        EXPECT_EQ((POINT{sampled[i].x, sampled[i].y}), (POINT{i, i}));
    EXPECT_EQ(image.GetLinePixelArray(INT_MAX, 5, INT_MIN, 5, 0, 255, sampled), height + width);
    EXPECT_EQ(image.GetLinePixelArray(INT_MIN, -2, INT_MAX, -1, 0, 255, sampled), height + width);
    sampled.RemoveAll();
    EXPECT_EQ(image.GetLinePixelArray(INT_MIN + 61, 0, INT_MAX, 1, 0, 255, sampled), width);
    for (int x = 0; x < width; ++x)
        EXPECT_EQ(sampled[x].y, x > 30) << "half of the way is at x = 30, and halves stay";
    EXPECT_EQ(image.GetLinePixelArray(0, 0, 3, 3, 9, 8, sampled), width);
    EXPECT_EQ(image.GetLinePixelArray(LONG_MIN, 0, LONG_MAX, 0, 0, 255, sampled),
              sizeof(long) == 4 ? 2 * width : width);
    const int found = sampled.GetCount();
    EXPECT_EQ(CKestImage().GetLinePixelArray(0, 0, 3, 3, 0, 255, sampled), found);
}

TEST_F(Sampling, CirclesGiveTheTracedPixelsInside)
{
    for (int i = 0; i < 400; ++i) {
        const int r = i < 100 ? random(0, 80) : random(4090, i < 395 ? 20000 : 1000000);
        const double angle = random(0, 359) * 0.0174533;
        const int cx = random(-9, width + 9) + int(r * std::cos(angle)),
                  cy = random(-9, height + 9) + int(r * std::sin(angle));
        CPixelArray sampled;
        image.GetCyclePixelArray(cx, cy, r, 40, 200, sampled);
        ASSERT_NO_FATAL_FAILURE(expectSampled(sampled, circlePlainly(cx, cy, r))) << r;
    }
    CPixelArray sampled;
    EXPECT_GE(image.GetCyclePixelArray(INT_MAX, 20, INT_MAX - 30, 0, 255, sampled), height);
    const int found = sampled.GetCount();
    EXPECT_EQ(image.GetCyclePixelArray(30, 20, INT_MAX, 0, 255, sampled), found);
    EXPECT_EQ(image.GetCyclePixelArray(30, 20, -5, 0, 255, sampled), found);
}

TEST_F(Sampling, EllipsesAndArcsGiveTheTracedPixelsInside)
{
    for (int i = 0; i < 500; ++i) {
        const int cx = random(-40, 100), cy = random(-40, 100), a = random(-3, 200), b = random(-3, 200);
        CPointArray traced;
        CPixelArray sampled;
        CKestImage::GetEllipseSegment(cx, cy, a, b, traced);
        image.GetEllipsePixelArray(cx, cy, a, b, 40, 200, sampled);
        ASSERT_NO_FATAL_FAILURE(expectSampled(sampled, pointsOf(traced)));
        traced.RemoveAll();
        sampled.RemoveAll();
        CKestImage::GetArcSegment(cx, cy, a, -b, 2 * b, traced);
        image.GetArcPixelArray(cx, cy, a, -b, 2 * b, 40, 200, sampled);
        ASSERT_NO_FATAL_FAILURE(expectSampled(sampled, pointsOf(traced)));
    }
}

} // namespace
