#include "tests/support/Random.h"
#include "view/LabelPlacer.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <initializer_list>
#include <random>
#include <string>

namespace {

using ormalux::LabelPlacer;

bool meet(const RECT& a, const RECT& b)
{
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

int distance(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
}

/// How many pixels lie nearer to the first colour than to the others.
int count(const QImage& image, QRgb color, std::initializer_list<QRgb> others)
{
    int found = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            found += std::ranges::all_of(
                others, [&](QRgb other) { return distance(pixel, color) < distance(pixel, other); });
        }
    return found;
}

QImage drawn(CDrawObjArray& shapes, QImage::Format format, QColor ground, QSize size = {120, 60})
{
    QImage image(size, format);
    image.fill(ground);
    QPainter painter(&image);
    RECT clip{0, 0, size.width(), size.height()};
    shapes.Draw(&painter, 1, 1, &clip);
    return image;
}

TEST(LabelPlacer, LabelsStayInTheAreaBesideTheirBoxesAndOffEachOther)
{
    std::mt19937 random(3);
    const auto below = [&](int end) { return int(random() % unsigned(end)); };
    int left = 0, moved = 0;
    for (int round = 0; round < 60; ++round) {
        const RECT shown{-20, 10, -20 + 200 + below(300), 10 + 100 + below(200)};
        LabelPlacer placer(shown);
        std::vector<RECT> boxes, labels;
        for (int i = 0; i < 40; ++i) {
            const int x = shown.left - 30 + below(500), y = shown.top - 30 + below(320);
            boxes.push_back({x, y, x + below(40), y + below(40)});
            placer.addBox(boxes.back());
        }
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            const SIZE text{8 + below(50), 14};
            const auto at = placer.place(i, text, LABEL_PLACE(below(3)));
            if (!at) {
                ++left;
                continue;
            }
            const RECT label{at->x - 1, at->y - 1, at->x + text.cx + 1, at->y + text.cy + 1};
            ASSERT_TRUE(label.left >= shown.left && label.right <= shown.right && label.top >= shown.top &&
                        label.bottom <= shown.bottom);
            const RECT nearBox{boxes[i].left - 4, boxes[i].top - 4, boxes[i].right + 5, boxes[i].bottom + 5};
            ASSERT_TRUE(meet(label, nearBox));
            for (const RECT& other : labels)
                ASSERT_FALSE(meet(label, other));
            labels.push_back(label);
            moved += at->x != boxes[i].left;
        }
    }
    EXPECT_GT(left, 50) << "boxes beside the area and crowds leave some without a place";
    EXPECT_GT(moved, 50);
}

TEST(LabelPlacer, ATakenPlaceIsGivenUpForTheNextAndOthersOutlinesAreKeptFreeWherePossible)
{
    LabelPlacer placer({0, 0, 300, 200});
    placer.addBox({50, 50, 80, 70});
    placer.addBox({40, 30, 90, 42}); // its outline runs where the first label would stand
    placer.addBox({50, 50, 80, 70});
    placer.addBox({0, 0, 20, 20}); // no room above
    placer.addBox({100, 100, 160, 150});
    const SIZE text{24, 14};
    const auto expectAt = [](const std::optional<POINT>& at, int x, int y) {
        ASSERT_TRUE(at);
        EXPECT_EQ(at->x, x);
        EXPECT_EQ(at->y, y);
    };
    expectAt(placer.place(0, text, LABEL_ABOVE), 50, 73);
    expectAt(placer.place(2, text, LABEL_ABOVE), 83, 50);
    expectAt(placer.place(3, text, LABEL_ABOVE), 1, 23);
    expectAt(placer.place(4, text, LABEL_CORNER), 100, 100);
    expectAt(placer.place(4, text, LABEL_BELOW), 100, 153);
}

TEST(LabelPlacer, MostOfThePictureStaysFree)
{
    LabelPlacer placer({0, 0, 400, 300});
    for (int i = 0; i < 1000; ++i)
        placer.addBox({i % 40 * 10, i / 40 * 12, i % 40 * 10 + 6, i / 40 * 12 + 6});
    int covered = 0;
    for (std::size_t i = 0; i < 1000 && !placer.full(); ++i)
        covered += placer.place(i, {16, 14}, LABEL_ABOVE) ? 18 * 16 : 0;
    EXPECT_GE(covered, 400 * 300 / 4);
    EXPECT_LT(covered, 400 * 300 / 4 + 18 * 16);
}

TEST(Labels, AHaloTellsThemFromAnyGroundAndTextsOfTheHostHaveNone)
{
    const COLORREF red = RGB(255, 0, 0), yellow = RGB(255, 230, 0);
    // The second format has no pixels that are written directly: the painter itself writes.
    for (const QImage::Format format : {QImage::Format_RGB32, QImage::Format_RGB888})
        for (const auto& [color, halo] :
             {std::pair(red, qRgb(255, 255, 255)), std::pair(yellow, qRgb(0, 0, 0))}) {
            const QColor ground(GetRValue(color), GetGValue(color), GetBValue(color));
            CDrawObjArray label, text;
            label.AddLabel({20, 30, 60, 50}, LABEL_ABOVE, "8 한", color, "t");
            text.AddText(20, 14, "8 한", 12, color, "t");
            EXPECT_GT(count(drawn(label, format, ground), halo, {ground.rgb()}), 30) << int(format);
            EXPECT_EQ(count(drawn(text, format, ground), halo, {ground.rgb()}), 0);
            const QRgb blue = qRgb(0, 0, 255);
            const QImage other = drawn(label, format, blue);
            EXPECT_GT(count(other, halo, {ground.rgb(), blue}), 20) << int(format);
            EXPECT_GT(count(other, ground.rgb(), {halo, blue}), 10) << "the letters lie over their halo";
        }
}

TEST(Labels, ShapesAddedLaterDoNotCoverThem)
{
    CDrawObjArray shapes;
    shapes.AddLabel({20, 30, 60, 50}, LABEL_ABOVE, "123", RGB(255, 230, 0), "t");
    const QImage alone = drawn(shapes, QImage::Format_RGB32, Qt::black);
    for (int y = 0; y < 60; ++y)
        shapes.AddLine(0, y, 119, y, 0, 1, RGB(0, 0, 200), "t");
    const QImage covered = drawn(shapes, QImage::Format_RGB32, Qt::black);
    const QRgb yellow = qRgb(255, 230, 0), lines = qRgb(0, 0, 200);
    ASSERT_GT(count(alone, yellow, {lines, qRgb(0, 0, 0)}), 10);
    EXPECT_EQ(count(covered, yellow, {lines, qRgb(0, 0, 0)}), count(alone, yellow, {lines, qRgb(0, 0, 0)}));
    EXPECT_EQ(shapes.GetCount("t"), 61);
    shapes.RemoveGraphics("t");
    EXPECT_EQ(shapes.GetCount(), 0);
}

TEST(Labels, ExtremesAndTextsOfNothingDoNoHarm)
{
    CDrawObjArray shapes;
    shapes.AddLabel({0, 0, 5, 5}, LABEL_ABOVE, "", 0, "t");
    shapes.AddLabel({0, 0, 5, 5}, LABEL_ABOVE, nullptr, 0, "t");
    EXPECT_EQ(shapes.GetCount(), 0);
    shapes.AddLabel({INT_MIN, INT_MIN, INT_MAX, INT_MAX}, LABEL_PLACE(99), "a", RGB(9, 9, 9), "t");
    shapes.AddLabel({INT_MAX, INT_MAX, INT_MIN, 3}, LABEL_CORNER, std::string(300, 'w').c_str(), 0, "t");
    for (int i = 0; i < 5000; ++i)
        shapes.AddLabel({10, 10, 20, 20}, LABEL_ABOVE, "7", 0, "t");
    for (const float zoom : {1.0f, 1e-9f, 25.0f}) {
        QImage image(120, 60, QImage::Format_RGB32);
        QPainter painter(&image);
        shapes.Draw(&painter, zoom, zoom, nullptr);
    }
}

} // namespace
