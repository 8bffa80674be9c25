#include "tests/support/GaugeFixture.h"
#include "tools/ProfilePlot.h"

namespace {

using testing_support::GaugeFixture;
using testing_support::randomBytes;

class PointGaugeDlg : public GaugeFixture
{
protected:
    static constexpr COLORREF scan = RGB(255, 200, 0), edgeColor = RGB(255, 0, 200), best = RGB(0, 220, 0),
                              chosen = RGB(0, 200, 255);

    QDialog* openGauge() { return open(6709, "CPointGauageDlg"); }
    static std::string csvOf(const CPixelArray& edges)
    {
        std::string text = "number,x,y,level,contrast\n";
        int number = 0;
        for (const _stPixel& edge : edges.records())
            text += std::to_string(++number) + "," + std::to_string(edge.x) + "," + std::to_string(edge.y) +
                    "," + std::to_string(edge.gray_level) + "," + std::to_string(int(edge.parameter)) + "\n";
        return text;
    }
    static std::string line(QDialog* dialog)
    {
        std::string text;
        for (const char* const name : {"x1", "y1", "x2", "y2"})
            text += (text.empty() ? "" : " ") + control<QSpinBox>(dialog, name)->text().toStdString();
        return text;
    }
};

TEST_F(PointGaugeDlg, ListAndDrawingsAreWhatTheLibraryReturns)
{
    const CKestImage image = hills(141, 97, 3);
    for (const Source source : sources) {
        showFrom(source, image);
        setArea(9, 20, 130, 61);
        QDialog* const dialog = openGauge();
        for (const int level : {0, 1, 60, 200, 254, 255})
            for (const int polarity : {BLACK_AND_WHITE, WHITE_AND_BLACK}) {
                choose(dialog, polarity == BLACK_AND_WHITE ? "blackAndWhite" : "whiteAndBlack");
                setLevel(dialog, level);
                settle();
                CPixelArray edges;
                image.GetPointGauge(9, 40, 130, 40, polarity, level, edges);
                EXPECT_EQ(csv(dialog), csvOf(edges)) << source << " " << level;
                EXPECT_EQ(message(dialog).empty(), edges.GetCount() > 0);

                long bestX = -1, bestY = -1;
                image.GetPointGauge(9, 40, 130, 40, polarity, level, &bestX, &bestY);
                CDrawObjArray expected;
                expected.AddLine(9, 40, 130, 41, 0, 1, scan, "");
                for (const _stPixel& edge : edges.records())
                    if (edge.x != bestX)
                        addPoint(expected, edge.x, edge.y, 4, 1, edgeColor);
                if (bestX >= 0)
                    addPoint(expected, int(bestX), int(bestY), 7, 2, best);
                expectDrawn(expected);
            }
        control<QCheckBox>(dialog, "autoThreshold")->setChecked(true);
        settle();
        CPixelArray edges;
        EXPECT_GT(image.GetPointGauge(9, 40, 130, 40, WHITE_AND_BLACK, edges), 0);
        EXPECT_EQ(csv(dialog), csvOf(edges));
        EXPECT_EQ(control<QSpinBox>(dialog, "threshold")->value(),
                  image.GetAutoThreshold(9, 40, 130, 41, 'A', 1));
        delete dialog;
        window.SetTrackerMode(0);
    }
}

TEST_F(PointGaugeDlg, MeasuresTheLineThatIsDrawnInThePicture)
{
    const CKestImage image = hills(120, 90, 4);
    show(image);
    QDialog* const dialog = openGauge();
    EXPECT_EQ(line(dialog), "0 44 119 44");
    dragPixels({3, 3}, {30, 30}); // nobody asked for a line
    EXPECT_EQ(line(dialog), "0 44 119 44");
    click(dialog, "drawLine");
    EXPECT_NE(message(dialog), "");
    dragPixels({100, 80}, {20, 10}); // against the walk
    EXPECT_EQ(line(dialog), "100 80 20 10");
    CPixelArray edges;
    EXPECT_GT(image.GetPointGauge(100, 80, 20, 10, BLACK_AND_WHITE, edges), 0);
    EXPECT_EQ(csv(dialog), csvOf(edges));
    click(dialog, "drawLine");
    dragPixels({60, 50}, {60, 95}); // out of the picture
    EXPECT_EQ(line(dialog), "60 50 60 89");
    dragPixels({5, 5}, {9, 9});
    EXPECT_EQ(line(dialog), "60 50 60 89");
}

TEST_F(PointGaugeDlg, FollowsTheRegionUntilALineIsChosenAndThePictureAlways)
{
    show(hills(120, 90, 4));
    QDialog* const dialog = openGauge();
    setArea(10, 10, 50, 30);
    EXPECT_EQ(line(dialog), "10 20 50 20");
    control<QSpinBox>(dialog, "y2")->setValue(85);
    setArea(60, 10, 80, 30);
    EXPECT_EQ(line(dialog), "10 20 50 85");
    const CKestImage smaller = hills(41, 33, 9);
    show(smaller);
    EXPECT_EQ(line(dialog), "10 20 40 32");
    CPixelArray edges;
    smaller.GetPointGauge(10, 20, 40, 32, BLACK_AND_WHITE, edges);
    EXPECT_EQ(csv(dialog), csvOf(edges));
    click(dialog, "middleLine");
    EXPECT_EQ(line(dialog), "0 16 40 16"); // the region lies beside the picture
    window.SetImagePtr(0, 0, 8, nullptr);
    settle();
    EXPECT_EQ(csv(dialog), csvOf({}));
    EXPECT_EQ(view->GetOverlays().GetCount("POINT_GAUGE"), 0);
    EXPECT_EQ(message(dialog), "영상이 없습니다.");
}

TEST_F(PointGaugeDlg, LeavesNothingBehind)
{
    show(hills(120, 90, 4));
    const QImage before = seen();
    QDialog* const dialog = openGauge();
    EXPECT_NE(seen(), before);
    click(dialog, "drawLine");
    EXPECT_EQ(view->GetTool(), TOOL_LINE);
    QTest::keyClick(dialog, Qt::Key_Escape);
    settle();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(view->GetTool(), TOOL_NONE);
    EXPECT_EQ(view->GetOverlays().GetCount(), 0);
    EXPECT_EQ(seen(), before);
    window.SendCommand(6626);
    settle();
    EXPECT_EQ(view->GetOverlays().GetCount(), 0) << "a closed dialog went on measuring";
}

TEST_F(PointGaugeDlg, RowsAndEdgesInThePictureAreLinked)
{
    const CKestImage image = hills(120, 90, 4);
    show(image);
    QDialog* const dialog = openGauge();
    setLevel(dialog, 70);
    CPixelArray edges;
    ASSERT_EQ(image.GetPointGauge(0, 44, 119, 44, BLACK_AND_WHITE, 70, edges), 5);
    clickPixel(edges[3].x, edges[3].y + 1); // nearly
    EXPECT_EQ(table(dialog)->selectedResult(), 3);
    for (const int index : {0, 4}) {
        table(dialog)->selectRow(index);
        settle();
        CDrawObjArray marks;
        addPoint(marks, edges[index].x, edges[index].y, 7, 2, chosen);
        // The mark of the selected edge is drawn over all others.
        const QImage mark = painted(marks, 120, 90, 8), all = painted(view->GetOverlays(), 120, 90, 8);
        for (int y = 0; y < mark.height(); ++y)
            for (int x = 0; x < mark.width(); ++x) {
                if (mark.pixel(x, y) != qRgb(0, 0, 0)) {
                    ASSERT_EQ(all.pixel(x, y), mark.pixel(x, y)) << x << "," << y;
                }
            }
    }
}

TEST_F(PointGaugeDlg, ThePlotTakesTheThresholdByADrag)
{
    show(hills(120, 90, 4));
    QDialog* const dialog = openGauge();
    auto* const plot = control<ormalux::ProfilePlot>(dialog, "profile");
    QTest::mousePress(plot, Qt::LeftButton, {}, {plot->width() / 2, plot->height() - 4});
    EXPECT_FALSE(control<QCheckBox>(dialog, "autoThreshold")->isChecked());
    EXPECT_EQ(control<QSpinBox>(dialog, "threshold")->value(), 0);
    QTest::mouseRelease(plot, Qt::LeftButton, {}, {plot->width() / 2, 0});
    QTest::mousePress(plot, Qt::LeftButton, {}, {plot->width() / 2, 0});
    EXPECT_EQ(control<QSpinBox>(dialog, "threshold")->value(), 255);
    QTest::mouseMove(plot, {3, 3}); // outside the plotted part
    (void)plot->grab();
}

TEST_F(PointGaugeDlg, ColourPicturesAreMeasuredByTheirGrayFormAndSaidSo)
{
    const auto bytes = randomBytes(64 * 3 * 48, 2);
    window.SetImagePtr(64, 48, 24, bytes.data());
    settle();
    QDialog* const dialog = openGauge();
    setLevel(dialog, 90);
    CPixelArray edges;
    EXPECT_GT(picture()->GetPointGauge(0, 23, 63, 23, BLACK_AND_WHITE, 90, edges), 0);
    EXPECT_EQ(csv(dialog), csvOf(edges));
    EXPECT_EQ(message(dialog), "컬러 영상은 회색조 (R + G + B) / 3 으로 처리합니다.");
}

TEST_F(PointGaugeDlg, ScriptNamesTheLineInEveryCall)
{
    show(hills(120, 90, 4));
    QDialog* const dialog = openGauge();
    const std::pair<const char*, int> ends[] = {{"x1", 11}, {"y1", 12}, {"x2", 113}, {"y2", 14}};
    for (const auto& [name, value] : ends)
        control<QSpinBox>(dialog, name)->setValue(value);
    choose(dialog, "whiteAndBlack");
    click(dialog, "scriptToClipboard");
    EXPECT_EQ(clipboard(),
              R"(#include "../LIB2010/ImageViewCtrl/Array.h"
#include "../LIB2010/ImageViewCtrl/VisionImage.h"
#include "../LIB2010/ImageViewCtrl/ImageViewWnd.h"

int nImageWidth=120;
int nImageHeight=90;
CVisionImage image(nImageWidth, nImageHeight, pImagePtr);
CPixelArray ar;
long best_x, best_y;
// 첫번째 방법 - 내부의 AutoThreshold를 이용하는 방법 4 channels를 이용함
int cnt = image.GetPointGauge(11, 12, 113, 14, WHITE_AND_BLACK, ar); // cnt = ar.GetCount();

// 두번째 방법 - Threshold를 지정하는 방법
int threshold = image.GetAutoThreshold(11, 12, 113, 14, 4); // 1 ~ 4 Channels
int cnt = image.GetPointGauge(11, 12, 113, 14, WHITE_AND_BLACK, threshold, ar); // cnt = ar.GetCount();

//ar.GetCount();

//ar.SortX(); Or ar.SortY(); Or ar.SortGrayLevel(); Or ar.SortParameter();
//ar[0].x;
//ar[0].y;
//ar[0].gray_level;
//ar[0].parameter;

// 세번째 방법 - threshold를 지정한 best_x, best_y를 하나만 가져오는 방법
int cnt = image.GetPointGauge(11, 12, 113, 14, WHITE_AND_BLACK, threshold, &best_x, &best_y); // cnt = ar.GetCount();

// 네번째 방법 - auto threshold를 이용한 best_x, best_y를 하나만 가져오는 방법
int cnt = image.GetPointGauge(11, 12, 113, 14, WHITE_AND_BLACK, &best_x, &best_y); // cnt = ar.GetCount();
)");
}

} // namespace
