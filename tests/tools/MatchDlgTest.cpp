#include "tests/support/Random.h"
#include "tests/support/SourceFiles.h"
#include "tests/support/ToolFixture.h"
#include "tools/PatternEditDlg.h"
#include "tools/ResultTable.h"
#include "view/ImageView.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTableWidget>
#include <QTemporaryDir>

namespace {

using namespace testing_support;

/// A light ground with a dark L of 20 x 16 at (30, 40), levels 60 and 85, and the
/// same without its foot at (100, 70).
class MatchDlg : public ToolFixture
{
protected:
    MatchDlg() : image(160, 120)
    {
        drawBox(image, 0, 0, 160, 120, 200);
        drawBox(image, 30, 40, 8, 16, 60);
        drawBox(image, 38, 48, 12, 8, 85);
        drawBox(image, 100, 70, 8, 16, 60);
        drawBox(image, 108, 80, 12, 6, 85);
        whole = folder.filePath("L 자.mcs");
        write(whole, {30, 40, 49, 55});
        show(image);
    }
    void write(const QString& path, const RECT& part, int key = 0)
    {
        ASSERT_TRUE(writeBytes(path, sourceBytes(image, part, 150, key)));
    }
    QDialog* openMatch() { return open(6712, "CMatchDlg"); }
    void addSource(QDialog* dialog, const QString& path)
    {
        click(dialog, "addSource");
        auto* const files = dialog->findChild<QFileDialog*>("openSource");
        ASSERT_TRUE(files);
        EXPECT_EQ(files->windowTitle(), "Pattern Match Source");
        EXPECT_EQ(files->nameFilters(), QStringList("Pattern Match Source Files (*.mcs) (*.mcs)"));
        Q_EMIT files->fileSelected(path);
        files->close();
        delete files;
        settle();
    }
    void setLevel(QDialog* dialog, int level)
    {
        control<QCheckBox>(dialog, "autoThreshold")->setChecked(false);
        control<QSlider>(dialog, "thresholdSlider")->setValue(level);
        settle();
    }
    /// The cells of the only row once the search has ended; empty when it found nothing.
    QStringList found(QDialog* dialog)
    {
        auto* const results = control<ormalux::ResultTable>(dialog, "results");
        QStringList cells;
        EXPECT_TRUE(waitFor([&] { return !control<QWidget>(dialog, "progress")->isVisible(); }));
        settle();
        EXPECT_LE(results->model()->rowCount(), 1);
        for (int i = 0; i < results->model()->columnCount() && results->model()->rowCount() > 0; ++i)
            cells << results->model()->index(0, i).data().toString();
        return cells;
    }
    /// A pixel of the picture as it is on the screen.
    QRgb at(const QImage& screen, int x, int y) const
    {
        const CPoint p = view->ImageToDevice(x, y);
        const qreal ratio = screen.devicePixelRatio();
        return screen.pixel(int((p.x + 0.5) * ratio), int((p.y + 0.5) * ratio)) & 0xffffff;
    }
    QString message(QDialog* dialog) { return control<QLabel>(dialog, "message")->text(); }

    QTemporaryDir folder;
    CKestImage image;
    QString whole;
};

TEST_F(MatchDlg, ShowsTheBestResultInCoordinatesOfTheAreaAndDrawsItInThePicture)
{
    setArea(20, 30, 159, 119);
    QDialog* const dialog = openMatch();
    EXPECT_EQ(dialog->windowTitle(), "Match");
    EXPECT_TRUE(found(dialog).isEmpty());
    addSource(dialog, whole);
    setLevel(dialog, 150);
    EXPECT_EQ(found(dialog), QStringList({"2", "10", "10", "29", "25", "19", "15", "1.000000"}));
    // The rectangle lies at the area's offset, not where the numbers alone would put it.
    const QImage screen = seen();
    const QRgb box = 0xffe600;
    EXPECT_EQ(at(screen, 40, 40), box);
    EXPECT_EQ(at(screen, 30, 50), box);
    EXPECT_NE(at(screen, 20, 10), box);
    const CPoint corner = view->ImageToDevice(30, 40); // where the text in colour 255 begins
    int red = 0;
    for (int y = corner.y; y < corner.y + 14; ++y)
        for (int x = corner.x; x < corner.x + 50; ++x) {
            const QColor pixel = screen.pixelColor(QPoint(x, y) * screen.devicePixelRatio());
            red += pixel.red() > 150 && pixel.green() < 60 && pixel.blue() < 60;
        }
    EXPECT_GT(red, 20);

    QTest::keyClick(dialog, Qt::Key_Escape);
    settle();
    EXPECT_NE(at(seen(), 40, 40), box);
}

TEST_F(MatchDlg, WithoutASourceTheHostsShapesStayUntilTheLastOneIsRemoved)
{
    for (const auto& [command, name, layer] :
         {std::tuple(6712, "CMatchDlg", "PATTERN_MATCH"), std::tuple(6711, "COcrMatchDlg", "OCR_MATCH")}) {
        const auto shapes = [&, of = layer] { return view->GetOverlays().GetCount(of); };
        window.AddRectangle(5, 5, 9, 9, 0, 1, RGB(1, 2, 3), layer);
        QDialog* const dialog = open(command, name);
        click(dialog, "run");
        setLevel(dialog, 150);
        setArea(0, 0, 99, 99);
        EXPECT_EQ(shapes(), 1) << name;
    }
    QDialog* const dialog = openMatch();
    addSource(dialog, whole);
    ASSERT_FALSE(found(dialog).isEmpty());
    window.AddRectangle(5, 5, 9, 9, 0, 1, RGB(1, 2, 3), "PATTERN_MATCH");
    control<QTableWidget>(dialog, "sources")->selectRow(0);
    click(dialog, "removeSource");
    EXPECT_TRUE(found(dialog).isEmpty());
    EXPECT_EQ(view->GetOverlays().GetCount("PATTERN_MATCH"), 0);
}

TEST_F(MatchDlg, OnlyTheFirstRowIsLookedForAndRowsCanBeMoved)
{
    const QString other = folder.filePath("other.mcs");
    write(other, {100, 70, 119, 85});
    QDialog* const dialog = openMatch();
    addSource(dialog, whole);
    addSource(dialog, other);
    setLevel(dialog, 150);
    auto* const list = control<QTableWidget>(dialog, "sources");
    ASSERT_EQ(list->rowCount(), 2);
    EXPECT_EQ(list->item(1, 5)->text(), other);
    EXPECT_EQ(list->item(0, 2)->text() + " " + list->item(0, 3)->text() + " " + list->item(0, 4)->text(),
              "20 16 150");
    EXPECT_EQ(found(dialog).value(1), "30");
    click(dialog, "sourceUp");
    EXPECT_EQ(found(dialog).value(1), "100");
    QTest::keyClick(list, Qt::Key_Down, Qt::AltModifier);
    settle();
    EXPECT_EQ(list->item(0, 5)->text(), whole);
    EXPECT_EQ(found(dialog).value(1), "30");

    click(dialog, "scriptToClipboard");
    EXPECT_EQ(QString::fromStdString(clipboard()).count("arMatchSrc.Add"), 1);
    list->selectRow(0);
    click(dialog, "removeSource");
    EXPECT_EQ(found(dialog).value(1), "100");
    QTest::keyClick(list, Qt::Key_Delete);
    settle();
    EXPECT_EQ(list->rowCount(), 0);
    EXPECT_TRUE(found(dialog).isEmpty());
}

TEST_F(MatchDlg, ARangeRunsFromTheLevelLessBelowToTheLevelAndAbove)
{
    QDialog* const dialog = openMatch();
    addSource(dialog, whole);
    setLevel(dialog, 100);
    control<QCheckBox>(dialog, "thresholdRange")->setChecked(true);
    QTest::keyClick(control<QSpinBox>(dialog, "below"), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(control<QSpinBox>(dialog, "below"), "10");
    QTest::keyClick(control<QSpinBox>(dialog, "above"), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(control<QSpinBox>(dialog, "above"), "20");
    settle();
    CMatchSrcArray sources;
    sources.Add(whole.toUtf8().constData());
    CMatchResultArray expected;
    image.MatchThresholdRange(0, 0, 159, 119, 90, 120, sources, expected);
    ASSERT_EQ(expected.GetCount(), 31);
    EXPECT_EQ(found(dialog).value(0), "30");
    EXPECT_EQ(found(dialog).value(7), "1.000000");
    control<QSpinBox>(dialog, "above")->setValue(0);
    control<QSpinBox>(dialog, "below")->setValue(12);
    EXPECT_EQ(found(dialog).value(0), "12");
}

TEST_F(MatchDlg, TheAutomaticLevelIsTheAreasAndStandsInTheScript)
{
    auto noise = randomBytes(160 * 120, 3);
    image.SetImagePtr(160, 120, noise.data());
    show(image);
    setArea(20, 30, 90, 90);
    QDialog* const dialog = openMatch();
    const long level = image.GetAutoThreshold(20, 30, 90, 90, 'A', 1);
    ASSERT_GT(level, 0);
    EXPECT_EQ(control<QSpinBox>(dialog, "threshold")->value(), level);
    EXPECT_FALSE(control<QSpinBox>(dialog, "threshold")->isEnabled());
    click(dialog, "scriptToClipboard"); // before anything was run
    const std::string script = clipboard();
    EXPECT_NE(script.find("int nImageWidth=160;\nint nImageHeight=120;\n"), std::string::npos);
    EXPECT_NE(script.find("CMatchResultArray result;\n\n\nint cnt = image.Match(20, 30, 90, 90, " +
                          std::to_string(level) + ", arMatchSrc, result);"),
              std::string::npos);
    addSource(dialog, whole);
    click(dialog, "scriptToClipboard");
    EXPECT_NE(clipboard().find("result;\n\narMatchSrc.Add(\"" + whole.toStdString() + "\");\n\nint cnt"),
              std::string::npos);
}

TEST_F(MatchDlg, FilesThatAreNoSourcesAreRefusedByName)
{
    const QString tooShort = folder.filePath("short.mcs");
    const QString foreign = folder.filePath("foreign.mcs");
    const QByteArray good = sourceBytes(image, {30, 40, 49, 55}, 150, 0);
    ASSERT_TRUE(writeBytes(tooShort, good.left(good.size() - 1)));
    ASSERT_TRUE(writeBytes(foreign, "a text that somebody wrote, longer than a header"));
    QDialog* const dialog = openMatch();
    for (const QString& path : {tooShort, foreign, folder.filePath("none.mcs"), folder.path()}) {
        addSource(dialog, path);
        EXPECT_TRUE(message(dialog).contains(path)) << message(dialog).toStdString();
        EXPECT_EQ(control<QTableWidget>(dialog, "sources")->rowCount(), 0);
    }
    addSource(dialog, whole);
    setLevel(dialog, 150);
    ASSERT_FALSE(found(dialog).isEmpty());
    ASSERT_TRUE(writeBytes(whole, good.left(30))); // broken while it is listed
    click(dialog, "run");
    EXPECT_TRUE(found(dialog).isEmpty());
    EXPECT_TRUE(message(dialog).contains(whole));
    ASSERT_TRUE(writeBytes(whole, good)); // and mended
    click(dialog, "run");
    EXPECT_FALSE(found(dialog).isEmpty());
}

TEST_F(MatchDlg, FollowsThePictureWhateverItsRowOrderAndDepth)
{
    QDialog* const dialog = openMatch();
    addSource(dialog, whole);
    setLevel(dialog, 150);
    const QStringList expected = found(dialog);
    CKestImage moved(160, 120);
    drawBox(moved, 0, 0, 160, 120, 200);
    drawBox(moved, 50, 20, 8, 16, 60);
    drawBox(moved, 58, 28, 12, 8, 85);
    show(moved);
    EXPECT_EQ(found(dialog).mid(0, 4), QStringList({"1", "50", "20", "69"}));

    ASSERT_EQ(image.SaveImage(folder.filePath("a.bmp").toUtf8().constData()), 1);
    for (const bool decoded : {false, true}) {
        window.SetImagePtr(0, 0, 8, nullptr);
        settle();
        EXPECT_TRUE(found(dialog).isEmpty());
        const std::string file = folder.filePath("a.bmp").toStdString();
        ASSERT_EQ(decoded ? view->LoadImageGdip(file.c_str()) : view->LoadImage(file.c_str()), 1);
        settle();
        EXPECT_EQ(found(dialog), expected) << decoded;
    }
}

TEST_F(MatchDlg, ARegionIsSavedAsAPatternWithTheChosenPolarity)
{
    setArea(30, 40, 49, 55);
    for (const bool white : {false, true}) {
        window.SendCommand(3304);
        settle();
        const QPointer<QDialog> dialog = view->findChild<QDialog*>("CMatchSrcDlg");
        ASSERT_TRUE(dialog);
        EXPECT_EQ(dialog->windowTitle(), "Match 소스");
        auto* const key = control<QLineEdit>(dialog, "key");
        EXPECT_TRUE(key->isReadOnly());
        EXPECT_EQ(key->text(), "0");
        if (white)
            QTest::mouseClick(control<QRadioButton>(dialog, "whiteObject"), Qt::LeftButton, {}, QPoint(8, 8));
        EXPECT_EQ(key->text(), white ? "255" : "0");
        control<QCheckBox>(dialog, "autoThreshold")->setChecked(false);
        control<QSlider>(dialog, "thresholdSlider")->setValue(99);
        dialog->accept();
        settle();
        auto* const files = view->findChild<QFileDialog*>("sourceFile");
        ASSERT_TRUE(files);
        EXPECT_EQ(files->nameFilters(),
                  QStringList({"Match Source Files (*.mcs) (*.mcs)", "All Files (*.*) (*.mcs)"}));
        const QString path = folder.filePath(white ? "white.mcs" : "black.mcs");
        Q_EMIT files->fileSelected(path);
        delete files;
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), sourceBytes(image, {30, 40, 49, 55}, 99, white ? 255 : 0));
        auto* box = view->findChild<QMessageBox*>("sourceMessage");
        ASSERT_TRUE(box);
        EXPECT_EQ(box->text(), "저장 되었습니다.");
        delete box;
        delete dialog;
    }
    window.SendCommand(3304);
    view->findChild<QDialog*>("CMatchSrcDlg")->accept();
    Q_EMIT view->findChild<QFileDialog*>("sourceFile")->fileSelected("/no/such/folder/a.mcs");
    EXPECT_TRUE(view->findChild<QMessageBox*>("sourceMessage")->text().contains("/no/such/folder/a.mcs"));
}

TEST_F(MatchDlg, ACancelledSearchShowsNothingAndTheNextOneItsOwn)
{
    QDialog* const dialog = openMatch();
    addSource(dialog, whole);
    setLevel(dialog, 150);
    const QStringList expected = found(dialog);
    const auto noise = randomBytes(std::size_t(1700) * 1300, 4);
    CKestImage large(1700, 1300, const_cast<unsigned char*>(noise.data()));
    for (const char* const amount : {"below", "above"})
        control<QSpinBox>(dialog, amount)->setValue(255);
    show(large);
    control<QCheckBox>(dialog, "thresholdRange")->setChecked(true);
    ASSERT_TRUE(waitFor([&] { return control<QWidget>(dialog, "cancel")->isVisible(); }));
    click(dialog, "cancel");
    EXPECT_FALSE(control<QWidget>(dialog, "progress")->isVisible());
    EXPECT_EQ(message(dialog), "취소했습니다.");
    EXPECT_TRUE(found(dialog).isEmpty());

    control<QCheckBox>(dialog, "thresholdRange")
        ->setChecked(false); // waits for the search that goes on unseen
    show(image);
    auto* const results = control<ormalux::ResultTable>(dialog, "results");
    ASSERT_TRUE(waitFor([&] { return results->model()->rowCount() == 1; }));
    EXPECT_EQ(found(dialog), expected);
}

TEST_F(MatchDlg, ASourceCorrectedInTheEditorIsLookedForAtOnce)
{
    QDialog* const dialog = openMatch();
    addSource(dialog, whole);
    setLevel(dialog, 150);
    ASSERT_EQ(found(dialog).value(1), "30");
    click(dialog, "editPattern");
    auto* const editor = dialog->findChild<CPatternEditDlg*>();
    ASSERT_TRUE(editor);
    EXPECT_EQ(editor->path(), whole);
    write(whole, {100, 70, 119, 85}); // what the editor saves
    Q_EMIT editor->saved(whole);
    settle();
    EXPECT_EQ(found(dialog).value(1), "100");
    delete editor;
}

} // namespace
