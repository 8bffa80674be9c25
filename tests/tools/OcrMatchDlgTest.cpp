#include "tests/support/SourceFiles.h"
#include "tests/support/ToolFixture.h"
#include "tools/RecipeFile.h"
#include "tools/ResultTable.h"
#include "view/ImageView.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTableWidget>
#include <QTemporaryDir>

namespace {

using namespace testing_support;

constexpr int level = 128;

/// Two lines of letters of 12 x 15 made of strokes: "TLU" over "LT".
class OcrMatchDlg : public ToolFixture
{
protected:
    OcrMatchDlg() : image(150, 90)
    {
        drawBox(image, 0, 0, 150, 90, 220);
        letter('T', 60, 10);
        letter('L', 90, 12);
        letter('U', 120, 9);
        letter('L', 20, 50);
        letter('T', 50, 48);
        for (const auto& [key, part] : {std::pair{'T', RECT{60, 10, 71, 24}},
                                        {'L', RECT{90, 12, 101, 26}},
                                        {'U', RECT{120, 9, 131, 23}}}) {
            files << folder.filePath(QString(QChar(key)) + ".ocs");
            EXPECT_TRUE(writeBytes(files.back(), sourceBytes(image, part, level, key)));
        }
        show(image);
    }
    void letter(char key, int x, int y)
    {
        if (key == 'T')
            drawBox(image, x, y, 12, 3, 40);
        else
            drawBox(image, x, y + 12, 12, 3, 40);
        if (key == 'U')
            drawBox(image, x + 9, y, 3, 15, 40);
        drawBox(image, key == 'T' ? x + 4 : x, y, 3, 15, 40);
    }
    QDialog* openWith(const QStringList& sources)
    {
        QDialog* const dialog = open(6711, "COcrMatchDlg");
        control<QCheckBox>(dialog, "autoThreshold")->setChecked(false);
        control<QSlider>(dialog, "thresholdSlider")->setValue(level);
        if (sources.isEmpty())
            return dialog;
        click(dialog, "addSource");
        auto* const asked = dialog->findChild<QFileDialog*>("openSource");
        EXPECT_EQ(asked->windowTitle(), "OCR Match Source");
        EXPECT_EQ(asked->nameFilters(), QStringList("Ocr Match Source Files (*.ocs) (*.ocs)"));
        if (sources.size() == 1)
            Q_EMIT asked->fileSelected(sources.front());
        Q_EMIT asked->filesSelected(sources);
        delete asked;
        settle();
        return dialog;
    }
    /// What was read, once the search has ended.
    QString text(QDialog* dialog)
    {
        EXPECT_TRUE(waitFor([&] { return !control<QWidget>(dialog, "progress")->isVisible(); }));
        settle();
        return control<QPlainTextEdit>(dialog, "text")->toPlainText();
    }
    static QStringList column(QDialog* dialog, int number)
    {
        const auto* const model = control<ormalux::ResultTable>(dialog, "results")->model();
        QStringList cells;
        for (int row = 0; row < model->rowCount(); ++row)
            cells << model->index(row, number).data().toString();
        return cells;
    }

    QTemporaryDir folder;
    QStringList files;
    CKestImage image;
};

TEST_F(OcrMatchDlg, ReadsTheLinesFromTopToBottomAndLeftToRight)
{
    QDialog* const dialog = openWith(files);
    EXPECT_EQ(dialog->windowTitle(), "OCR Match");
    EXPECT_EQ(text(dialog), "TLU\nLT");
    EXPECT_EQ(column(dialog, 1).join(""), "TLULT");
    EXPECT_EQ(column(dialog, 2), QStringList({"60", "90", "120", "20", "50"}));
    EXPECT_EQ(column(dialog, 7), QStringList(5, "1.000000"));
    auto* const results = control<ormalux::ResultTable>(dialog, "results");
    results->sortByColumn(2, Qt::AscendingOrder);
    EXPECT_EQ(column(dialog, 1).join(""), "LTTLU");
    // A click on a character selects its row however the list is sorted.
    Q_EMIT view->pixelClicked(91, 20);
    EXPECT_EQ(results->selectedResult(), 1);
    QTest::keyClick(results, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QString::fromStdString(clipboard()).split('\n').value(1).left(14), "2\tL\t90\t12\t101\t");
}

TEST_F(OcrMatchDlg, SizesOutsideTheirRangesAreNotRead)
{
    QDialog* const dialog = openWith(files);
    drawBox(image, 5, 70, 4, 4, 40); // a speck
    show(image);
    EXPECT_EQ(text(dialog), "TLU\nLT");
    control<QSpinBox>(dialog, "minHeight")->setValue(4);
    EXPECT_EQ(text(dialog).size(), 8);
    control<QSpinBox>(dialog, "maxWidth")->setValue(11);
    EXPECT_EQ(text(dialog).size(), 1);
    control<QSpinBox>(dialog, "minWidth")->setValue(12);
    EXPECT_EQ(text(dialog), "");
    EXPECT_FALSE(control<QLabel>(dialog, "message")->text().isEmpty());
    EXPECT_EQ(column(dialog, 1), QStringList());
}

TEST_F(OcrMatchDlg, TheScriptAddsEveryListedSourceInItsOrder)
{
    setArea(50, 5, 149, 40);
    QDialog* const dialog = openWith({files[2], files[0], files[1]});
    control<QSpinBox>(dialog, "maxHeight")->setValue(44);
    click(dialog, "scriptToClipboard");
    QString lines;
    for (const int i : {2, 0, 1})
        lines += "arMatchSrc.Add(\"" + files[i] + "\");\n";
    EXPECT_EQ(QString::fromStdString(clipboard()).section("result;\n\n", 1).section("\n\nresult.", 0, 0),
              lines +
                  "\n\nint cnt = image.OcrMatch(50, 5, 149, 40, 128, 2, 100, 5, 44, arMatchSrc, result); // "
                  "검색된 결과의 갯수");
    EXPECT_EQ(text(dialog), "TLU"); // the other line lies outside the region
}

TEST_F(OcrMatchDlg, ABrokenSourceIsNamedAndTheOthersAreReadWith)
{
    QDialog* const dialog = openWith(files);
    ASSERT_EQ(text(dialog), "TLU\nLT");
    ASSERT_TRUE(QFile::remove(files[1]));
    click(dialog, "run");
    EXPECT_TRUE(control<QLabel>(dialog, "message")->text().contains(files[1]));
    EXPECT_EQ(text(dialog).size(), 6);
    EXPECT_FALSE(text(dialog).contains('L'));
    EXPECT_EQ(control<QTableWidget>(dialog, "sources")->item(1, 2)->text(), "-");
}

TEST_F(OcrMatchDlg, NothingIsReadWithoutSourcesAndNothingStaysDrawnAfterwards)
{
    const QImage before = seen();
    QDialog* const dialog = openWith({});
    EXPECT_EQ(text(dialog), "");
    EXPECT_EQ(seen(), before);
    openWith(files);
    EXPECT_EQ(text(dialog), "TLU\nLT");
    EXPECT_NE(seen(), before);
    auto* const list = control<QTableWidget>(dialog, "sources");
    list->selectAll();
    QTest::keyClick(list, Qt::Key_Delete);
    settle();
    EXPECT_EQ(text(dialog), "");
    EXPECT_EQ(seen(), before);
}

TEST_F(OcrMatchDlg, ACharacterSourceTakesOneAsciiCharacter)
{
    setArea(60, 10, 71, 24);
    window.SendCommand(3303);
    auto* const dialog = view->findChild<QDialog*>("COcrSrcDlg");
    ASSERT_TRUE(dialog);
    settle();
    auto* const key = control<QLineEdit>(dialog, "key");
    QTest::keyClick(key, Qt::Key_Return); // an empty key is none
    EXPECT_TRUE(dialog->isVisible());
    key->insert("가"); // has more than one byte
    QTest::keyClicks(key, "Txyz");
    EXPECT_EQ(key->text(), "Txy");
    QTest::keyClick(key, Qt::Key_Return);
    settle();
    auto* const asked = view->findChild<QFileDialog*>("sourceFile");
    ASSERT_TRUE(asked);
    Q_EMIT asked->fileSelected(folder.filePath("new.ocs"));
    QFile file(folder.filePath("new.ocs"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.read(1), "T");
}

TEST_F(OcrMatchDlg, ARecipeNamesSourcesBesideItFromItself)
{
    const QString path = folder.filePath("recipe.json");
    const QJsonObject step{{"step", "ocr"}, {"source", QJsonArray{files[0], "/elsewhere/a.ocs"}}};
    ASSERT_EQ(ormalux::appendToRecipe(path, {step}), "");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonArray steps = QJsonDocument::fromJson(file.readAll()).object()["steps"].toArray();
    EXPECT_EQ(steps[0].toObject()["source"].toArray(), QJsonArray({"T.ocs", "/elsewhere/a.ocs"}));
}

} // namespace
