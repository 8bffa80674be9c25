#include "tests/support/GaugeFixture.h"
#include "tests/support/SourceFiles.h"
#include "tools/LatestJob.h"

#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QTemporaryDir>

namespace {

using testing_support::GaugeFixture;
using testing_support::randomBytes;

class BlobDlg : public GaugeFixture
{
protected:
    QDialog* openBlobs()
    {
        QDialog* const dialog = open(6601, "CBlobDlg");
        finish();
        return dialog;
    }
    /// Until what the operator last asked for is on the screen.
    void finish()
    {
        settle();
        for (int i = 0; i < 400; ++i) {
            const auto* const job = window.findChild<ormalux::LatestJob*>();
            if (job && !job->isRunning())
                break;
            QTest::qWait(5);
        }
        settle();
    }
    static void setSizes(QDialog* dialog, int minW, int maxW, int minH, int maxH)
    {
        control<QSpinBox>(dialog, "minWidth")->setValue(minW);
        control<QSpinBox>(dialog, "maxWidth")->setValue(maxW);
        control<QSpinBox>(dialog, "minHeight")->setValue(minH);
        control<QSpinBox>(dialog, "maxHeight")->setValue(maxH);
    }
    static std::string csvOf(const CBlobRectArray& blobs)
    {
        std::string text = "number,left,top,right,bottom,width,height,pixels\n";
        int number = 0;
        for (const _stBlobRect& b : blobs.records()) {
            for (const int value : {++number, int(b.left), int(b.top), int(b.right), int(b.bottom),
                                    int(b.right - b.left + 1), int(b.bottom - b.top + 1), int(b.pixel_count)})
                text += std::to_string(value) + ",";
            text.back() = '\n';
        }
        return text;
    }
    /// 2 x 2 blobs, one in every cell of 4 x 4.
    static CKestImage dots(int columns, int rows)
    {
        CKestImage image(columns * 4, rows * 4);
        for (int y = 0; y < rows * 4; ++y)
            for (int x = 0; x < columns * 4; ++x)
                image.SetPixel(x, y, x % 4 > 1 && y % 4 > 1 ? 200 : 0);
        return image;
    }
};

TEST_F(BlobDlg, ListIsWhatTheLibraryReturns)
{
    const CKestImage image = hills(97, 83, 8);
    struct Case
    {
        CRect area;
        int level; // -1: automatic
        bool white;
        int minW, maxW, minH, maxH, sort;
    };
    void (CBlobRectArray::*const sorts[])() = {nullptr,
                                               &CBlobRectArray::SortLeft,
                                               &CBlobRectArray::SortTop,
                                               &CBlobRectArray::SortRight,
                                               &CBlobRectArray::SortBottom,
                                               &CBlobRectArray::SortWidth,
                                               &CBlobRectArray::SortHeight,
                                               &CBlobRectArray::SortPixelCount};
    std::vector<Case> cases{{{0, 0, 96, 82}, -1, true, 2, 999999, 2, 999999, 0},
                            {{13, 9, 70, 61}, -1, false, 2, 999999, 2, 999999, 0},
                            {{13, 9, 70, 61}, 100, true, 1, 999999, 1, 999999, 7},
                            {{13, 9, 70, 61}, 0, true, 2, 90, 2, 90, 0},
                            {{0, 0, 96, 82}, 255, false, 2, 999999, 2, 999999, 0},
                            {{40, 40, 40, 40}, 30, true, 1, 1, 1, 1, 0}};
    for (int sort = 1; sort < 8; ++sort)
        cases.push_back({{5, 5, 90, 75}, 90 + sort * 4, sort % 2 == 0, 2, 30, 3, 40, sort});
    for (const Source source : sources) {
        showFrom(source, image);
        QDialog* const dialog = openBlobs();
        for (const Case& c : cases) {
            setArea(c.area.left, c.area.top, c.area.right, c.area.bottom);
            setLevel(dialog, std::max(0, c.level));
            control<QCheckBox>(dialog, "autoThreshold")->setChecked(c.level < 0);
            choose(dialog, c.white ? "objectWhite" : "objectBlack");
            setSizes(dialog, c.minW, c.maxW, c.minH, c.maxH);
            control<QComboBox>(dialog, "sort")->setCurrentIndex(c.sort);
            finish();
            const int level = c.level >= 0 ? c.level
                                           : int(image.GetAutoThreshold(c.area.left, c.area.top, c.area.right,
                                                                        c.area.bottom, 'A', 1));
            CBlobRectArray blobs;
            image.GetBlobList(c.area.left, c.area.top, c.area.right + 1, c.area.bottom + 1, level,
                              c.white ? 255 : 0, c.minW, c.maxW, c.minH, c.maxH, blobs);
            if (sorts[c.sort])
                (blobs.*sorts[c.sort])();
            ASSERT_EQ(csv(dialog), csvOf(blobs)) << source << " " << c.level << " " << c.sort;
            ASSERT_EQ(control<QSpinBox>(dialog, "threshold")->value(), level);
            long long pixels = 0;
            for (const _stBlobRect& blob : blobs.records())
                pixels += blob.pixel_count;
            ASSERT_EQ(control<QLabel>(dialog, "summary")->text().toStdString(),
                      "Threshold: " + std::to_string(level) + "   Count: " +
                          std::to_string(blobs.GetCount()) + "   Pixels: " + std::to_string(pixels));
        }
        delete dialog;
    }
}

TEST_F(BlobDlg, BoxesEncloseTheBlobsAndAreLinkedWithTheRows)
{
    const CKestImage image = dots(6, 5);
    show(image);
    QDialog* const dialog = openBlobs();
    setLevel(dialog, 100);
    finish();
    CDrawObjArray boxes;
    for (int i = 0; i < 30; ++i)
        boxes.AddRectangle(i % 6 * 4 + 2, i / 6 * 4 + 2, i % 6 * 4 + 4, i / 6 * 4 + 4, 0, 1, RGB(255, 64, 64),
                           "");
    const auto addNumber = [](CDrawObjArray& shapes, int i, COLORREF color) {
        shapes.AddLabel({i % 6 * 4 + 2, i / 6 * 4 + 2, i % 6 * 4 + 4, i / 6 * 4 + 4}, LABEL_ABOVE,
                        std::to_string(i + 1).c_str(), color, "");
    };
    CDrawObjArray expected(boxes);
    for (int i = 0; i < 30; ++i)
        addNumber(expected, i, RGB(255, 64, 64));
    expectDrawn(expected);
    clickPixel(3 * 4 + 3, 2 * 4 + 2);
    EXPECT_EQ(table(dialog)->selectedResult(), 15);
    expected = boxes;
    addNumber(expected, 15, RGB(0, 200, 255));
    for (int i = 0; i < 30; ++i)
        if (i != 15)
            addNumber(expected, i, RGB(255, 64, 64));
    expected.AddRectangle(14, 10, 16, 12, 0, 2, RGB(0, 200, 255), "");
    expectDrawn(expected);
    table(dialog)->sortByColumn(1, Qt::DescendingOrder); // Left
    table(dialog)->selectRow(0);
    settle();
    EXPECT_EQ(table(dialog)->selectedResult(), 5);
    QTest::keyClick(dialog, Qt::Key_Escape);
    settle();
    EXPECT_EQ(view->GetOverlays().GetCount(), 0);
}

TEST_F(BlobDlg, TheChosenBlobIsSavedAsASourceAtTheLevelThatFoundIt)
{
    CKestImage image = dots(6, 5);
    image.SetPixel(11, 6, 90); // a corner of the chosen blob that is dark at 100 and bright at its own level
    show(image);
    setArea(5, 2, 20, 18);
    QDialog* const dialog = openBlobs();
    setLevel(dialog, 100);
    finish();
    EXPECT_FALSE(dialog->findChild<QFileDialog*>("sourceFile"));
    clickPixel(10, 7);
    const int chosen = table(dialog)->selectedResult();
    ASSERT_GE(chosen, 0);
    const CRect box = table(dialog)->results().rows[std::size_t(chosen)].box;
    ASSERT_TRUE(box.left == 10 && box.top == 6 && box.right == 11 && box.bottom == 7);
    QTemporaryDir folder;
    const struct
    {
        const char *item, *dialog, *suffix;
        int key;
    } kinds[] = {{"saveMatchSource", "CMatchSrcDlg", "MCS", 0}, {"saveOcrSource", "COcrSrcDlg", "OCS", '7'}};
    for (const auto& kind : kinds) {
        Q_EMIT table(dialog)->customContextMenuRequested({5, 5});
        QMenu* const menu = table(dialog)->findChild<QMenu*>();
        QAction* const item = table(dialog)->findChild<QAction*>(kind.item);
        ASSERT_TRUE(menu && item && menu->actions().contains(item) && item->isEnabled());
        menu->close();
        item->trigger();
        settle();
        const QPointer<QDialog> key = dialog->findChild<QDialog*>(kind.dialog);
        ASSERT_TRUE(key);
        if (kind.key)
            control<QLineEdit>(key, "key")->setText("7x");
        key->accept();
        settle();
        auto* const files = dialog->findChild<QFileDialog*>("sourceFile");
        ASSERT_TRUE(files);
        EXPECT_EQ(files->defaultSuffix(), kind.suffix);
        const QString path = folder.filePath(kind.suffix);
        Q_EMIT files->fileSelected(path);
        delete files;
        delete key;
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), testing_support::sourceBytes(image, box, 100, kind.key));
    }
}

TEST_F(BlobDlg, ManyBlobsAreAllListedAndTheBoxesLimited)
{
    const CKestImage image = dots(150, 100);
    show(image);
    QDialog* const dialog = openBlobs();
    setLevel(dialog, 100);
    finish();
    CBlobRectArray blobs;
    ASSERT_EQ(image.GetBlobList(100, 255, 2, 9, 2, 9, blobs), 15000);
    EXPECT_EQ(csv(dialog), csvOf(blobs));
    EXPECT_EQ(view->GetOverlays().GetCount("BLOB"), 10000 + 10000);
    EXPECT_EQ(message(dialog), "처음 10000개만 영상에 표시합니다.");
    table(dialog)->selectRow(14999);
    settle();
    EXPECT_EQ(view->GetOverlays().GetCount("BLOB"), 10001 + 10001);
}

TEST_F(BlobDlg, TooManyPixelsForAListAreCounted)
{
    CKestImage image(1500, 1400);
    for (int y = 0; y < 1400; ++y)
        for (int x = 0; x < 1500; ++x)
            image.SetPixel(x, y, (x + y) % 2 ? 200 : 0);
    show(image);
    QDialog* const dialog = openBlobs();
    setLevel(dialog, 100);
    setSizes(dialog, 1, 9, 1, 9);
    finish();
    EXPECT_EQ(csv(dialog), csvOf({}));
    EXPECT_EQ(control<QLabel>(dialog, "summary")->text().toStdString(),
              "Threshold: 100   Count: 1050000   Pixels: 1050000");
    EXPECT_NE(message(dialog), "");
}

TEST_F(BlobDlg, WhatIsFoundBelongsToThePictureShown)
{
    show(dots(300, 300));
    QDialog* const dialog = open(6601, "CBlobDlg");
    show(dots(3, 2)); // while the search is on its way
    setLevel(dialog, 100);
    finish();
    EXPECT_EQ(table(dialog)->results().rows.size(), 6u);
    setArea(0, 0, 3, 7);
    finish();
    EXPECT_EQ(table(dialog)->results().rows.size(), 2u);
    show(dots(300, 300));
    QTest::keyClick(dialog, Qt::Key_Escape); // and again
    finish();
    QTest::qWait(100);
    EXPECT_EQ(view->GetOverlays().GetCount(), 0);
    dialog->show();
    window.SetImagePtr(0, 0, 8, nullptr);
    finish();
    EXPECT_EQ(table(dialog)->results().rows.size(), 0u);
    EXPECT_EQ(message(dialog), "영상이 없습니다.");
}

TEST_F(BlobDlg, SaysWhyNothingIsFound)
{
    show(dots(3, 2));
    QDialog* const dialog = openBlobs();
    setLevel(dialog, 210);
    finish();
    EXPECT_EQ(message(dialog), "찾은 것이 없습니다.");
    setSizes(dialog, 5, 4, 2, 9);
    finish();
    EXPECT_EQ(message(dialog), "최소 크기가 최대 크기보다 큽니다.");
    setArea(0, 0, 1, 1);
    control<QCheckBox>(dialog, "autoThreshold")->setChecked(true);
    finish();
    EXPECT_EQ(message(dialog), "영역에 경계가 없습니다.");
    EXPECT_EQ(csv(dialog), csvOf({}));
}

TEST_F(BlobDlg, ScriptGivesTheRegionAsTheCallTakesIt)
{
    show(dots(20, 20));
    setArea(8, 7, 70, 66);
    QDialog* const dialog = openBlobs();
    setSizes(dialog, 3, 40, 4, 50);
    click(dialog, "scriptToClipboard");
    const std::string opening = R"(#include "../LIB2010/ImageViewCtrl/Array.h"
#include "../LIB2010/ImageViewCtrl/VisionImage.h"
#include "../LIB2010/ImageViewCtrl/ImageViewWnd.h"

int nImageWidth=80;
int nImageHeight=80;
CVisionImage image(nImageWidth, nImageHeight, pImagePtr);
CBlobRectArray ar;

)";
    const std::string sorts = "//ar.SortLeft(); Or ar.SortTop(); Or ar.SortRight(); Or ar.SortBottom(); Or "
                              "ar.SortWidth(); Or ar.SortHeight(); Or ar.SortPixelCount();\n";
    const std::string closing = R"(
//ar[0].left;
//ar[0].top;
//ar[0].right;
//ar[0].bottom;
//ar[0].pixel_count;
)";
    EXPECT_EQ(clipboard(),
              opening +
                  "int threshold = image.GetAutoThreshold(8, 7, 70, 66, 'A', 1);\n"
                  "int cnt = image.GetBlobList(8, 7, 71, 67, threshold, 255, 3, 40, 4, 50, ar); // cnt = "
                  "ar.GetCount();\n\n" +
                  sorts + closing);
    setLevel(dialog, 77);
    choose(dialog, "objectBlack");
    control<QComboBox>(dialog, "sort")->setCurrentIndex(7);
    click(dialog, "scriptToClipboard");
    EXPECT_EQ(clipboard(),
              opening +
                  "int threshold = 77;\n"
                  "int cnt = image.GetBlobList(8, 7, 71, 67, threshold, 0, 3, 40, 4, 50, ar); // cnt = "
                  "ar.GetCount();\n\nar.SortPixelCount();\n" +
                  sorts + closing);
}

} // namespace
