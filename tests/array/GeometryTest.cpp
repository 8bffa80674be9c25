#include "platform/Stdlib.h"
#include "tests/array/ArrayModel.h"

#include <gtest/gtest.h>

#include <random>

using namespace testing_support;

namespace {

constexpr LONG nowhere = INT_MIN;

/// The outline by its words: linear searches and removals one by one.
void outlineModel(std::vector<POINT>& points)
{
    if (points.empty())
        return;
    CPointArray all;
    for (const POINT& p : points)
        all.Add(p);
    const RECT bounds = all.GetBounds();
    const auto find = [&](int x, int y) { return std::find(points.begin(), points.end(), POINT{x, y}); };
    for (int y = bounds.top; y <= bounds.bottom; ++y)
        for (int x = bounds.left; x <= bounds.right; ++x) {
            if (find(x, y) == points.end())
                continue;
            int end = x;
            while (find(end + 1, y) != points.end())
                ++end;
            for (int i = x + 1; i < end; ++i)
                points.erase(find(i, y));
        }
}

} // namespace

TEST(PointArray, OutlineKeepsAndRemovesTheVeryEntriesThatTheSlowOneDoes)
{
    std::mt19937 engine(11);
    for (int round = 0; round < 300; ++round) {
        CPointArray array;
        const int width = 1 + int(engine() % 12), height = 1 + int(engine() % 4);
        for (unsigned n = engine() % 90; n > 0; --n) // many points stand several times
            array.Add(int(engine() % unsigned(width)) - 3, int(engine() % unsigned(height)) - 1);
        std::vector<POINT> expected(array.records().begin(), array.records().end());
        outlineModel(expected);
        array.Outline();
        ASSERT_TRUE(std::ranges::equal(array.records(), expected)) << round;
    }
    CPointArray ends; // rows that touch only where the numbers wrap
    for (const POINT& p :
         {POINT{INT_MAX, 0}, POINT{INT_MIN, 1}, POINT{INT_MIN + 1, 1}, POINT{INT_MIN + 2, 1}})
        ends.Add(p);
    ends.Outline();
    EXPECT_EQ(ends.GetCount(), 3);
}

TEST(PointArray, OutlineOfAMillionPointsDoesNotSearchForEach)
{
    CPointArray array;
    for (int y = 0; y < 1000; ++y)
        for (int x = 999; x >= 0; --x)
            array.Add(x, y);
    array.Outline();
    EXPECT_EQ(array.GetCount(), 2000);
}

TEST(PointArray, RemovePointTakesTheFirstEqualPointOnly)
{
    CPointArray points;
    for (int x : {1, 2, 1, 3})
        points.Add(x, 0);
    points.RemovePoint(1, 0);
    points.RemovePoint(9, 9);
    EXPECT_EQ(points.GetCount(), 3);
    EXPECT_EQ(points.IsPoint(1, 0), 1);
    EXPECT_EQ(points.IsPoint(1, 1), -1);
}

TEST(Geometry, OfNothingIsDefined)
{
    CRectArray rectangles;
    CPointArray points;
    CPointArrayArray polylines;
    CBlobRectArray blobs;
    EXPECT_EQ(rectangles.GetBounds(), RECT({0, 0, 0, 0}));
    EXPECT_EQ(points.GetBounds(), RECT({0, 0, 0, 0}));
    EXPECT_EQ(polylines.GetBounds(), RECT({0, 0, 0, 0}));
    for (const POINT& p :
         {rectangles.CenterPoint(), points.CenterPoint(), polylines.CenterPoint(), blobs.CenterPoint()})
        EXPECT_EQ(p, POINT({nowhere, nowhere}));
    EXPECT_EQ(points.GetAverageX(), 0);
    EXPECT_EQ(blobs.GetAverageCenterY(), 0);
    polylines.Add(points);
    EXPECT_EQ(polylines.CenterPoint(), POINT({nowhere, nowhere}));
}

TEST(Geometry, CentresAndBoundsTruncateTowardZeroAndNeverOverflow)
{
    CRectArray rectangles;
    rectangles.Add(0, 0, 3, -3);
    EXPECT_EQ(rectangles.CenterPoint(), POINT({1, -1}));
    EXPECT_EQ(rectangles.GetBounds(), RECT({0, -3, 3, 0}));
    rectangles.Add(-3, 0, -4, -2);
    EXPECT_EQ(rectangles.CenterPoint(), POINT({-1, -1})); // -2 / 2 and -2 / 2
    rectangles.RemoveAll();
    rectangles.Add(INT_MIN, INT_MAX, INT_MAX, INT_MIN);
    EXPECT_EQ(rectangles.CenterPoint(), POINT({-1, 0}));
    EXPECT_EQ(rectangles.GetBounds(), RECT({INT_MIN, INT_MIN, INT_MAX, INT_MAX}));
    rectangles.Offset(INT_MAX, INT_MIN);
    EXPECT_EQ(rectangles[0], RECT({-1, -1, -2, 0}));

    CPointArray points;
    points.Add(INT_MAX, -1);
    points.Add(INT_MAX, -2);
    EXPECT_EQ(points.CenterPoint(), POINT({INT_MAX, -1}));
    EXPECT_EQ(points.GetAverageX(), INT_MAX);
    EXPECT_EQ(points.GetAverageY(), -1);
    CPointArrayArray polylines;
    polylines.Add(CPointArray());
    polylines.Add(points);
    points.Offset(-INT_MAX, 10);
    polylines.Add(points);
    EXPECT_EQ(polylines.CenterPoint(), POINT({INT_MAX / 2, 3})); // of -1 and 8
    polylines.Offset(1, 1);
    EXPECT_EQ(polylines.GetBounds(), RECT({INT_MIN, -1, 1, 10}));
}

TEST(BlobRectArray, OverKillsRemoveWhatTheStepwiseWalkRemoves)
{
    std::mt19937 engine(21);
    for (int round = 0; round < 300; ++round) {
        const auto coordinate = [&] { return round < 290 ? int(engine() % 40) : int(engine()); };
        CBlobRectArray array;
        for (unsigned n = engine() % 30; n > 0; --n)
            array.Add(coordinate(), coordinate(), coordinate(), coordinate(), int(n));
        CBlobRectArray stepwise = array;
        int expected = 0;
        const int low = coordinate(), high = coordinate(), limit = coordinate();
        if (round % 2) {
            const auto outside = [&](LONG v) { return v < low || v > high; };
            for (int i = 0; i < stepwise.GetCount();) {
                const _stBlobRect& b = stepwise[i];
                if (outside(b.left) && outside(b.right) && outside(b.top) && outside(b.bottom))
                    stepwise.Remove(i), ++expected;
                else
                    ++i;
            }
            ASSERT_EQ(array.ROIOverKill(low, low, high, high), expected);
        } else {
            const auto middle = [](std::int64_t a, std::int64_t b) { return int(a + (b - a) / 2); };
            for (int i = 0; i < stepwise.GetCount() - 1;) {
                const _stBlobRect &a = stepwise[i], &b = stepwise[i + 1];
                if (CStdlib::Distance(middle(a.left, a.right), middle(a.top, a.bottom),
                                      middle(b.left, b.right), middle(b.top, b.bottom)) <= limit)
                    ++i;
                else
                    stepwise.Remove(i), ++expected;
            }
            ASSERT_EQ(array.DistanceOverKill(limit), expected);
        }
        ASSERT_EQ(array.GetCount(), stepwise.GetCount());
        for (int i = 0; i < array.GetCount(); ++i)
            ASSERT_EQ(array[i].pixel_count, stepwise[i].pixel_count) << round;
    }
}

TEST(BlobRectArray, AddTakesFiveWordsAndTheSevenValueFormTwoMore)
{
    _stBlobRect full{1, 2, 3, 4, 5, 6, 7, {8, 9}, {1, 1, 1, 1}};
    CBlobRectArray blobs;
    blobs.SetAt(0, full); // a slot that held other words before
    blobs.Add(full);
    EXPECT_EQ(blobs[0].pixel_count, 5);
    EXPECT_EQ(blobs[0].value1, 0);
    EXPECT_EQ(blobs[0].center, POINT({0, 0}));
    EXPECT_EQ(blobs[0].reserved[3], 0);
    blobs.Add(1, 2, 4, 8, 5, 6, 7);
    EXPECT_EQ(blobs[1].value2, 7);
    EXPECT_EQ(blobs.CenterPoint(), POINT({2, 4}));
    EXPECT_EQ(blobs[1].center, POINT({2, 5}));
    EXPECT_EQ(blobs.GetAverageRight(), 3);
    EXPECT_EQ(&(blobs + blobs), &blobs);
    EXPECT_EQ(blobs.GetCount(), 4);
    EXPECT_EQ(blobs[3].center, POINT({2, 5}));
    blobs[4].left = 77; // behind the room: a spare record
    EXPECT_EQ(blobs[4].left, 0);
}
