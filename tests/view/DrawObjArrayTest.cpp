#include "view/DrawObjArray.h"

#include "view/ShapeList.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>
#include <set>

namespace {

constexpr COLORREF red = RGB(255, 0, 0);
constexpr COLORREF green = RGB(0, 255, 0);

QImage drawn(CDrawObjArray& shapes, float zoom = 1, QSize size = {100, 80}, const RECT* clip = nullptr)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    RECT whole{0, 0, size.width(), size.height()};
    RECT asked = clip ? *clip : whole;
    shapes.Draw(&painter, zoom, zoom, &asked);
    return image;
}

using Points = std::set<std::pair<int, int>>;

Points lit(const QImage& image)
{
    Points points;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != 0xff000000u)
                points.insert({x, y});
    return points;
}

QRect extent(const Points& points)
{
    QRect all;
    for (const auto& [x, y] : points)
        all |= QRect(x, y, 1, 1);
    return all;
}

Points frame(int left, int top, int right, int bottom)
{
    Points points;
    for (int x = left; x <= right; ++x)
        points.insert({{x, top}, {x, bottom}});
    for (int y = top; y <= bottom; ++y)
        points.insert({{left, y}, {right, y}});
    return points;
}

} // namespace

TEST(DrawObjArray, RoomGrowsInStepsOf100)
{
    CDrawObjArray shapes;
    EXPECT_EQ(shapes.GetCapacity(), 100);
    for (int i = 0; i < 101; ++i)
        shapes.AddLine(i, 0, i, 9, 0, 1, red, "a");
    EXPECT_EQ(shapes.GetCount(), 101);
    EXPECT_EQ(shapes.GetCapacity(), 200);
    POINT points[2]{{0, 0}, {9, 9}};
    shapes.AddPolyline(points, 2, 0, 1, red, "a");
    EXPECT_EQ(shapes.GetCount(), 101);
}

TEST(DrawObjArray, RemovingATagKeepsTheOthersWithTheirTextsAndOrder)
{
    ormalux::ShapeList list;
    for (int i = 0; i < 300; ++i) {
        ormalux::Shape shape;
        shape.x1 = i;
        list.add(shape,
                 i % 3 == 0   ? "gone"
                 : i % 3 == 1 ? "Gone"
                              : "",
                 ("text " + std::to_string(i)).c_str());
    }
    list.remove("gone");
    list.remove("not there");
    ASSERT_EQ(list.count(), 200);
    int expected = 1;
    for (const ormalux::Shape& shape : list.shapes()) {
        EXPECT_EQ(shape.x1, expected);
        EXPECT_EQ(list.text(shape), "text " + std::to_string(expected));
        expected += expected % 3 == 1 ? 1 : 2;
    }
    list.remove(nullptr); // the empty tag
    EXPECT_EQ(list.count(), 100);
    EXPECT_EQ(list.count("Gone"), 100);
}

TEST(DrawObjArray, LongTagsAndTextsAreCutBetweenCharacters)
{
    const std::string korean = [] {
        std::string text;
        for (int i = 0; i < 100; ++i)
            text += "가";
        return text;
    }();
    EXPECT_EQ(ormalux::utf8Prefix(korean.c_str(), 255), korean.substr(0, 255));
    EXPECT_EQ(ormalux::utf8Prefix(korean.c_str(), 256), korean.substr(0, 255));
    EXPECT_EQ(ormalux::utf8Prefix(("a" + korean).c_str(), 99), "a" + korean.substr(0, 96));
    EXPECT_EQ(ormalux::utf8Prefix(std::string(50, '\x80').c_str(), 20), std::string(20, '\x80'));
    CDrawObjArray shapes;
    shapes.AddLine(0, 0, 1, 1, 0, 1, red, korean.c_str());
    shapes.RemoveGraphics(korean.c_str());
    EXPECT_EQ(shapes.GetCount(), 0);
}

TEST(DrawObjArray, OutlinesPassThroughTheirCornersInAnyOrderAndAreNotFilled)
{
    CDrawObjArray shapes;
    shapes.AddRectangle(30, 20, 10, 8, 0, 1, red, "");
    EXPECT_EQ(lit(drawn(shapes)), frame(10, 8, 30, 20));
    EXPECT_EQ(lit(drawn(shapes, 2.5f)), frame(25, 20, 75, 50));
    EXPECT_EQ(drawn(shapes).pixel(10, 8), 0xffff0000u);

    CDrawObjArray ellipse;
    ellipse.AddEllipse(70, 60, 20, 10, 0, 1, green, "");
    const Points points = lit(drawn(ellipse));
    EXPECT_EQ(extent(points), QRect(QPoint(20, 10), QPoint(70, 60)));
    for (const auto& [x, y] : points)
        EXPECT_NEAR(std::hypot(x - 45, y - 35), 25, 1.0) << x << "," << y;
}

TEST(DrawObjArray, LinesIncludeBothEndsAndADotWhereTheyMeet)
{
    CDrawObjArray shapes;
    shapes.AddLine(10, 10, 20, 10, 0, 1, red, "");
    shapes.AddLine(30, 12, 30, 5, 0, 1, red, "");
    shapes.AddLine(50, 50, 50, 50, 0, 1, red, "");
    shapes.AddLine(60, 20, 55, 25, 0, 1, red, "");
    Points expected;
    for (int i = 0; i <= 10; ++i)
        expected.insert({10 + i, 10});
    for (int i = 0; i <= 7; ++i)
        expected.insert({30, 5 + i});
    for (int i = 0; i <= 5; ++i)
        expected.insert({60 - i, 20 + i});
    expected.insert({50, 50});
    EXPECT_EQ(lit(drawn(shapes)), expected);
}

TEST(DrawObjArray, CrossIsDiagonalKeepsItsSizeAndIsOnePixelWithoutArms)
{
    CDrawObjArray shapes;
    shapes.AddCrossLine(10, 10, 4, 0, 1, red, "");
    for (const float zoom : {1.0f, 3.0f}) {
        const int c = int(10 * zoom);
        Points expected;
        for (int i = -4; i <= 4; ++i)
            expected.insert({{c + i, c + i}, {c + i, c - i}});
        EXPECT_EQ(lit(drawn(shapes, zoom)), expected);
    }
    CDrawObjArray dot;
    dot.AddCrossLine(10, 10, 0, 0, 5, red, "");
    EXPECT_EQ(lit(drawn(dot, 3)), (Points{{30, 30}}));
}

TEST(DrawObjArray, ArrowHeadStands30DegreesToEachSideOfTheSecondPoint)
{
    CDrawObjArray shapes;
    shapes.AddArrow(10, 40, 60, 40, 20, 0, 1, red, "");
    const Points points = lit(drawn(shapes));
    const int back = int(std::round(60 - 20 * std::cos(std::numbers::pi / 6)));
    EXPECT_TRUE(points.contains({back, 30}));
    EXPECT_TRUE(points.contains({back, 50}));
    EXPECT_EQ(extent(points), QRect(QPoint(10, 30), QPoint(60, 50)));
}

TEST(DrawObjArray, TextStartsAtItsTopLeftCornerInKoreanToo)
{
    CDrawObjArray shapes;
    shapes.AddText(10, 10, "한글 gjH", 20, green, "");
    const QRect box = extent(lit(drawn(shapes)));
    ASSERT_FALSE(box.isEmpty());
    EXPECT_GE(box.left(), 10);
    EXPECT_LE(box.left(), 14);
    EXPECT_GE(box.top(), 10);
    EXPECT_LE(box.top(), 16);
    EXPECT_LE(box.bottom(), 10 + 24);
    const QRect zoomed = extent(lit(drawn(shapes, 3, {300, 200})));
    EXPECT_EQ(zoomed.size(), box.size());
    EXPECT_EQ(zoomed.topLeft() - box.topLeft(), QPoint(20, 20));
}

TEST(DrawObjArray, ShapesOutsideTheClipAreSkippedAndLaterOnesLieOnTop)
{
    CDrawObjArray shapes;
    shapes.AddLine(0, 10, 99, 10, 0, 1, red, "");
    shapes.AddLine(0, 30, 99, 30, 0, 1, red, "");
    shapes.AddLine(50, 0, 50, 79, 0, 1, green, "");
    const RECT clip{0, 0, 100, 20};
    const QImage image = drawn(shapes, 1, {100, 80}, &clip);
    EXPECT_EQ(image.pixel(20, 10), 0xffff0000u);
    EXPECT_EQ(image.pixel(20, 30), 0xff000000u);
    EXPECT_EQ(image.pixel(50, 10), 0xff00ff00u);
}

TEST(DrawObjArray, ExtremeCoordinatesAndSizesShowWhatLiesInside)
{
    CDrawObjArray shapes;
    const int ends[] = {INT_MIN, -1000000, 40, 1000000, INT_MAX};
    for (const int a : ends)
        for (const int b : ends)
            for (const int style : {-5, 0, 1, 2, 5, 70000})
                for (const int width : {-1, 1, 40}) {
                    shapes.AddLine(a, 40, b, 40, style, width, red, "");
                    shapes.AddRectangle(a, b, 40, 40, style, width, red, "");
                    shapes.AddEllipse(a, b, 40, 40, style, width, red, "");
                    shapes.AddArrow(b, a, 40, 40, a, style, width, red, "");
                    shapes.AddCrossLine(40, b, a, style, width, red, "");
                }
    shapes.AddText(0, 0, nullptr, INT_MAX, red, nullptr);
    shapes.AddText(-100, 0, "ab", INT_MIN, red, nullptr);
    shapes.AddText(1, 1, "\xff\xfe broken", 10, red, "\xff");
    for (const float zoom : {0.0f, 0.001f, 1.0f, 25.0f, -1.0f, INFINITY, NAN})
        drawn(shapes, zoom);
    shapes.Draw(nullptr, 1, 1, nullptr);

    CDrawObjArray huge; // a line and a circle far beyond the device cross it where they should
    huge.AddLine(-2000000000, 40, 2000000000, 40, 0, 1, red, "");
    huge.AddEllipse(50, -1000000, 2000050, 1000000, 0, 1, green, "");
    const QImage image = drawn(huge);
    EXPECT_EQ(image.pixel(20, 40), 0xffff0000u);
    EXPECT_EQ(image.pixel(50, 20), 0xff00ff00u);
    EXPECT_EQ(image.pixel(50, 70), 0xff00ff00u);
}

TEST(DrawObjArray, PensOfEveryStyleKeepThePaintersOwn)
{
    CDrawObjArray shapes;
    for (int style = 0; style <= 5; ++style)
        shapes.AddLine(0, style * 10, 99, style * 10, style, 1, red, "");
    QImage image(100, 60, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    const QPen pen(Qt::blue, 3);
    painter.setPen(pen);
    shapes.Draw(&painter, 1, 1, nullptr);
    EXPECT_EQ(painter.pen(), pen);
    const auto count = [&](int style) {
        int n = 0;
        for (int x = 0; x < 100; ++x)
            n += image.pixel(x, style * 10) != 0xff000000u;
        return n;
    };
    EXPECT_EQ(count(0), 100);
    for (int style = 1; style <= 4; ++style) {
        EXPECT_GT(count(style), 20);
        EXPECT_LT(count(style), 95);
    }
    EXPECT_EQ(count(5), 0);
}
