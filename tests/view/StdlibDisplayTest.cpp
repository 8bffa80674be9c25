#include "platform/Stdlib.h"
#include "view/PictureReader.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <climits>

namespace {

constexpr QRgb black = 0xff000000u;
constexpr QRgb red = 0xffff0000u;

class Drawing : public testing::Test
{
protected:
    Drawing()
    {
        image.fill(black);
        painter.begin(&image);
    }
    int lit() const
    {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixel(x, y) != black;
        return count;
    }

    QImage image{60, 40, QImage::Format_RGB32};
    QPainter painter;
};

} // namespace

TEST_F(Drawing, LinesAndFramesIncludeTheirEnds)
{
    CStdlib::DrawLine(&painter, 5, 5, 15, 5, RGB(255, 0, 0));
    EXPECT_EQ(lit(), 11);
    EXPECT_EQ(image.pixel(15, 5), red);
    CStdlib::DrawRectLine(&painter, 30, 20, 20, 10, RGB(255, 0, 0), 1);
    EXPECT_EQ(lit(), 11 + 40);
    CStdlib::DrawLine(&painter, INT_MIN, 30, INT_MAX, 30, RGB(255, 0, 0), 3);
    EXPECT_EQ(lit(), 11 + 40 + 3 * 60);
    CStdlib::DrawLine(nullptr, 0, 0, 1, 1, 0);
}

TEST_F(Drawing, FilledRectanglesLeaveOutRightAndBottom)
{
    CStdlib::FillSolidRect(&painter, {10, 10, 20, 15}, RGB(255, 0, 0));
    EXPECT_EQ(lit(), 50);
    CStdlib::FillSolidRect(&painter, {20, 15, 10, 10}, RGB(255, 0, 0));
    EXPECT_EQ(lit(), 50);
    CStdlib::FillSolidRect(&painter, {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, RGB(255, 0, 0));
    EXPECT_EQ(lit(), 60 * 40);
}

TEST_F(Drawing, PolygonsAreFilledWithTheirOutline)
{
    const POINT square[] = {{10, 10}, {20, 10}, {20, 20}, {10, 20}};
    CStdlib::FillPolygon(&painter, square, 4, RGB(255, 0, 0));
    EXPECT_EQ(lit(), 121);
}

TEST_F(Drawing, TheCrossHairDrawnTwiceIsGone)
{
    painter.fillRect(0, 0, 30, 40, QColor(10, 200, 30));
    const QImage before = image.copy();
    CStdlib::DrawFocusCrossLine(&painter, -100, 0, 1000, 40, 20, 11);
    EXPECT_NE(image, before);
    EXPECT_NE(image.pixel(20, 12), before.pixel(20, 12));
    CStdlib::DrawFocusCrossLine(&painter, -100, 0, 1000, 40, 20, 11);
    EXPECT_EQ(image, before);
}

TEST_F(Drawing, GradationRunsFromTheFirstToTheLastRow)
{
    CStdlib::DrawGradationTB(&painter, {0, 10, 5, 21}, RGB(0, 0, 0), RGB(200, 100, 50));
    EXPECT_EQ(image.pixel(2, 10), black);
    EXPECT_EQ(image.pixel(2, 15), qRgb(100, 50, 25));
    EXPECT_EQ(image.pixel(2, 20), qRgb(200, 100, 50));
    EXPECT_EQ(image.pixel(2, 21), black);
    CStdlib::DrawGradationTB(&painter, {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, 0, 0xffffff);
}

TEST_F(Drawing, BitmapsStandUprightFromTheirLastRow)
{
    unsigned char bits[] = {1, 2, 3, 0, 4, 5, 6, 0};
    CStdlib::DrawBitmap(&painter, CRect(10, 10, 16, 14), bits, 3, 2, 8);
    EXPECT_EQ(image.pixel(10, 10), qRgb(4, 4, 4));
    EXPECT_EQ(image.pixel(15, 13), qRgb(3, 3, 3));
    CStdlib::DrawBitmap(&painter, CRect(10, 10, 16, 14), bits, 3, 2, 16);
}

TEST_F(Drawing, TextHasItsColourAndFace)
{
    CStdlib::DrawTextA(&painter, 2, 2, "한 A", 20, 700, 0, RGB(255, 0, 0), "굴림");
    EXPECT_GT(lit(), 40);
    EXPECT_EQ(image.pixel(1, 1), black);
    CStdlib::DrawTextA(&painter, 2, 2, nullptr, 20, 700, 0, 0, nullptr);
}

TEST(StdlibDisplay, BitmapToFileWritesThePartAsked)
{
    const QTemporaryDir folder;
    const std::string path = folder.filePath("화면.bmp").toStdString();
    QImage image(7, 5, QImage::Format_RGB32);
    image.fill(QColor(1, 2, 3));
    EXPECT_EQ(CStdlib::BitmapToFile(image, path.c_str(), CSize(3, 99)), 1);
    const ormalux::Picture read = ormalux::readPicture(path.c_str());
    EXPECT_EQ(read.width, 3);
    EXPECT_EQ(read.height, 5);
    EXPECT_EQ(read.pixels[0], 3);
    EXPECT_EQ(CStdlib::BitmapToFile(QImage(), path.c_str(), CSize()), 0);
    EXPECT_EQ(CStdlib::BitmapToFile(image, "/no/such/folder/a.bmp", CSize()), 0);
}

TEST(StdlibDisplay, ClipboardTakesKoreanText)
{
    EXPECT_EQ(CStdlib::CopyToClipboard(nullptr, "검사\nimage.Erode();\n"), 1);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString::fromUtf8("검사\nimage.Erode();\n"));
}
