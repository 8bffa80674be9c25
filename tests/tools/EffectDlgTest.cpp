#include "color/VisionImage24.h"
#include "tests/support/Random.h"
#include "tests/support/ToolFixture.h"
#include "view/ImageView.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QSlider>
#include <QSpinBox>

namespace {

using testing_support::randomBytes;

constexpr int width = 64;
constexpr int height = 47;
const RECT part{5, 6, 40, 30};

struct Effect
{
    const char* dialog;
    int command;
    void (*choose)(QDialog*);
    bool overArea;
    bool inColor;
    const char* call; ///< the script behind its head
};

template <class Widget = QSpinBox>
Widget* of(QDialog* dialog, const char* name)
{
    return dialog->findChild<Widget*>(QLatin1String(name));
}

const Effect effects[] = {
    {"CDoubleThresholdDlg", 6604,
     [](QDialog* dialog) {
         of<QSlider>(dialog, "upperSlider")->setValue(180);
         of<QSlider>(dialog, "lowerSlider")->setValue(70);
         of<QSlider>(dialog, "valueSlider")->setValue(33);
     },
     false, false, "image.DoubleThreshold(180, 70, 33);\n"},
    {"CRotateDlg", 6610,
     [](QDialog* dialog) {
         of<QSlider>(dialog, "angleSlider")->setValue(-1250);
         of(dialog, "fill")->setValue(9);
         of(dialog, "centerX")->setValue(10);
     },
     false, true, "image.Rotate(10, 23, -12.500000, 9);\n"},
    {"CUserFilterDlg", 6633,
     [](QDialog* dialog) {
         for (int i = 0; i < 9; ++i)
             of(dialog, qPrintable(QStringLiteral("kernel%1").arg(i)))->setValue(i - 3);
         of(dialog, "divisor")->setValue(7);
         of(dialog, "offset")->setValue(-20);
     },
     true, true,
     "image.SetROIPlacement(5, 6, 40, 30); // ROI 크기가 nImageWidth, nImageHeight와 같으면 안해도 된다.\n\n"
     "long kernel[9];\n\n"
     "kernel[0] = -3;kernel[1] = -2;kernel[2] = -1;kernel[3] = 0;kernel[4] = 1;kernel[5] = 2;kernel[6] = "
     "3;kernel[7] = 4;kernel[8] = 5;\n\n"
     "image.Filter(kernel, 3, 7, -20);\n"},
    {"CGammaDlg", 6701, [](QDialog* dialog) { of<QSlider>(dialog, "gammaSlider")->setValue(225); }, true,
     true,
     "image.SetROIPlacement(5, 6, 40, 30); // ROI 크기가 nImageWidth, nImageHeight와 같으면 안해도 된다.\n"
     "image.Gamma(2.250000);\n"},
    {"CLightenDlg", 6702,
     [](QDialog* dialog) {
         of<QSlider>(dialog, "brightnessSlider")->setValue(-40);
         of<QSlider>(dialog, "contrastSlider")->setValue(35);
     },
     true, true,
     "image.SetROIPlacement(5, 6, 40, 30); // ROI 크기가 nImageWidth, nImageHeight와 같으면 안해도 된다.\n"
     "image.Light(-40, 35);\n"},
};

class EffectDlg : public testing_support::ToolFixture
{
protected:
    EffectDlg()
    {
        auto bytes = randomBytes(std::size_t(width) * height * 3, 5);
        gray.SetImagePtr(width, height, bytes.data());
        color.SetImagePtr(width, height, bytes.data());
    }
    void showPicture(bool inColor)
    {
        if (inColor)
            window.SetImage(color);
        else
            window.SetImage(gray);
        window.ZoomFitTo();
        setArea(part.left, part.top, part.right, part.bottom);
    }
    /// The picture as it is: gray bytes, or blue, green, red.
    std::vector<std::uint8_t> bytes() const
    {
        if (window.GetBitCount() == 8) {
            const std::unique_ptr<CKestImage> image(window.GetImage());
            const auto view = std::as_const(*image).view();
            return {view.pixels, view.pixels + image->GetImageLen()};
        }
        const std::unique_ptr<CKestImage24> image(window.GetImage24());
        const auto view = std::as_const(*image).view();
        return {view.pixels, view.pixels + image->GetImageLen()};
    }
    CKestImage gray;
    CKestImage24 color;
};

TEST_F(EffectDlg, WhatIsPreviewedIsWhatApplyMakesAndEscapeTakesBack)
{
    for (const bool inColor : {false, true})
        for (const Effect& effect : effects) {
            SCOPED_TRACE(effect.dialog);
            showPicture(inColor);
            const QImage before = seen();
            const auto picture = bytes();
            QDialog* const dialog = open(effect.command, effect.dialog);
            effect.choose(dialog);
            settle();
            EXPECT_NE(seen(), before);
            QTest::keyClick(dialog, Qt::Key_Escape);
            settle();
            EXPECT_EQ(seen(), before);
            EXPECT_EQ(bytes(), picture);

            open(effect.command, effect.dialog); // the values are still there
            const QImage preview = seen();
            EXPECT_EQ(bytes(), picture);
            click(dialog, "apply");
            if (inColor && !effect.inColor) {
                EXPECT_TRUE(dialog->isVisible()); // it says why
                EXPECT_FALSE(of<QLabel>(dialog, "message")->text().isEmpty());
                EXPECT_EQ(bytes(), picture);
                dialog->close();
                settle();
                continue;
            }
            EXPECT_FALSE(dialog->isVisible());
            window.SetTrackerMode(1);
            settle();
            EXPECT_NE(bytes(), picture);
            EXPECT_EQ(seen(), effect.command == 6610 ? seen() : preview); // without the mark of the centre
        }
}

TEST_F(EffectDlg, AnAreaHasNothingFromAroundItAndNothingAroundItChanges)
{
    for (const bool inColor : {false, true})
        for (const Effect& effect : effects) {
            if (!effect.overArea)
                continue;
            SCOPED_TRACE(effect.dialog);
            showPicture(inColor);
            const auto before = bytes();
            QDialog* const dialog = open(effect.command, effect.dialog);
            effect.choose(dialog);
            click(dialog, "apply");
            const auto after = bytes();

            // The area as a picture of its own.
            const int size = inColor ? 3 : 1;
            const int areaWidth = part.right - part.left + 1, areaHeight = part.bottom - part.top + 1;
            std::vector<std::uint8_t> cut;
            for (int y = part.top; y <= part.bottom; ++y) {
                const auto row = before.begin() + (y * width + part.left) * size;
                cut.insert(cut.end(), row, row + areaWidth * size);
            }
            if (inColor) {
                CKestImage24 alone;
                alone.SetImagePtr(areaWidth, areaHeight, cut.data()); // 36 columns: no padding
                window.SetImage(alone);
            } else {
                CKestImage alone(areaWidth, areaHeight, cut.data());
                window.SetImage(alone);
            }
            window.SetTrackerMode(0);
            settle();
            open(effect.command, effect.dialog);
            click(dialog, "apply");
            const auto expected = bytes();
            EXPECT_NE(expected, cut);
            auto whole = before;
            for (int y = 0; y < areaHeight; ++y)
                std::copy_n(expected.begin() + y * areaWidth * size, areaWidth * size,
                            whole.begin() + ((part.top + y) * width + part.left) * size);
            EXPECT_EQ(after, whole);
        }
}

TEST_F(EffectDlg, AFilterTakesEachChannelAlone)
{
    showPicture(true);
    window.SetTrackerMode(0);
    const auto before = bytes();
    QDialog* const dialog = open(6633, "CUserFilterDlg");
    effects[2].choose(dialog);
    click(dialog, "apply");
    const auto after = bytes();
    for (std::size_t channel = 0; channel < 3; ++channel) {
        std::vector<std::uint8_t> plane;
        for (std::size_t i = channel; i < before.size(); i += 3)
            plane.push_back(before[i]);
        CKestImage reference(width, height, plane.data());
        long kernel[] = {-3, -2, -1, 0, 1, 2, 3, 4, 5};
        reference.Filter(kernel, 3, 7, -20, 0);
        for (std::size_t i = 0; i < plane.size(); ++i)
            ASSERT_EQ(after[3 * i + channel], reference.GetPixel(int(i) % width, int(i) / width));
    }
}

TEST_F(EffectDlg, ScriptsHoldTheValuesInTheOrderOfTheCall)
{
    showPicture(false);
    for (const Effect& effect : effects) {
        SCOPED_TRACE(effect.dialog);
        QDialog* const dialog = open(effect.command, effect.dialog);
        effect.choose(dialog);
        click(dialog, "scriptToClipboard");
        EXPECT_EQ(clipboard(), std::string("#include \"../LIB2010/ImageViewCtrl/Array.h\"\n"
                                           "#include \"../LIB2010/ImageViewCtrl/VisionImage.h\"\n"
                                           "#include \"../LIB2010/ImageViewCtrl/ImageViewWnd.h\"\n"
                                           "\n"
                                           "int nImageWidth=64;\n"
                                           "int nImageHeight=47;\n"
                                           "CVisionImage image(nImageWidth, nImageHeight, pImagePtr);\n"
                                           "\n") +
                                   effect.call);
        click(dialog, "close");
    }
}

TEST_F(EffectDlg, BoundsStayInOrder)
{
    showPicture(false);
    QDialog* const dialog = open(6604, "CDoubleThresholdDlg");
    auto *const upper = of(dialog, "upper"), *const lower = of(dialog, "lower");
    upper->setValue(120);
    lower->setValue(140);
    EXPECT_EQ(upper->value(), 140);
    upper->setValue(60);
    EXPECT_EQ(lower->value(), 60);
}

TEST_F(EffectDlg, TheCentreIsThePicturesUntilAnotherIsChosen)
{
    showPicture(false);
    QDialog* const dialog = open(6610, "CRotateDlg");
    auto *const x = of(dialog, "centerX"), *const y = of(dialog, "centerY");
    EXPECT_EQ(std::pair(x->value(), y->value()), std::pair(width / 2, height / 2));
    Q_EMIT view->pixelClicked(3, 4);
    EXPECT_EQ(std::pair(x->value(), y->value()), std::pair(width / 2, height / 2)); // not asked for
    click(dialog, "pickCenter");
    Q_EMIT view->pixelClicked(3, 4);
    Q_EMIT view->pixelClicked(5, 6);
    EXPECT_EQ(std::pair(x->value(), y->value()), std::pair(3, 4));
    window.SendCommand(6626); // blur: the same picture's centre stays
    settle();
    EXPECT_EQ(std::pair(x->value(), y->value()), std::pair(3, 4));
    CKestImage other(30, 20);
    show(other);
    EXPECT_EQ(std::pair(x->value(), y->value()), std::pair(15, 10));
    x->setValue(7);
    click(dialog, "pictureCenter");
    EXPECT_EQ(x->value(), 15);
}

TEST_F(EffectDlg, APresetIsWhatTheOperationOfItsNameDoes)
{
    const struct
    {
        const char* name;
        void (CKestImage::*operation)();
    } named[] = {{"Blur", &CKestImage::Blur},          {"Soften", &CKestImage::Soften},
                 {"Sharpen", &CKestImage::Sharpen},    {"Gassian 3x3", &CKestImage::Gassian3x3},
                 {"Emboss", &CKestImage::Emboss},      {"Edge", &CKestImage::Edge},
                 {"Laplacian", &CKestImage::Laplacian}};
    for (const auto& entry : named) {
        SCOPED_TRACE(entry.name);
        showPicture(false);
        window.SetTrackerMode(0);
        QDialog* const dialog = open(6633, "CUserFilterDlg");
        auto* const preset = of<QComboBox>(dialog, "preset");
        preset->setCurrentText(QLatin1String(entry.name));
        Q_EMIT preset->activated(preset->currentIndex());
        of(dialog, "kernel3")->stepUp(); // another kernel: no name
        EXPECT_EQ(preset->currentIndex(), 0);
        of(dialog, "kernel3")->stepDown();
        EXPECT_EQ(preset->currentText(), QLatin1String(entry.name));
        click(dialog, "apply");
        CKestImage expected(gray);
        (expected.*entry.operation)();
        const auto view = std::as_const(expected).view();
        EXPECT_EQ(bytes(), std::vector<std::uint8_t>(view.pixels, view.pixels + expected.GetImageLen()));
    }
}

} // namespace
