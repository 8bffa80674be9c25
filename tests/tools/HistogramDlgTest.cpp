#include "tests/support/Random.h"
#include "tests/support/ToolFixture.h"
#include "color/VisionImage24.h"
#include "tools/HistogramPlot.h"
#include "tools/ResultTable.h"
#include "view/ImageView.h"

#include <QCheckBox>
#include <QLabel>
#include <QMouseEvent>
#include <QSpinBox>

#include <cmath>

namespace {

using ormalux::HistogramPlot;
using ormalux::HistogramTool;
using ormalux::LevelCounts;
using testing_support::randomBytes;

class HistogramDlg : public testing_support::ToolFixture
{
protected:
    HistogramDlg()
    {
        auto bytes = randomBytes(61 * 47, 9);
        for (auto& byte : bytes)
            byte = std::uint8_t(byte < 100 ? 20 : byte | 3); // levels that do not occur, too
        image.SetImagePtr(61, 47, bytes.data());
        show(image);
        dialog = open(6602, "CHistogramDlg");
        plot = control<HistogramPlot>(dialog, "plot");
    }
    std::string text(const char* label) { return control<QLabel>(dialog, label)->text().toStdString(); }
    std::string listed() { return resultCsv(control<ormalux::ResultTable>(dialog, "results")->results()); }
    /// The list by the plain loop.
    std::string expected(const RECT& area) const
    {
        long counts[256] = {};
        for (int y = area.top; y <= area.bottom; ++y)
            for (int x = area.left; x <= area.right; ++x)
                ++counts[image.GetPixel(x, y)];
        const int total = (area.right - area.left + 1) * (area.bottom - area.top + 1);
        std::string csv = "level,count,percent\n";
        char line[64];
        for (int level = 0; level < 256; ++level)
            if (counts[level]) {
                std::snprintf(line, sizeof line, "%d,%ld,%.6f\n", level, counts[level],
                              100.0 * double(counts[level]) / total);
                csv += line;
            }
        return csv;
    }
    void drag(double from, double to)
    {
        const auto at = [this](double x) { return QPoint(int(std::lround(x)), plot->height() / 2); };
        QTest::mousePress(plot, Qt::LeftButton, {}, at(from));
        QTest::mouseMove(plot, at((from + to) / 2));
        QTest::mouseMove(plot, at(to));
        QTest::mouseRelease(plot, Qt::LeftButton, {}, at(to));
        settle();
    }
    CKestImage image;
    QDialog* dialog;
    HistogramPlot* plot;
};

TEST_F(HistogramDlg, ListsTheLevelsOfTheAreaAndFollowsIt)
{
    EXPECT_EQ(listed(), expected({0, 0, 60, 46}));
    setArea(7, 5, 41, 30);
    EXPECT_EQ(listed(), expected({7, 5, 41, 30}));
    window.SetImagePtr(0, 0, 8, nullptr);
    settle();
    EXPECT_EQ(listed(), "level,count,percent\n");
    EXPECT_EQ(text("between"), "0 (0.00 %)");
    EXPECT_NE(text("message"), "");
}

TEST_F(HistogramDlg, LinesMoveByMouseKeysAndFieldsAlikeAndNeverCross)
{
    auto* const low = control<QSpinBox>(dialog, "low");
    auto* const high = control<QSpinBox>(dialog, "high");
    drag(plot->placeOf(64), plot->placeOf(100));
    EXPECT_EQ(low->value(), 100);
    drag(plot->placeOf(192), plot->placeOf(30)); // stops at the other line
    EXPECT_EQ(high->value(), 100);
    drag(plot->placeOf(100), plot->placeOf(80)); // of two on a level the one that can go there
    EXPECT_EQ(low->value(), 80);
    EXPECT_EQ(high->value(), 100);
    drag(plot->placeOf(80), plot->placeOf(110));
    drag(plot->placeOf(100), plot->width() + 50.0);
    EXPECT_EQ(low->value(), 100);
    EXPECT_EQ(high->value(), 255);

    plot->setFocus();
    QTest::keyClick(plot, Qt::Key_Left);
    QTest::keyClick(plot, Qt::Key_PageDown);
    EXPECT_EQ(high->value(), 255 - 17);
    QTest::keyClick(plot, Qt::Key_Up);
    QTest::keyClick(plot, Qt::Key_Home);
    EXPECT_EQ(low->value(), 0);
    high->setValue(50);
    low->setValue(70); // takes the other along
    EXPECT_EQ(plot->low(), 70);
    EXPECT_EQ(plot->high(), 70);
}

TEST_F(HistogramDlg, MaskIsThatOfTheDoubleThresholdOnTheAreaAndGoesWithTheDialog)
{
    setArea(5, 6, 40, 30);
    const QImage before = seen();
    plot->setLines(110, 180);
    control<QCheckBox>(dialog, "maskPreview")->setChecked(true);
    QTest::keyClick(plot, Qt::Key_Right); // the lower line, to 111
    settle();
    const QImage mask = seen();
    QTest::keyClick(dialog, Qt::Key_Escape);
    settle();
    EXPECT_EQ(seen(), before);

    CKestImage expectedMask(image);
    for (int y = 6; y <= 30; ++y)
        for (int x = 5; x <= 40; ++x)
            expectedMask.SetPixel(x, y, image.GetPixel(x, y) >= 111 && image.GetPixel(x, y) <= 180 ? 255 : 0);
    show(expectedMask);
    setArea(5, 6, 40, 30);
    EXPECT_EQ(seen(), mask);
}

TEST_F(HistogramDlg, TellsTheLevelUnderTheMouseAndThatOfAClickedPixel)
{
    plot->resize(600, 250);
    for (const int level : {0, 20, 131, 255}) {
        const QPointF place(plot->placeOf(level), 90);
        QMouseEvent move(QEvent::MouseMove, place, plot->mapToGlobal(place), Qt::NoButton, {}, {});
        QApplication::sendEvent(plot, &move);
        const std::string told = text("levelInfo");
        long count = 0;
        for (int i = 0; i < 61 * 47; ++i)
            count += image.GetPixel(i % 61, i / 61) == level;
        const std::string want =
            "Level " + std::to_string(level) + "    Gray: " + std::to_string(count) + " (";
        EXPECT_EQ(told.substr(0, want.size()), want);
    }
    auto* const results = control<ormalux::ResultTable>(dialog, "results");
    Q_EMIT view->pixelClicked(30, 20);
    const int row = results->selectedResult();
    ASSERT_GE(row, 0);
    EXPECT_EQ(std::get<long long>(results->results().rows[std::size_t(row)].values[0]),
              (long long)(image.GetPixel(30, 20)));
}

TEST(HistogramTool, CountsTheChannelsOfPaddedRows)
{
    constexpr int width = 5, height = 3, step = 16;
    auto bytes = randomBytes(step * height, 3);
    const CKestImage24 picture(width, height, bytes.data());
    const auto found = HistogramTool::channels(picture, {1, 1, 4, 2});
    std::array<LevelCounts, 3> expected{};
    for (int y = 1; y <= 2; ++y)
        for (int x = 1; x <= 4; ++x)
            for (int c = 0; c < 3; ++c)
                ++expected[std::size_t(c)][bytes[std::size_t(y * step + 3 * x + 2 - c)]];
    EXPECT_EQ(found, expected);
    EXPECT_EQ(HistogramTool::channels(picture, {0, 0, 5, 2}), (std::array<LevelCounts, 3>{})); // leaves it
}

TEST(HistogramTool, StatisticsAreThoseOfTheDefinition)
{
    LevelCounts counts{};
    counts[10] = 3;
    counts[14] = 1;
    counts[255] = 4;
    const auto found = ormalux::statisticsOf(counts);
    EXPECT_EQ(found.pixels, 8);
    EXPECT_DOUBLE_EQ(found.mean, 133.0);
    EXPECT_DOUBLE_EQ(found.deviation, std::sqrt((3 * 123.0 * 123 + 119.0 * 119 + 4 * 122.0 * 122) / 8));
    EXPECT_EQ(found.lowest, 10);
    EXPECT_EQ(found.highest, 255);
    EXPECT_EQ(ormalux::statisticsOf({}).deviation, 0.0);
    EXPECT_EQ(ormalux::countBetween(counts, 11, 255), 5);
}

TEST(HistogramTool, ScriptCountsTheArea)
{
    EXPECT_EQ(HistogramTool().script({640, 480, CRect(1, 2, 30, 40), true, ""}),
              "#include \"../LIB2010/ImageViewCtrl/Array.h\"\n"
              "#include \"../LIB2010/ImageViewCtrl/VisionImage.h\"\n"
              "#include \"../LIB2010/ImageViewCtrl/ImageViewWnd.h\"\n"
              "\n"
              "int nImageWidth=640;\n"
              "int nImageHeight=480;\n"
              "CVisionImage image(nImageWidth, nImageHeight, pImagePtr);\n"
              "\n"
              "image.SetROIPlacement(1, 2, 30, 40); // ROI 크기가 nImageWidth, nImageHeight와 같으면 "
              "안해도 된다.\n"
              "long histogram[256] = {0};\n"
              "image.Histogram(histogram);\n");
}

/// The colours of a drawn plot, so that a curve that is not drawn is noticed.
int pixelsOf(HistogramPlot& plot, QRgb color)
{
    const QImage drawn = plot.grab().toImage().convertToFormat(QImage::Format_RGB32);
    int count = 0;
    for (int y = 0; y < drawn.height(); ++y)
        for (int x = 0; x < drawn.width(); ++x)
            count += drawn.pixel(x, y) == color;
    return count;
}

TEST(HistogramPlot, DrawsEachCurveOnItsColumnAndTheLogarithmLiftsTheRare)
{
    HistogramPlot plot;
    plot.resize(600, 240);
    LevelCounts counts{};
    counts[40] = 1000;
    counts[200] = 3;
    const QRgb red = 0xffd02020;
    plot.setCurves({{ormalux::LevelCurve::Gray, counts}});
    EXPECT_EQ(pixelsOf(plot, red), 0);
    plot.setCurves({{ormalux::LevelCurve::Red, counts}});
    const int linear = pixelsOf(plot, red);
    EXPECT_GT(linear, 300);
    plot.setLogarithmic(true);
    EXPECT_GT(pixelsOf(plot, red), linear + 40);
    plot.setMinimumSize(1, 1);
    plot.resize(10, 10); // too small to plot: nothing drawn, nothing broken
    EXPECT_EQ(pixelsOf(plot, red), 0);
}

} // namespace
