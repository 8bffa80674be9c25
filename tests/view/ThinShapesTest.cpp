#include "view/DrawObjArray.h"
#include "view/TextMasks.h"
#include "view/ThinShapes.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <set>
#include <vector>

namespace {

using ormalux::DeviceCanvas;
using Points = std::set<std::pair<int, int>>;

constexpr QRgb black = 0xff000000u;
constexpr QRgb white = 0xffffffffu;

/// A drawing area that starts at (left, top), and what was drawn there.
struct Sheet
{
    Sheet(int left, int top, int width, int height, double scale = 1, double startX = 0)
        : pixels(std::size_t(width) * std::size_t(height), black)
    {
        canvas = {pixels.data(), width, {left, top, left + width, top + height}, scale, startX, 0};
    }
    Points drawn(const RECT& within) const
    {
        Points points;
        for (int y = within.top; y < within.bottom; ++y)
            for (int x = within.left; x < within.right; ++x)
                if (*canvas.at(x, y) != black)
                    points.insert({x, y});
        return points;
    }
    Points drawn() const { return drawn(canvas.bounds); }

    std::vector<QRgb> pixels;
    DeviceCanvas canvas;
};

/// The nearest pixel in every column of a flat line, in every row of a steep one.
Points plainLine(int x1, int y1, int x2, int y2)
{
    Points points;
    const bool flat = std::abs(x2 - x1) >= std::abs(y2 - y1);
    if (flat ? x1 > x2 : y1 > y2) {
        std::swap(x1, x2);
        std::swap(y1, y2);
    }
    const int length = flat ? x2 - x1 : y2 - y1;
    const int drift = flat ? y2 - y1 : x2 - x1;
    for (int i = 0; i <= length; ++i) {
        const int aside =
            length == 0 ? 0
                        : int(std::floor(std::abs(double(i) * drift / length) + 0.5)) * (drift < 0 ? -1 : 1);
        points.insert(flat ? std::pair(x1 + i, y1 + aside) : std::pair(x1 + aside, y1 + i));
    }
    return points;
}

/// What is connected with the first point, corners included.
Points reachable(const Points& points)
{
    Points reached{*points.begin()};
    std::vector<std::pair<int, int>> waiting(reached.begin(), reached.end());
    while (!waiting.empty()) {
        const auto [x, y] = waiting.back();
        waiting.pop_back();
        for (int ny = y - 1; ny <= y + 1; ++ny)
            for (int nx = x - 1; nx <= x + 1; ++nx)
                if (points.contains({nx, ny}) && reached.insert({nx, ny}).second)
                    waiting.emplace_back(nx, ny);
    }
    return reached;
}

QImage painted(QImage::Format format, CDrawObjArray& shapes)
{
    QImage image(120, 100, format);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.translate(7, -3);
    shapes.Draw(&painter, 1.3f, 1.3f, nullptr);
    painter.end();
    return image.convertToFormat(QImage::Format_RGB32);
}

} // namespace

TEST(ThinShapes, LinesHaveTheNearestPixelOfEveryStepEitherWayRound)
{
    for (int x = -9; x <= 9; ++x)
        for (int y = -9; y <= 9; ++y) {
            Sheet there(-20, -20, 40, 40);
            Sheet back(-20, -20, 40, 40);
            ormalux::thinLine(there.canvas, 1, -2, 1 + x, -2 + y, white);
            ormalux::thinLine(back.canvas, 1 + x, -2 + y, 1, -2, white);
            ASSERT_EQ(there.drawn(), plainLine(1, -2, 1 + x, -2 + y)) << x << "," << y;
            ASSERT_EQ(back.drawn(), there.drawn()) << x << "," << y;
        }
}

TEST(ThinShapes, ASmallCanvasShowsThePartOfALargeOne)
{
    std::mt19937 engine(3);
    const auto random = [&] { return int(engine() % 200) - 100; };
    for (int i = 0; i < 2000; ++i) {
        const double scale = i % 5 == 0 ? 1 + (i % 9) * 0.25 : 1;
        Sheet large(-400, -400, 800, 800, scale, scale > 1 ? 0.5 : 0);
        Sheet small(-13, 5, 31, 22, scale, scale > 1 ? 0.5 : 0);
        const int left = random(), top = random();
        const int right = left + int(engine() % 100), bottom = top + int(engine() % 100);
        const int toX = random(), toY = random();
        for (const DeviceCanvas& canvas : {large.canvas, small.canvas}) {
            ormalux::thinLine(canvas, left, top, toX, toY, white);
            if (i % 2)
                ormalux::thinEllipse(canvas, left, top, std::min(right, 119), std::min(bottom, 119), white);
            else
                ormalux::thinRectangle(canvas, left, top, std::min(right, 119), std::min(bottom, 119), white);
        }
        ASSERT_EQ(small.drawn(), large.drawn(small.canvas.bounds)) << i;
    }
}

TEST(ThinShapes, EllipsesAreConnectedSymmetricAndNearTheCurve)
{
    for (int width = 1; width <= 60; width += 1 + width / 9)
        for (int height = 1; height <= 60; height += 1 + height / 7) {
            Sheet sheet(0, 0, 70, 70);
            ormalux::thinEllipse(sheet.canvas, 3, 4, 3 + width, 4 + height, white);
            const Points points = sheet.drawn();
            const double radiusX = width / 2.0, radiusY = height / 2.0;
            std::set<int> columns, rows;
            for (const auto& [x, y] : points) {
                columns.insert(x);
                rows.insert(y);
                EXPECT_TRUE(points.contains({6 + width - x, y}) && points.contains({x, 8 + height - y}));
                // On a rounded curve a pixel has the curve within half a pixel across or down.
                const double dx = std::abs(x - 3 - radiusX), dy = std::abs(y - 4 - radiusY);
                const double curveY = radiusY * std::sqrt(std::max(0.0, 1 - dx * dx / radiusX / radiusX));
                const double curveX = radiusX * std::sqrt(std::max(0.0, 1 - dy * dy / radiusY / radiusY));
                EXPECT_LE(std::min(std::abs(curveY - dy), std::abs(curveX - dx)), 0.5 + 1e-9)
                    << width << "x" << height << " at " << x << "," << y;
            }
            EXPECT_EQ(reachable(points), points) << "a gap in " << width << "x" << height;
            EXPECT_EQ(int(columns.size()), width + 1);
            EXPECT_EQ(int(rows.size()), height + 1);
        }
}

TEST(ThinShapes, EnlargedOutlinesLieWhereThePictureShowsTheirPixels)
{
    for (const double scale : {1.25, 1.5, 2.0, 3.0})
        for (const double start : {0.0, 0.5}) {
            const auto drawn = [&](auto draw, double enlarged) {
                Sheet sheet(0, 0, 150, 150, enlarged, enlarged > 1 ? start : 0);
                draw(sheet.canvas);
                return sheet.drawn();
            };
            const int nib = int(scale + 0.5);
            // Every coordinate's first pixel, and as many as the nib has from there.
            const auto enlarged = [&](const Points& points) {
                Points pixels;
                for (const auto& [x, y] : points)
                    for (int i = 0; i < nib * nib; ++i)
                        pixels.insert({int(std::ceil(x * scale + start)) + i % nib,
                                       int(std::ceil(y * scale)) + i / nib});
                return pixels;
            };
            const auto dot = [](const DeviceCanvas& canvas) { ormalux::thinLine(canvas, 7, 9, 7, 9, white); };
            EXPECT_EQ(drawn(dot, scale), enlarged({{7, 9}}));
            const auto corners = [](const DeviceCanvas& canvas) {
                ormalux::thinRectangle(canvas, 3, 5, 20, 30, white);
            };
            const Points frame = drawn(corners, scale);
            for (const auto& point : enlarged(drawn(corners, 1)))
                ASSERT_TRUE(frame.contains(point));
            for (const auto& [x, y] : Points{{30, 11}, {12, 40}, {-9, 35}, {28, -5}, {1, 2}}) {
                const auto line = [x = x, y = y](const DeviceCanvas& canvas) {
                    ormalux::thinLine(canvas, 10, 6, 10 + x, 6 + y, white);
                };
                const Points there = drawn(line, scale);
                EXPECT_EQ(reachable(there), there);
                // Left top pixels of the nib lie on the line, those of a row or column are as many as the
                // nib's.
                for (const auto& [px, py] : there) {
                    const double dx = x * scale, dy = y * scale;
                    const double offX = px - 10 * scale - start, offY = py - 6 * scale;
                    const double beside =
                        std::abs(offX * dy - offY * dx) / std::max(std::abs(dx), std::abs(dy));
                    ASSERT_LE(beside, nib + 1) << scale << ": " << px << "," << py;
                }
            }
        }
}

TEST(ThinShapes, EnlargedEllipsesAreClosedSymmetricRings)
{
    for (const double scale : {1.5, 2.0, 3.0})
        for (int width = 1; width <= 40; width += 1 + width / 5)
            for (int height = 1; height <= 40; height += 1 + height / 4) {
                Sheet sheet(0, 0, 150, 150, scale);
                ormalux::thinEllipse(sheet.canvas, 3, 4, 3 + width, 4 + height, white);
                const Points points = sheet.drawn();
                const int nib = int(scale + 0.5);
                const int left = int(std::ceil(3 * scale)), top = int(std::ceil(4 * scale));
                const int right = int(std::ceil((3 + width) * scale)) + nib - 1;
                const int bottom = int(std::ceil((4 + height) * scale)) + nib - 1;
                std::set<int> columns, rows;
                for (const auto& [x, y] : points) {
                    columns.insert(x);
                    rows.insert(y);
                    ASSERT_TRUE(points.contains({left + right - x, y}) &&
                                points.contains({x, top + bottom - y}));
                }
                EXPECT_EQ(reachable(points), points) << "a gap in " << width << "x" << height;
                EXPECT_EQ(*columns.begin(), left);
                EXPECT_EQ(*columns.rbegin(), right);
                EXPECT_EQ(*rows.begin(), top);
                EXPECT_EQ(*rows.rbegin(), bottom);
                const std::pair middle((left + right) / 2, (top + bottom) / 2);
                EXPECT_EQ(points.contains(middle), std::min(right - left, bottom - top) < 2 * nib)
                    << width << "x" << height << " at " << scale;
            }
}

TEST(ThinShapes, HugeEllipsesAndRectanglesPassWhereTheyShould)
{
    Sheet sheet(0, 0, 100, 80);
    ormalux::thinEllipse(sheet.canvas, 40, -2000000000, 2000000040, 2000000000, white);
    ormalux::thinRectangle(sheet.canvas, INT_MIN, 30, INT_MAX, INT_MAX, white);
    Points expected;
    for (int y = 0; y < 80; ++y)
        expected.insert({40, y});
    for (int x = 0; x < 100; ++x)
        expected.insert({x, 30});
    EXPECT_EQ(sheet.drawn(), expected);
}

TEST(ThinShapes, WhatIsWrittenIntoPixelsLooksAsAPainterDrawsIt)
{
    CDrawObjArray shapes;
    shapes.AddRectangle(5, 6, 40, 20, 0, 1, RGB(255, 0, 0), "");
    shapes.AddLine(10, 70, 60, 70, 0, 1, RGB(0, 255, 0), "");
    shapes.AddLine(10, 70, 40, 40, 0, 5, RGB(0, 90, 255), "");
    shapes.AddLine(5, 5, 35, 35, 0, 1, RGB(255, 255, 0), "");
    shapes.AddRectangle(50, 6, 70, 20, 2, 1, RGB(255, 0, 0), "");
    shapes.AddCrossLine(60, 30, 6, 0, 1, RGB(0, 255, 255), "");
    shapes.AddCrossLine(70, 50, 0, 0, 1, RGB(0, 255, 255), "");
    shapes.AddArrow(10, 60, 30, 60, 0, 0, 1, RGB(255, 0, 255), "");
    // ARGB32 has no canvas: the painter draws.
    EXPECT_EQ(painted(QImage::Format_RGB32, shapes), painted(QImage::Format_ARGB32, shapes));
    shapes.RemoveAllGraphics();
    shapes.AddText(3, 9, "-12.5 gj 한글", 20, RGB(255, 128, 0), "");
    const QImage ours = painted(QImage::Format_RGB32, shapes);
    const QImage theirs = painted(QImage::Format_ARGB32, shapes);
    int inked = 0;
    for (int y = 0; y < ours.height(); ++y)
        for (int x = 0; x < ours.width(); ++x) {
            inked += ours.pixel(x, y) != black;
            ASSERT_NEAR(qRed(ours.pixel(x, y)), qRed(theirs.pixel(x, y)), 2) << x << "," << y;
            ASSERT_NEAR(qGreen(ours.pixel(x, y)), qGreen(theirs.pixel(x, y)), 2) << x << "," << y;
        }
    EXPECT_GT(inked, 200);
}

TEST(ThinShapes, APainterThatClipsScalesOrMixesKeepsDoingSo)
{
    CDrawObjArray shapes;
    shapes.AddLine(0, 20, 99, 20, 0, 1, RGB(200, 0, 0), "");
    QImage image(100, 60, QImage::Format_RGB32);
    const auto drawn = [&](auto prepare) {
        image.fill(Qt::black);
        QPainter painter(&image);
        prepare(painter);
        shapes.Draw(&painter, 1, 1, nullptr);
    };
    drawn([](QPainter& painter) { painter.setClipRect(0, 0, 50, 60); });
    EXPECT_EQ(image.pixel(49, 20), 0xffc80000u);
    EXPECT_EQ(image.pixel(50, 20), black);
    drawn([](QPainter& painter) { painter.scale(1, 2); });
    EXPECT_EQ(image.pixel(50, 20), black);
    EXPECT_EQ(image.pixel(50, 40), 0xffc80000u);
    drawn([](QPainter& painter) { painter.setOpacity(0.5); });
    EXPECT_NEAR(qRed(image.pixel(50, 20)), 100, 1);
    drawn([](QPainter& painter) { painter.setWindow(0, 0, 50, 30); });
    EXPECT_EQ(image.pixel(50, 40), 0xffc80000u);
}

TEST(TextMasks, FullCoverIsTheColourAndNoneLeavesWhatWasThere)
{
    for (const QRgb color : {0xffff00ffu, 0xff010203u, 0xffffffffu})
        for (const QRgb under : {0xff000000u, 0xffffffffu, 0xff80ff01u})
            for (int cover = 0; cover < 256; ++cover) {
                QRgb pixel = under;
                const DeviceCanvas canvas{&pixel, 1, {5, 6, 6, 7}};
                ormalux::blendMask(canvas, 5, 6, {0, 0, 1, 1, {std::uint8_t(cover)}}, color);
                ASSERT_EQ(qAlpha(pixel), 255);
                for (const int shift : {0, 8, 16}) {
                    const auto channel = [shift](QRgb rgb) { return int(rgb >> shift & 255); };
                    const double exact = channel(under) + (channel(color) - channel(under)) * cover / 255.0;
                    ASSERT_NEAR(channel(pixel), exact, cover == 0 || cover == 255 ? 0 : 1.5) << cover;
                }
            }
}
