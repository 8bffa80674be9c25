#include "array/Array.h"

#include <gtest/gtest.h>

#include <climits>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

namespace {

/// One recorded answer of the platform: a polygon and, for the points of a rectangle, whether they are
/// inside.
struct Truth
{
    CPointArray polygon;
    int left = 0, top = 0, width = 0, height = 0;
    std::vector<std::string> rows;

    bool inside(int column, int row) const
    {
        const char digit = rows[std::size_t(row)][std::size_t(column / 4)];
        const int value = digit <= '9' ? digit - '0' : digit - 'a' + 10;
        return value >> (3 - column % 4) & 1;
    }
};

bool parse(const std::string& line, Truth& truth)
{
    std::istringstream in(line);
    std::string kind, bar, rows;
    int n = 0, circle = 0;
    in >> kind;
    for (int i = 0; kind == "C" && i < 3; ++i)
        in >> circle;
    in >> n;
    for (int i = 0, x = 0, y = 0; i < n && in >> x >> y; ++i)
        truth.polygon.Add(x, y);
    in >> bar >> truth.left >> truth.top >> truth.width >> truth.height >> bar >> rows;
    std::istringstream split(rows);
    for (std::string row; std::getline(split, row, '.');)
        truth.rows.push_back(row);
    return in && int(truth.rows.size()) == truth.height;
}

__extension__ typedef __int128 Wide;

/// The winding rule in wide integers, word for word.
bool windingModel(std::span<const POINT> polygon, Wide x, Wide y)
{
    int sum = 0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const POINT a = polygon[i], b = polygon[(i + 1) % polygon.size()];
        if (y < std::min(a.y, b.y) || y >= std::max(a.y, b.y))
            continue;
        const Wide height = Wide(b.y) - a.y;
        const Wide crossing = Wide(a.x) * height + (y - a.y) * (Wide(b.x) - a.x); // times the height
        if (height > 0 ? crossing <= x * height : crossing >= x * height)
            sum += height > 0 ? 1 : -1;
    }
    return sum != 0;
}

} // namespace

TEST(Polygon, AnswersAsThePlatformsWindingRegionDid)
{
    std::ifstream file(ORMALUX_TEST_DATA "/region_truth_sample.txt");
    int polygons = 0;
    for (std::string line; std::getline(file, line); ++polygons) {
        Truth truth;
        ASSERT_TRUE(parse(line, truth)) << line.substr(0, 60);
        for (int row = 0; row < truth.height; ++row)
            for (int column = 0; column < truth.width; ++column)
                ASSERT_EQ(truth.polygon.PtInPolygon(truth.left + column, truth.top + row),
                          int(truth.inside(column, row)))
                    << "line " << polygons + 1 << ", " << column << ", " << row;
    }
    EXPECT_EQ(polygons, 100);
}

TEST(Polygon, IsExactAtTheEndsOfTheCoordinates)
{
    std::mt19937 engine(8);
    const int ends[] = {INT_MIN, INT_MIN + 1, -1, 0, 1, INT_MAX - 1, INT_MAX};
    const auto coordinate = [&] { return engine() % 2 ? ends[engine() % 7] : int(engine()); };
    for (int round = 0; round < 20000; ++round) {
        CPointArray polygon;
        for (unsigned n = 3 + engine() % 5; n > 0; --n)
            polygon.Add(coordinate(), coordinate());
        const int x = coordinate(), y = coordinate();
        ASSERT_EQ(polygon.PtInPolygon(x, y), int(windingModel(polygon.records(), x, y))) << round;
        // Points on the very edges, where rounding would show.
        const POINT a = polygon[0], b = polygon[1];
        const int middleX = int((std::int64_t(a.x) + b.x) / 2), middleY = int((std::int64_t(a.y) + b.y) / 2);
        for (int dx : {-1, 0, 1}) {
            const int onX = int(std::int64_t(middleX) + (middleX == INT_MIN || middleX == INT_MAX ? 0 : dx));
            ASSERT_EQ(polygon.PtInPolygon(onX, middleY), int(windingModel(polygon.records(), onX, middleY)));
        }
    }
}

TEST(Polygon, OfPolylinesTheFirstHolderCountsAndNoneIsZeroOnlyWhenThereAreNone)
{
    const auto square = [](int x, int y) {
        CPointArray points;
        for (const POINT& p : {POINT{x, y}, POINT{x + 10, y}, POINT{x + 10, y + 10}, POINT{x, y + 10}})
            points.Add(p);
        return points;
    };
    CPointArrayArray polylines;
    EXPECT_EQ(polylines.PtInPolygon(5, 5), 0);
    polylines.Add(CPointArray());
    EXPECT_EQ(polylines.PtInPolygon(5, 5), -1);
    polylines.Add(square(0, 0));
    polylines.Add(square(5, 5));
    EXPECT_EQ(polylines.PtInPolygon(7, 7), 1);
    EXPECT_EQ(polylines.PtInPolygon(12, 12), 2);
    EXPECT_EQ(polylines.PtInPolygon(15, 15), -1);
}
