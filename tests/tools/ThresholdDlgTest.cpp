#include "tests/support/Random.h"
#include "tests/support/ToolFixture.h"
#include "view/ImageView.h"

#include <QCheckBox>
#include <QSlider>
#include <QSpinBox>

namespace {

using testing_support::randomBytes;

class ThresholdDlg : public testing_support::ToolFixture
{
protected:
    ThresholdDlg()
    {
        auto bytes = randomBytes(61 * 47, 5);
        image.SetImagePtr(61, 47, bytes.data());
        show(image);
    }
    /// The image with its area at a level, by the plain loop.
    CKestImage expected(const RECT& area, int level) const
    {
        CKestImage result(image);
        for (int y = area.top; y <= area.bottom; ++y)
            for (int x = area.left; x <= area.right; ++x)
                result.SetPixel(x, y, image.GetPixel(x, y) > level ? 255 : 0);
        return result;
    }
    static std::string bytesOf(const CKestImage& image)
    {
        const auto view = image.view();
        return {reinterpret_cast<const char*>(view.pixels), std::size_t(image.GetImageLen())};
    }
    CKestImage image;
};

TEST_F(ThresholdDlg, PreviewLeavesThePictureAloneAndApplyChangesTheAreaAlone)
{
    setArea(5, 6, 40, 30);
    QDialog* const dialog = open(6603, "CThresholdDlg");
    control<QCheckBox>(dialog, "autoThreshold")->setChecked(false);
    control<QSlider>(dialog, "thresholdSlider")->setValue(77);
    settle();
    EXPECT_EQ(control<QSpinBox>(dialog, "threshold")->value(), 77);
    const QImage preview = seen();
    EXPECT_EQ(bytesOf(*picture()), bytesOf(image));

    click(dialog, "apply");
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(bytesOf(*picture()), bytesOf(expected({5, 6, 40, 30}, 77)));
    EXPECT_EQ(seen(), preview);
}

TEST_F(ThresholdDlg, ClosingShowsThePictureAgain)
{
    const QImage before = seen();
    QDialog* const dialog = open(6603, "CThresholdDlg");
    EXPECT_NE(seen(), before);
    QTest::keyClick(dialog, Qt::Key_Escape);
    settle();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(seen(), before);
}

TEST_F(ThresholdDlg, FollowsThePictureAndTheRegion)
{
    QDialog* const dialog = open(6603, "CThresholdDlg");
    auto* const level = control<QSpinBox>(dialog, "threshold");
    EXPECT_EQ(level->value(), image.GetAutoThreshold('A', 1));
    setArea(3, 3, 20, 20);
    EXPECT_EQ(level->value(), image.GetAutoThreshold(3, 3, 20, 20, 'A', 1));
    window.SendCommand(6626); // blur
    settle();
    EXPECT_EQ(level->value(), picture()->GetAutoThreshold(3, 3, 20, 20, 'A', 1));
    window.SetImagePtr(0, 0, 8, nullptr);
    settle();
    click(dialog, "apply"); // nothing to apply to: says so and stays open
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(ThresholdDlg, TheLevelThatWasFoundStaysReadableWhenTheColorsChange)
{
    QDialog* const dialog = open(6603, "CThresholdDlg");
    control<QCheckBox>(dialog, "autoThreshold")->setChecked(true);
    const auto* const number = control<QSpinBox>(dialog, "threshold");
    ASSERT_FALSE(number->isEnabled());
    const QPalette before = QApplication::palette();
    for (const QRgb text : {0xFFE0E1E2, 0xFF101112}) {
        QPalette colors(before);
        colors.setColor(QPalette::Text, QColor::fromRgb(text));
        colors.setColor(QPalette::Disabled, QPalette::Text, QColor(128, 128, 128));
        QApplication::setPalette(colors);
        settle();
        EXPECT_EQ(number->palette().color(QPalette::Disabled, QPalette::Text).rgb(), text);
    }
    QApplication::setPalette(before);
}

TEST_F(ThresholdDlg, ScriptNamesTheAreaAndTheStep)
{
    setArea(5, 6, 40, 30);
    QDialog* const dialog = open(6603, "CThresholdDlg");
    control<QSpinBox>(dialog, "step")->setValue(4);
    click(dialog, "scriptToClipboard");
    EXPECT_EQ(clipboard(),
              "#include \"../LIB2010/ImageViewCtrl/Array.h\"\n"
              "#include \"../LIB2010/ImageViewCtrl/VisionImage.h\"\n"
              "#include \"../LIB2010/ImageViewCtrl/ImageViewWnd.h\"\n"
              "\n"
              "int nImageWidth=61;\n"
              "int nImageHeight=47;\n"
              "CVisionImage image(nImageWidth, nImageHeight, pImagePtr);\n"
              "\n"
              "image.SetROIPlacement(5, 6, 40, 30); // ROI 크기가 nImageWidth, nImageHeight와 같으면 "
              "안해도 된다.\n"
              "int threshold = image.GetAutoThreshold(4);\n");
}

} // namespace
