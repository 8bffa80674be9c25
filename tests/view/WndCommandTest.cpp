#include "color/VisionImage24.h"
#include "tests/support/WndFixture.h"
#include "view/Language.h"

#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <set>

namespace {

class WndCommand : public testing_support::WndFixture
{
protected:
    template <class Dialog>
    Dialog* dialog(const char* name)
    {
        return window.findChild<Dialog*>(QString::fromLatin1(name));
    }
    /// The text of the message that stands open, which is closed; empty without one.
    QString message()
    {
        auto* const box = dialog<QMessageBox>("message");
        if (!box)
            return {};
        const QString text = box->text();
        box->accept();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return text;
    }
    QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }
    /// Chooses the file as a double click in the dialog does.
    void choose(QFileDialog& files, const QString& file)
    {
        files.setDirectory(QFileInfo(file).absolutePath());
        files.selectFile(QFileInfo(file).fileName());
        QMetaObject::invokeMethod(&files, "accept");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    const QTemporaryDir folder;
};

struct Step
{
    int command;
    const char* name;
    void (CKestImage::*gray)();
    void (CKestImage24::*color)();
};
const Step steps[] = {{6703, "HistoEqualize", &CKestImage::HistoEqualize, nullptr},
                      {6704, "HistoNormalize", &CKestImage::HistoNormalize, nullptr},
                      {6705, "HistoRoot", &CKestImage::HistoRoot, nullptr},
                      {6706, "HistoLog", &CKestImage::HistoLog, nullptr},
                      {6707, "HistoStretch", &CKestImage::HistoStretch, nullptr},
                      {6617, "Erode", &CKestImage::Erode, &CKestImage24::Erode},
                      {6618, "Dilate", &CKestImage::Dilate, &CKestImage24::Dilate},
                      {6619, "OpenBox", &CKestImage::OpenBox, &CKestImage24::OpenBox},
                      {6620, "CloseBox", &CKestImage::CloseBox, &CKestImage24::CloseBox},
                      {6625, "Sharpen", &CKestImage::Sharpen, &CKestImage24::Sharpen},
                      {6626, "Blur", &CKestImage::Blur, &CKestImage24::Blur},
                      {6627, "Soften", &CKestImage::Soften, &CKestImage24::Soften},
                      {6628, "Gassian5x5", &CKestImage::Gassian5x5, &CKestImage24::Gassian5x5},
                      {6629, "Gassian3x3", &CKestImage::Gassian3x3, &CKestImage24::Gassian3x3},
                      {6630, "Emboss", &CKestImage::Emboss, &CKestImage24::Emboss},
                      {6631, "Edge", &CKestImage::Edge, &CKestImage24::Edge},
                      {6632, "Laplacian", &CKestImage::Laplacian, &CKestImage24::Laplacian}};

} // namespace

TEST_F(WndCommand, OneStepItemsEditThePictureAndLeaveTheirProgramOnTheClipboard)
{
    for (const Step& step : steps) {
        showGray(37, 22);
        CKestImage expected(37, 22);
        expected.SetImagePtr(37, 22, pixels.data());
        (expected.*step.gray)();
        item(step.command)->trigger();
        EXPECT_EQ(seen(), bytesOf(expected)) << step.name;
        const std::string program = "#include \"../LIB2010/ImageViewCtrl/Array.h\"\n"
                                    "#include \"../LIB2010/ImageViewCtrl/VisionImage.h\"\n"
                                    "#include \"../LIB2010/ImageViewCtrl/ImageViewWnd.h\"\n"
                                    "\n"
                                    "int nImageWidth=37;\n"
                                    "int nImageHeight=22;\n"
                                    "CVisionImage image(nImageWidth, nImageHeight, pImagePtr);\n"
                                    "\n"
                                    "image." +
                                    std::string(step.name) + "();\n";
        EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), program);
    }
}

TEST_F(WndCommand, AHostGetsTheProgramWithoutAPicture)
{
    QGuiApplication::clipboard()->setText("untouched");
    for (const Step& step : steps) {
        EXPECT_TRUE(window.SendCommand(step.command));
        const QString program = QGuiApplication::clipboard()->text();
        EXPECT_TRUE(program.contains("int nImageWidth=0;\nint nImageHeight=0;\n")) << step.name;
        EXPECT_TRUE(program.endsWith(QStringLiteral("image.%1();\n").arg(step.name))) << step.name;
    }
    EXPECT_TRUE(message().isEmpty());
}

TEST_F(WndCommand, ColourPicturesRunWhatTheirImageHasAndRefuseTheRestAloud)
{
    for (const Step& step : steps) {
        showColor(40, 21); // rows of 120 bytes: padded and unpadded are one
        QGuiApplication::clipboard()->setText("untouched");
        std::vector<std::uint8_t> expected = pixels;
        if (step.color) {
            // The picture as seen starts with the last row of the buffer.
            std::vector<std::uint8_t> turned(pixels.size());
            for (std::size_t y = 0; y < 21; ++y)
                std::copy_n(pixels.begin() + std::ptrdiff_t((20 - y) * 120), 120,
                            turned.begin() + std::ptrdiff_t(y * 120));
            CKestImage24 image(40, 21, turned.data());
            (image.*step.color)();
            for (std::size_t y = 0; y < 21; ++y)
                std::copy_n(image.view().pixels + (20 - y) * 120, 120,
                            expected.begin() + std::ptrdiff_t(y * 120));
        }
        EXPECT_TRUE(window.SendCommand(step.command));
        const std::vector<std::uint8_t> result(window.GetImagePtr(), window.GetImagePtr() + pixels.size());
        EXPECT_EQ(result, expected) << step.name;
        EXPECT_EQ(QGuiApplication::clipboard()->text() == "untouched", !step.color) << step.name;
        EXPECT_EQ(message().isEmpty(), step.color != nullptr) << step.name;
    }
}

TEST_F(WndCommand, TurnsActOnThePictureAsSeenAndFitIt)
{
    using Source = std::function<QPoint(int x, int y, int w, int h)>;
    const std::pair<int, Source> turns[] = {
        {6607, [](int x, int y, int w, int) { return QPoint(w - 1 - x, y); }},
        {6608, [](int x, int y, int, int h) { return QPoint(x, h - 1 - y); }},
        {6609, [](int x, int y, int w, int h) { return QPoint(w - 1 - x, h - 1 - y); }}};
    for (const int width : {36, 37})
        for (const auto& [command, source] : turns) {
            showGray(width, 22);
            window.Zoom100();
            click(command);
            EXPECT_EQ(window.GetView()->GetZoom(), window.GetView()->GetFitZoom());
            const std::vector<unsigned char> result = seen();
            for (int y = 0; y < 22; ++y)
                for (int x = 0; x < width; ++x) {
                    const QPoint from = source(x, y, width, 22);
                    ASSERT_EQ(result[std::size_t(y * width + x)],
                              pixels[std::size_t(from.y() * width + from.x())]);
                }
        }
    for (const auto& [command, angle] : {std::pair(6605, -90.0), std::pair(6606, 90.0)}) {
        showGray(37, 22);
        CKestImage expected(37, 22);
        expected.SetImagePtr(37, 22, pixels.data());
        expected.Rotate(18, 11, angle, 0);
        click(command);
        EXPECT_EQ(seen(), bytesOf(expected));
    }
}

TEST_F(WndCommand, ZoomAndRegionButtonsDriveTheView)
{
    showGray(640, 480);
    click(5502);
    const float fit = 559.0f / 480 - 0.1f;
    EXPECT_FLOAT_EQ(window.GetView()->GetZoom(), fit);
    click(5503);
    EXPECT_FLOAT_EQ(window.GetView()->GetZoom(), fit + 0.5f);
    click(5504);
    EXPECT_FLOAT_EQ(window.GetView()->GetZoom(), fit);
    click(5505);
    EXPECT_EQ(window.GetView()->GetZoom(), 1.0f);

    EXPECT_FALSE(button(6600)->isChecked());
    click(6600);
    EXPECT_EQ(window.IsTrackerMode(), 1);
    EXPECT_TRUE(button(6600)->isChecked());
    click(6600); // stays on: the view's menu ends it
    EXPECT_TRUE(button(6600)->isChecked());
    EXPECT_TRUE(window.SendCommand(3301));
    EXPECT_FALSE(button(6600)->isChecked());
    window.SetTrackerMode(1); // by the host
    EXPECT_TRUE(button(6600)->isChecked());
}

TEST_F(WndCommand, KeysRunTheirButtonsUnlessTheHostTakesThem)
{
    showGray(640, 480);
    window.activateWindow();
    window.GetView()->setFocus();
    const auto key = [this](int code, Qt::KeyboardModifiers keys = Qt::ControlModifier) {
        QTest::keyClick(window.GetView(), Qt::Key(code), keys);
    };
    key(Qt::Key_0);
    const float fit = window.GetView()->GetFitZoom();
    key(Qt::Key_Plus, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_Equal);
    key(Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_FLOAT_EQ(window.GetView()->GetZoom(), fit + 1.5f);
    key(Qt::Key_Minus);
    EXPECT_FLOAT_EQ(window.GetView()->GetZoom(), fit + 1.0f);
    key(Qt::Key_1);
    EXPECT_EQ(window.GetView()->GetZoom(), 1.0f);
    key(Qt::Key_0, Qt::NoModifier);
    EXPECT_EQ(window.GetView()->GetZoom(), 1.0f);
    key(Qt::Key_R);
    EXPECT_EQ(window.IsTrackerMode(), 1);
    int taken = 0;
    QAction own;
    own.setShortcut(QKeySequence("Ctrl+0"));
    window.addAction(&own);
    QObject::connect(&own, &QAction::triggered, [&taken] { ++taken; });
    key(Qt::Key_0);
    EXPECT_EQ(taken, 1);
    EXPECT_EQ(window.GetView()->GetZoom(), 1.0f);
}

TEST_F(WndCommand, ButtonsThatNeedAPictureWaitForOne)
{
    for (const int command : {5501, 6605, 6609, 6500, 6501, 6502, 6603})
        EXPECT_FALSE(button(command)->isEnabled()) << command;
    for (const int command : {5500, 5502, 5503, 5504, 5505, 6600}) {
        EXPECT_TRUE(button(command)->isEnabled()) << command;
        if (command != 5500)
            click(command);
    }
    EXPECT_TRUE(window.SendCommand(6617)); // known, nothing to do
    EXPECT_EQ(window.GetImagePtr(), nullptr);
    showGray(8, 8);
    for (const int command : {5501, 6605, 6609, 6500, 6501, 6502, 6603})
        EXPECT_TRUE(button(command)->isEnabled()) << command;
    window.SetImagePtr(8, 8, 8, nullptr);
    EXPECT_FALSE(button(6605)->isEnabled());
}

TEST_F(WndCommand, AHostRunsCommandsItsOwnWayAndSwitchesThemOff)
{
    showGray(8, 8);
    std::vector<int> asked, sent;
    QObject::connect(&window, &CKestWnd::commandSent, [&sent](int command) { sent.push_back(command); });
    window.SetCommandHandler([&asked](int command) {
        asked.push_back(command);
        return command == 5500 || command == 6605;
    });
    const auto before = seen();
    click(5500);
    click(6605);
    EXPECT_FALSE(window.findChild<QDialog*>("openFile"));
    EXPECT_EQ(seen(), before);
    click(6609); // left to the window
    EXPECT_NE(seen(), before);
    EXPECT_EQ(asked, std::vector<int>({5500, 6605, 6609}));
    EXPECT_EQ(sent, asked);
    window.SetCommandHandler(nullptr);
    window.EnableCommand(6609, false);
    window.EnableCommand(5505, false);
    window.EnableCommand(6617, false);
    EXPECT_FALSE(button(6609)->isEnabled());
    EXPECT_FALSE(item(6617)->isEnabled());
    const float zoom = window.GetView()->GetZoom();
    QTest::keyClick(window.GetView(), Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(window.GetView()->GetZoom(), zoom) << "its key is off too";
    window.EnableCommand(6609, true);
    EXPECT_TRUE(button(6609)->isEnabled());
    const QString own = button(5500)->toolTip();
    window.SetCommandTip(5500, "Load");
    CKestLanguage::Set("en");
    EXPECT_EQ(button(5500)->toolTip(), "Load");
    CKestLanguage::Set("ko");
    window.SetCommandTip(5500, {});
    EXPECT_EQ(button(5500)->toolTip(), own);
}

TEST_F(WndCommand, EveryNumberOfTheTableIsKnownAndNoOther)
{
    showGray(16, 16);
    std::set<int> sent;
    QObject::connect(&window, &CKestWnd::commandSent, [&sent](int command) { sent.insert(command); });
    for (const int command : {5500, 5501, 5502, 5503, 5504, 5505, 6600, 6605, 6606, 6607, 6608, 6609, 6610,
                              6500, 6501, 6502, 6701, 6702, 6703, 6704, 6705, 6706, 6707, 6617, 6618, 6619,
                              6620, 6625, 6626, 6627, 6628, 6629, 6630, 6631, 6632, 6633, 6601, 6602, 6603,
                              6604, 6709, 6710, 6711, 6712, 3300, 3301, 3302, 3303, 3304}) {
        EXPECT_TRUE(window.SendCommand(command)) << command;
        EXPECT_TRUE(sent.contains(command)) << command;
        if (QWidget* const popup = QApplication::activePopupWidget())
            popup->close();
        while (QWidget* const modal = QApplication::activeModalWidget()) {
            modal->close();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
    for (const int command : {0, -1, 3299, 3305, 5499, 5506, 6506, 6611, 6616, 6624, 6634, 6700, 6708, 6713})
        EXPECT_FALSE(window.SendCommand(command)) << command;
    EXPECT_EQ(sent.size(), 49u);
}

TEST_F(WndCommand, TheOpenDialogLoadsBitmapsAndSaysWhyItDoesNotLoadOthers)
{
    showGray(20, 10);
    ASSERT_EQ(window.SaveImage(path("부품.bmp").toUtf8()), 1);
    ASSERT_TRUE(QImage(5, 5, QImage::Format_RGB32).save(path("a.png")));
    QFile broken(path("broken.bmp"));
    ASSERT_TRUE(QFile::copy(path("부품.bmp"), broken.fileName()) && broken.resize(1100));
    showGray(30, 30);

    QString opened;
    QObject::connect(&window, &CKestWnd::imageOpened, [&opened](const QString& file) { opened = file; });
    click(5500);
    auto* const files = dialog<QFileDialog>("openFile");
    ASSERT_TRUE(files);
    EXPECT_TRUE(files->isVisible());
    EXPECT_EQ(files->windowTitle(), "그림 파일 열기");
    EXPECT_EQ(files->defaultSuffix(), "BMP");
    EXPECT_TRUE(files->testOption(QFileDialog::HideNameFilterDetails));
    EXPECT_EQ(files->nameFilters(),
              QStringList({"Image Files (*.bmp, *.jpg, *.tif, *.png) (*.bmp *.jpg *.tif *.png)",
                           "All Files (*.*) (*.bmp *.jpg *.tif *.png)"}));
    window.SendCommand(5500); // not a second one
    EXPECT_EQ(window.findChildren<QFileDialog*>().size(), 1);
    choose(*files, path("부품.bmp"));
    EXPECT_EQ(opened, path("부품.bmp"));
    EXPECT_EQ(window.GetWidth(), 20);
    EXPECT_TRUE(message().isEmpty());

    for (const char* const file : {"a.png", "broken.bmp"}) {
        click(5500);
        choose(*dialog<QFileDialog>("openFile"), path(file));
        const QString text = message();
        EXPECT_TRUE(text.contains(file) && text.contains('.')) << text.toStdString();
        EXPECT_EQ(window.GetWidth(), 20);
        EXPECT_EQ(opened, path("부품.bmp"));
    }
    click(5500);
    dialog<QFileDialog>("openFile")->reject();
    EXPECT_EQ(window.GetWidth(), 20);
    EXPECT_EQ(window.LoadImageGdip(path("a.png").toUtf8()), 1);
    EXPECT_EQ(window.GetWidth(), 5);
}

TEST_F(WndCommand, TheSaveDialogWritesABitmapAndSaysWhenItCannot)
{
    showGray(20, 10);
    click(5501);
    auto* const files = dialog<QFileDialog>("saveFile");
    ASSERT_TRUE(files);
    EXPECT_EQ(files->windowTitle(), "그림 파일 저장");
    EXPECT_EQ(files->acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(files->defaultSuffix(), "BMP");
    EXPECT_EQ(files->nameFilters(), QStringList({"BMP Image Files (*.bmp) (*.bmp *.jpg *.tif *.png)",
                                                 "All Files (*.*) (*.bmp *.jpg *.tif *.png)"}));
    choose(*files, path("결과"));
    EXPECT_TRUE(message().isEmpty());
    const std::vector<unsigned char> before = seen();
    showGray(4, 4);
    ASSERT_EQ(window.LoadImage(path("결과.BMP").toUtf8()), 1);
    EXPECT_EQ(seen(), before);

    click(5501);
    Q_EMIT dialog<QFileDialog>("saveFile")->fileSelected("/no/such/folder/a.bmp");
    dialog<QFileDialog>("saveFile")->reject();
    EXPECT_TRUE(message().contains(QDir::toNativeSeparators("/no/such/folder/a.bmp")));
}
