#include "app/Results.h"

#include "app/PictureFile.h"
#include "tests/app/ViewerFixture.h"

using namespace testing_support;
using namespace ormalux::viewer;

namespace {

class ResultsTest : public ViewerFixture
{
protected:
    ResultsTest()
    {
        QImage black(100, 80, QImage::Format_RGB888);
        black.fill(Qt::black);
        viewer->openFiles({saved(black, "one.png"), saved(black, "two.png")});
    }
    bool open(const QByteArray& text) { return viewer->openResultsFile(written(text, "results.json")); }
    int shapes() { return window().GetView()->GetOverlays().GetCount(); }
    QRgb drawnAt(int x, int y) { return pictureWithOverlays(window()).pixel(x, y); }
};

constexpr QRgb yellow = qRgb(255, 230, 0);
constexpr QRgb pink = qRgb(255, 0, 200);
constexpr QRgb black = qRgb(0, 0, 0);

TEST_F(ResultsTest, EveryKindOfRecordIsDrawnWhereItLies)
{
    ASSERT_TRUE(open(R"({"file":"/elsewhere/one.png","count":1,"parts":
        [{"number":1,"left":20,"top":30,"right":40,"bottom":50,"yield":0.97}]})"));
    EXPECT_EQ(shapes(), 2) << "a box and its label";
    EXPECT_EQ(drawnAt(19, 40), yellow);
    EXPECT_EQ(drawnAt(30, 29), yellow);
    EXPECT_EQ(drawnAt(30, 40), black);

    ASSERT_TRUE(open(R"({"file":"one.png","edges":[{"number":1,"x":60,"y":20,"level":9}]})"));
    EXPECT_EQ(shapes(), 1) << "older results go";
    EXPECT_EQ(drawnAt(60, 20), pink);
    EXPECT_EQ(drawnAt(19, 40), black);

    ASSERT_TRUE(open(R"({"file":"one.png","steps":[{"step":"gauge-line","lines":
        [{"x1":5,"y1":70,"x2":95,"y2":70,"center_x":50,"center_y":70}]}]})"));
    EXPECT_EQ(shapes(), 2) << "a recipe's records lie deeper";
    EXPECT_EQ(drawnAt(80, 70), pink);
}

TEST_F(ResultsTest, EachPictureShowsItsOwnResults)
{
    ASSERT_TRUE(viewer->openFiles(
        {written("{\"file\":\"one.png\",\"edges\":[{\"x\":10,\"y\":10}]}\n"
                 "{\"file\":\"two.png\",\"edges\":[{\"x\":50,\"y\":9},{\"x\":60,\"y\":9}]}\n",
                 "results.jsonl")}));
    EXPECT_EQ(window().GetWidth(), 100) << "results are no picture";
    EXPECT_EQ(shapes(), 1);
    press(Qt::Key_PageDown);
    EXPECT_EQ(shapes(), 2);
    press(Qt::Key_PageDown);
    EXPECT_EQ(shapes(), 1);
    EXPECT_EQ(drawnAt(10, 10), pink);
}

TEST_F(ResultsTest, WhatIsNoResultIsRefusedOrPassedOver)
{
    ASSERT_TRUE(open(R"({"file":"one.png","edges":[{"x":10,"y":10}]})"));
    for (const char* text : {"", "[]", "{", "no json", "{\"a\":1}\nrubbish", "[1,2]"}) {
        reports.clear();
        EXPECT_FALSE(open(text)) << text;
        ASSERT_EQ(reports.size(), 1) << text;
        EXPECT_TRUE(reports[0].contains("results.json")) << text;
        EXPECT_EQ(shapes(), 1) << text;
    }
    EXPECT_FALSE(viewer->openResultsFile(path("nowhere.json")));
    for (const char* text :
         {R"({"parts":[{"left":"x","top":1,"right":2,"bottom":3}]})", R"({"edges":[{"x":1e300,"y":3}]})",
          R"({"edges":[5,null,"x",[{}]]})", R"({"edges":{"x":1}})"}) {
        EXPECT_TRUE(open(text)) << text;
        EXPECT_EQ(shapes(), 0) << text;
    }
}

} // namespace
