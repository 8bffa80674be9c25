#include "tests/support/Random.h"
#include "tests/support/SourceFiles.h"
#include "tests/support/ToolFixture.h"
#include "tools/LatestJob.h"

#include <QFileDialog>
#include <QPushButton>
#include <QSlider>
#include <QTemporaryDir>

namespace {

using namespace testing_support;

/// What may come under a dialog that is open.
struct Scene
{
    int width, height, bits; ///< no bits: no picture
    CRect area;              ///< none when empty
};
const Scene scenes[] = {{0, 0, 0, {}},
                        {1, 1, 8, {}},
                        {1, 1, 24, {0, 0, 0, 0}},
                        {61, 47, 8, {5, 6, 40, 30}},
                        {61, 47, 24, {5, 6, 40, 30}},
                        {3, 90, 8, {500, 500, 600, 600}},
                        {90, 2, 24, {-50, -50, 40, 0}},
                        {61, 47, 8, {-2147483647 - 1, -2147483647 - 1, 2147483647, 2147483647}},
                        {40, 40, 16, {}}, // held, but no picture to measure
                        {0, 0, 0, {1, 1, 5, 5}},
                        {64, 64, 8, {63, 63, 63, 63}}};

class EveryTool : public ToolFixture
{
protected:
    void show(const Scene& scene)
    {
        bytes = randomBytes(std::size_t((scene.width * scene.bits + 31) / 32 * 4) * std::size_t(scene.height),
                            unsigned(scene.width + scene.bits));
        window.SetImagePtr(scene.width, scene.height, scene.bits ? scene.bits : 8,
                           scene.bits ? bytes.data() : nullptr);
        window.ZoomFitTo();
        const CRect& a = scene.area;
        window.SetTrackerMode(a.left || a.top || a.right || a.bottom ? 1 : 0);
        window.SetTrackerPosition(a);
        finish();
    }
    void finish()
    {
        settle();
        for (ormalux::LatestJob* const job : window.findChildren<ormalux::LatestJob*>())
            EXPECT_TRUE(waitFor([job] { return !job->isRunning(); }));
        settle();
    }
    /// A source in the list of a matching dialog.
    void addSource(QDialog* dialog, const QString& path)
    {
        if (!dialog->findChild<QPushButton*>("addSource"))
            return;
        click(dialog, "addSource");
        auto* const files = dialog->findChild<QFileDialog*>("openSource");
        ASSERT_TRUE(files);
        Q_EMIT files->fileSelected(path);
        delete files;
        settle();
    }
    QString source()
    {
        const QString path = folder.filePath("a.mcs");
        EXPECT_TRUE(writeBytes(path, sourceBytes(0, 2, 2, QByteArray("\0\xff\xff\0", 4))));
        return path;
    }
    bool unchanged() const
    {
        const unsigned char* const now = const_cast<CKestWnd&>(window).GetImagePtr();
        return bytes.empty() ? !now : now && std::equal(bytes.begin(), bytes.end(), now);
    }

    QTemporaryDir folder;
    std::vector<std::uint8_t> bytes;
};

} // namespace

TEST_F(EveryTool, LeavesThePictureAloneWhateverComesUnderIt)
{
    for (const auto& [command, name] : everyTool) {
        SCOPED_TRACE(name);
        QDialog* const dialog = open(command, name);
        ASSERT_TRUE(dialog);
        addSource(dialog, source());
        for (const Scene& scene : scenes) {
            show(scene);
            for (QSlider* const slider : dialog->findChildren<QSlider*>()) {
                slider->setValue(slider->maximum());
                slider->setValue(slider->minimum());
            }
            finish();
            QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->viewport()->rect().center());
            const bool usable = scene.bits == 8 || scene.bits == 24;
            const std::string sizes = "int nImageWidth=" + std::to_string(usable ? scene.width : 0) +
                                      ";\nint nImageHeight=" + std::to_string(usable ? scene.height : 0) +
                                      ";\nCVisionImage image(";
            for (const char* const button : {"scriptToClipboard", "programToClipboard"}) {
                click(dialog, button);
                const bool script = button[0] == 's';
                EXPECT_EQ(clipboard().find(sizes) != std::string::npos, script) << clipboard();
                EXPECT_EQ(clipboard().find('%') == std::string::npos, script) << clipboard();
            }
            EXPECT_TRUE(unchanged()) << scene.width << " " << scene.bits;
        }
        QTest::keyClick(dialog, Qt::Key_Escape);
        settle();
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(view->GetOverlays().GetCount(), 0);
        EXPECT_TRUE(unchanged());
    }
}

TEST_F(EveryTool, TheWindowMayGoWithAllOfThemOpenAndAtWork)
{
    const QString path = source();
    auto other = std::make_unique<CKestWnd>();
    other->resize(300, 300);
    other->show();
    const auto noise = randomBytes(400 * 300, 9);
    std::vector<std::uint8_t> linked(noise.begin(), noise.end());
    other->SetImagePtrLink(400, 300, 8, linked.data());
    for (const auto& [command, name] : everyTool) {
        ASSERT_TRUE(other->GetView()->OpenTool(command));
        addSource(other->findChild<QDialog*>(name), path);
    }
    settle();
    other->SetImagePtr(400, 300, 8, noise.data());
    linked = {}; // the host's own again
    for (int i = 0; i < 3; ++i) {
        other->Invert();
        settle();
    }
    other->SendCommand(5500);
    other->SendCommand(3304);
    other.reset();
    finish();
    EXPECT_EQ(window.findChildren<QDialog*>().size(), 0);
}

TEST_F(EveryTool, TheScriptsOfTheMatchingDialogsAreTheirTextsToTheLetter)
{
    show(Scene{61, 47, 8, {5, 6, 40, 30}});
    const std::string opening = R"(#include "../LIB2010/ImageViewCtrl/Array.h"
#include "../LIB2010/ImageViewCtrl/VisionImage.h"
#include "../LIB2010/ImageViewCtrl/ImageViewWnd.h"

int nImageWidth=61;
int nImageHeight=47;
CVisionImage image(nImageWidth, nImageHeight, pImagePtr);
CMatchSrcArray arMatchSrc;
CMatchResultArray result;

)";
    const std::string ending = R"(

//result[0].key;
//result[0].left;
//result[0].top;
//result[0].right;
//result[0].bottom;
//result[0].pixel_count;
//result[0].black_yield;
//result[0].white_yield;
//float yield = (result[0].black_yield+result[0].white_yield)/2.0;
)";
    const QString path = source();
    const std::string line = "arMatchSrc.Add(\"" + path.toStdString() + "\");\n";
    const struct
    {
        int command;
        const char* name;
        std::string body;
    } scripts[] = {{6712, "CMatchDlg", line + R"(
int cnt = image.Match(5, 6, 40, 30, 77, arMatchSrc, result); // 검색된 결과의 갯수

result.SortLeft(); Or result.SortTop(); Or result.SortRight(); Or result.SortBottom(); Or result.SortYieldAverage();)"},
                   {6711, "COcrMatchDlg", line + line + R"(

int cnt = image.OcrMatch(5, 6, 40, 30, 77, 2, 100, 5, 100, arMatchSrc, result); // 검색된 결과의 갯수

result.SortLeft(); Or result.SortTop(); Or result.SortRight(); Or result.SortBottom();)"}};
    for (const auto& script : scripts) {
        QDialog* const dialog = open(script.command, script.name);
        addSource(dialog, path);
        addSource(dialog, path);
        control<QAbstractButton>(dialog, "autoThreshold")->setChecked(false);
        control<QSlider>(dialog, "thresholdSlider")->setValue(77);
        click(dialog, "scriptToClipboard");
        EXPECT_EQ(clipboard(), opening + script.body + ending);
    }
}
