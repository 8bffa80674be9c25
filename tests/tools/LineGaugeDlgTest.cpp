#include "image/WorkPool.h"
#include "measure/Geometry.h"
#include "measure/LineGauge.h"
#include "tests/support/GaugeFixture.h"
#include "tools/LineGaugeTool.h"

#include <QGroupBox>
#include <QJsonArray>

#include <cmath>
#include <cstdio>

namespace {

using ormalux::LineGaugeTool;
using testing_support::GaugeFixture;
using testing_support::randomBytes;

class LineGaugeDlg : public GaugeFixture
{
protected:
    ~LineGaugeDlg() override { ormalux::setBandCount(0); }

    QDialog* openGauge() { return open(6710, "CLineGauageDlg"); }
    /// A bright half plane with a ragged border; every seventh row and column has none.
    static CKestImage slanted(int width, int height, double slope, bool upright)
    {
        auto noise = randomBytes(std::size_t(width) * std::size_t(height), 6);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const int along = upright ? y : x, across = upright ? x : y;
                const double border = (upright ? width : height) * 0.5 + slope * along + along % 3;
                auto& pixel = noise[std::size_t(y) * std::size_t(width) + std::size_t(x)];
                pixel = std::uint8_t(20 + pixel % 20 + (across > border && along % 7 != 2 ? 180 : 0));
            }
        CKestImage image;
        image.SetImagePtr(width, height, noise.data());
        return image;
    }
    static std::string csvOf(int found, const _stLineGaugeResult& line)
    {
        std::string text = "x1,y1,x2,y2,center_x,center_y,angle\n";
        char row[128] = "";
        if (found)
            std::snprintf(row, sizeof row, "%d,%d,%d,%d,%d,%d,%f\n", line.x1, line.y1, line.x2, line.y2,
                          line.center_x, line.center_y, line.angle);
        return text + row;
    }
};

TEST_F(LineGaugeDlg, ListIsWhatTheLibraryReturns)
{
    const RECT area{8, 7, 85, 64};
    for (const Source source : sources)
        for (const bool upright : {true, false}) {
            const CKestImage image = slanted(93, 71, 0.08, upright);
            showFrom(source, image);
            setArea(area.left, area.top, area.right, area.bottom);
            QDialog* const dialog = openGauge();
            choose(dialog, upright ? "directionVertical" : "directionHorizental");
            EXPECT_EQ(control<QGroupBox>(dialog, "stepBox")->isEnabled(), !upright);
            int measured = 0;
            for (const int polarity : {BLACK_AND_WHITE, WHITE_AND_BLACK})
                for (const int step : {1, 2, 9, 64})
                    for (const int level : {-1, 0, 100, 230}) {
                        choose(dialog, polarity == BLACK_AND_WHITE ? "blackAndWhite" : "whiteAndBlack");
                        control<QSpinBox>(dialog, "step")->setValue(step);
                        setLevel(dialog, std::max(level, 0));
                        control<QCheckBox>(dialog, "autoThreshold")->setChecked(level < 0);
                        settle();
                        const int direction = upright ? DIRECTION_VERTICAL : DIRECTION_HORIZENTAL;
                        _stLineGaugeResult line{};
                        const int found =
                            level < 0 ? image.GetLineGauge(area.left, area.top, area.right, area.bottom,
                                                           polarity, direction, step, line)
                                      : image.GetLineGauge(area.left, area.top, area.right, area.bottom,
                                                           polarity, direction, step, level, line);
                        measured += found;
                        ASSERT_EQ(csv(dialog), csvOf(found, line)) << source << upright << step << level;
                        ASSERT_EQ(message(dialog).empty(), found == 1);
                    }
            EXPECT_GE(measured, 8);
            delete dialog;
        }
}

TEST_F(LineGaugeDlg, TheScanLinesAreThoseThatMakeTheAngleForAnyNumberOfBands)
{
    const RECT area{5, 3, 80, 67};
    for (const int bands : {1, 2, 3, 7})
        for (const int step : {1, 4, 20})
            for (const bool upright : {true, false}) {
                ormalux::setBandCount(bands);
                const CKestImage image = slanted(93, 71, -0.06, upright);
                LineGaugeTool tool;
                tool.edge = {BLACK_AND_WHITE, false, 100};
                tool.direction = upright ? DIRECTION_VERTICAL : DIRECTION_HORIZENTAL;
                tool.step = step;
                const auto found = tool.run(image, area);
                ASSERT_TRUE(found.measured);
                double sum = 0;
                int used = 0;
                for (const auto& line : tool.scanLines(image, area, 100)) {
                    const int center = upright ? (area.top + (area.bottom - area.top) / 2)
                                               : (area.left + (area.right - area.left) / 2);
                    const int at = upright ? line.from.y : line.from.x, mirror = 2 * center - at;
                    const auto best = [&](int place, long& x, long& y) {
                        return upright
                                   ? image.GetPointGauge(area.left, place, area.right, place, 0, 100, &x, &y)
                                   : image.GetPointGauge(place, area.top, place, area.bottom, 0, 100, &x, &y);
                    };
                    long x = -1, y = -1, mirrorX = -1, mirrorY = -1;
                    ASSERT_EQ(line.hasEdge, best(at, x, y) == 1);
                    ASSERT_EQ(line.used, line.hasEdge && best(mirror, mirrorX, mirrorY) == 1);
                    if (!line.used)
                        continue;
                    ASSERT_EQ(line.edge.x, x);
                    ASSERT_EQ(line.edge.y, y);
                    sum += ormalux::directionDegrees(mirrorX - x, mirrorY - y);
                    ++used;
                }
                EXPECT_EQ(sum / used - 90, found.angle) << bands << " " << step << " " << upright;
            }
}

TEST_F(LineGaugeDlg, ARecipeNamesTheBandsThatTheStepDependsOn)
{
    const CKestImage image = slanted(93, 71, 0.2, false);
    const RECT area{5, 3, 80, 67};
    LineGaugeTool tool;
    tool.edge = {BLACK_AND_WHITE, false, 100};
    tool.direction = DIRECTION_HORIZENTAL;
    tool.step = 6;
    ormalux::ToolScene scene{93, 71, CRect(area), false, {}};
    ormalux::setBandCount(5);
    const auto found = tool.run(image, area);
    const QJsonObject step = tool.recipeSteps(scene).front();
    EXPECT_EQ(step["spacing"].toInt(), 6);
    ASSERT_EQ(step["bands"].toInt(), 5);
    ormalux::setBandCount(2); // another machine
    ormalux::LineFit fit;
    ASSERT_TRUE(fitEdgeLine(image.view(), {area, 0, true, 6, 100, step["bands"].toInt()}, fit));
    EXPECT_EQ(fit.angle, found.angle);
    EXPECT_NE(tool.run(image, area).angle, found.angle) << "the case does not depend on the bands";
    tool.step = 1;
    EXPECT_FALSE(tool.recipeSteps(scene).front().contains("bands"));
}

TEST_F(LineGaugeDlg, DrawsTheEdgesTheFittedLineAndTheCenter)
{
    CKestImage image(40, 30);
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x)
            image.SetPixel(x, y, y != 6 && y != 7 && x >= 20 ? 200 : 10);
    show(image);
    setArea(10, 4, 30, 14);
    QDialog* const dialog = openGauge();
    setLevel(dialog, 100);
    _stLineGaugeResult line{};
    ASSERT_EQ(image.GetLineGauge(10, 4, 30, 14, 0, 0, 1, 100, line), 1);

    const COLORREF scan = RGB(255, 200, 0), edge = RGB(255, 0, 200), unused = RGB(150, 150, 150),
                   result = RGB(0, 220, 0);
    CDrawObjArray expected;
    const int apart = int(std::ceil(12 / double(view->GetZoom())));
    for (int y = 4; y < 14; y += apart)
        expected.AddLine(10, y, 30, y + 1, 0, 1, scan, "");
    // A row's scan line goes over to the next row behind column 20: row 6 has no edge, row 7 one of row 8.
    for (int y = 4; y < 14; ++y)
        if (y != 6)
            addPoint(expected, y == 7 ? 21 : 20, y == 7 ? 8 : y, 3, 1,
                     y == 12 ? unused : edge); // 12 is the mirror of 6
    expected.AddLine(line.x1, line.y1, line.x2, line.y2, 0, 2, result, "");
    addPoint(expected, 20, 9, 7, 2, result);
    expectDrawn(expected);
    EXPECT_EQ(control<QLabel>(dialog, "lines")->text().toStdString(), "Lines: 8 / 10");
    EXPECT_EQ(control<QLabel>(dialog, "angle")->text().toStdString(),
              QString::number(line.angle, 'f', 4).toStdString() + "°");

    const QImage before = seen();
    QTest::keyClick(dialog, Qt::Key_Escape);
    settle();
    EXPECT_EQ(view->GetOverlays().GetCount(), 0);
    EXPECT_NE(seen(), before);
}

TEST_F(LineGaugeDlg, SaysWhyNothingIsMeasured)
{
    show(slanted(93, 71, 0, true));
    setArea(8, 7, 85, 64);
    QDialog* const dialog = openGauge();
    setLevel(dialog, 100);
    EXPECT_EQ(message(dialog), "");
    setLevel(dialog, 0);
    EXPECT_EQ(message(dialog), "임계값이 0이면 측정하지 않습니다.");
    setLevel(dialog, 250);
    EXPECT_EQ(message(dialog), "경계를 찾지 못했습니다.");
    setLevel(dialog, 100);
    CKestImage image(60, 40);
    for (int y = 4; y < 40; ++y)
        for (int x = 30; x < 60; ++x)
            image.SetPixel(x, y, 200);
    show(image);
    setArea(5, 0, 55, 5); // neither row 2 nor row 3, into which its scan line goes over, has an edge
    EXPECT_EQ(message(dialog), "영역의 중심선 위에 경계가 없습니다.");
    setArea(5, 20, 55, 20);
    EXPECT_EQ(message(dialog), "영역이 너무 작아 측정할 수 없습니다.");
    EXPECT_EQ(csv(dialog), csvOf(0, {}));
    control<QCheckBox>(dialog, "autoThreshold")->setChecked(true);
    CKestImage flat(50, 50);
    show(flat);
    EXPECT_EQ(message(dialog), "영역에 경계가 없습니다.");
    window.SetImagePtr(0, 0, 8, nullptr);
    settle();
    EXPECT_EQ(message(dialog), "영상이 없습니다.");
}

TEST_F(LineGaugeDlg, ScriptNamesTheAreaTheDirectionAndTheStep)
{
    show(slanted(93, 71, 0, true));
    setArea(8, 7, 85, 66);
    QDialog* const dialog = openGauge();
    choose(dialog, "directionHorizental");
    choose(dialog, "whiteAndBlack");
    control<QSpinBox>(dialog, "step")->setValue(5);
    click(dialog, "scriptToClipboard");
    EXPECT_EQ(clipboard(),
              R"(#include "../LIB2010/ImageViewCtrl/Array.h"
#include "../LIB2010/ImageViewCtrl/VisionImage.h"
#include "../LIB2010/ImageViewCtrl/ImageViewWnd.h"

int nImageWidth=93;
int nImageHeight=71;
CVisionImage image(nImageWidth, nImageHeight, pImagePtr);
LINE_GAUGE_RESULT result;

//첫번째 방법 - 내부 threshold를 이용하는 방법
int ok = image.GetLineGauge(8, 7, 85, 66, WHITE_AND_BLACK, DIRECTION_HORIZENTAL, 5, result); // cnt = 0 이면 not found, 1 = found

//두번째 방법 - threshold를 지정하기
int threshold = image.GetAutoThreshold(8, 7, 85, 66, 4); // 1 ~ 4 Channels
int ok = image.GetLineGauge(8, 7, 85, 66, WHITE_AND_BLACK, DIRECTION_HORIZENTAL, 5, threshold, result); // cnt = 0 이면 not found, 1 = found

//result.x1;
//result.y1;
//result.x2;
//result.y2;
//result.center_x;
//result.center_y;
//result.angle;
)");
    choose(dialog, "directionVertical");
    choose(dialog, "blackAndWhite");
    click(dialog, "scriptToClipboard");
    EXPECT_NE(clipboard().find("(8, 7, 85, 66, BLACK_AND_WHITE, DIRECTION_VERTICAL, 5, threshold, result)"),
              std::string::npos);
}

} // namespace
