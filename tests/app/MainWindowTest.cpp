#include "app/MainWindow.h"

#include "app/ActionTable.h"
#include "app/PictureFile.h"
#include "tests/app/ViewerFixture.h"

#include <QClipboard>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStatusBar>

using namespace testing_support;
using namespace ormalux::viewer;

namespace {

class MainWindowTest : public ViewerFixture
{
protected:
    void openColors() { ASSERT_TRUE(viewer->openFiles({saved(colors(60, 40), "colors.png")})); }
    QString field(const char* name) { return viewer->statusBar()->findChild<QLabel*>(name)->text(); }
    void type(QFileDialog& dialog, const QString& text)
    {
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText(text);
        QTest::keyClick(dialog.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
    }
};

TEST_F(MainWindowTest, ZoomAndViewKeysDoWhatTheMenusSay)
{
    openColors();
    const CKestView& view = *window().GetView();
    const float fit = view.GetZoom();
    press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_FLOAT_EQ(view.GetZoom(), fit + 0.5f);
    press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_FLOAT_EQ(view.GetZoom(), fit);
    press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(field("zoom"), "100 %");
    press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_FLOAT_EQ(view.GetZoom(), fit);

    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(view.IsOverlayVisible(), 0);
    EXPECT_FALSE(action("overlays")->isChecked());
    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(view.IsOverlayVisible(), 1);
    EXPECT_TRUE(action("overlays")->isChecked());
    window().AddLine(1, 1, 9, 9, 0, 1, RGB(255, 0, 0), "t");
    press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(window().GetView()->GetOverlays().GetCount(), 0);

    press(Qt::Key_F9);
    EXPECT_EQ(view.y(), 1);
    press(Qt::Key_F9);
    EXPECT_EQ(view.y(), 40);
    action("statusBar")->trigger();
    EXPECT_FALSE(viewer->statusBar()->isVisible());
}

TEST_F(MainWindowTest, RegionKeysSetConfirmAndCancel)
{
    openColors();
    EXPECT_FALSE(action("confirmRegion")->isEnabled());
    press(Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(window().IsTrackerMode(), 1);
    window().SetTrackerPosition({3, 4, 12, 9});
    EXPECT_EQ(field("region"), "ROI 3, 4 - 12, 9 (10 x 6)");
    QSignalSpy confirmed(window().GetView(), &CKestView::trackerConfirmed);
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(confirmed.count(), 1);
    EXPECT_TRUE(viewer->statusBar()->currentMessage().contains("3, 4 - 12, 9"));
    action("copyRegion")->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), "3,4,12,9");
    press(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(window().IsTrackerMode(), 0);
    EXPECT_EQ(field("region"), "");
}

TEST_F(MainWindowTest, CopyTakesTheWholePictureOrTheScreen)
{
    openColors();
    window().AddRectangle(10, 5, 30, 25, 0, 1, RGB(255, 0, 0), "t");
    const auto copied = [] {
        return QApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32);
    };
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied(), pictureWithOverlays(window()));
    press(Qt::Key_L, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied(), colors(60, 40).convertToFormat(QImage::Format_RGB32)) << "hidden overlays stay out";
    press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(copied().size(), window().GetView()->viewport()->size());
}

TEST_F(MainWindowTest, ProcessingChangesThePictureAndReloadBringsItBack)
{
    openColors();
    const QImage before = pictureOf(window());
    action("flipHorizontal")->trigger();
    EXPECT_EQ(pictureOf(window()), before.mirrored(true, false));
    action("flipVertical")->trigger();
    EXPECT_EQ(pictureOf(window()), before.mirrored(true, true));
    press(Qt::Key_F5);
    EXPECT_EQ(pictureOf(window()), before);
    action("rotate180")->trigger();
    EXPECT_EQ(pictureOf(window()), before.mirrored(true, true));
}

TEST_F(MainWindowTest, EveryCommandOfTheTableReachesTheWindow)
{
    openColors();
    QSignalSpy sent(&window(), &CKestWnd::commandSent);
    for (const ActionRow& row : Menus::actions()) {
        if (!row.command || row.needs == Needs::Region) // these ask for a file
            continue;
        sent.clear();
        action(row.name)->trigger();
        ASSERT_GE(sent.count(), 1) << row.name;
        EXPECT_EQ(sent.first().first().toInt(), row.command) << row.name;
        for (QWidget* const top : QApplication::topLevelWidgets())
            if (top != viewer.get() && top->isVisible())
                top->close();
    }
}

TEST_F(MainWindowTest, WithoutAPictureOnlyWhatNeedsNoneCanBeChosen)
{
    const QStringList needy{"save",  "copyPicture", "zoomIn", "region", "enterRegion",
                            "erode", "match",       "next",   "reload"};
    for (const QString& name : needy)
        EXPECT_FALSE(action(name)->isEnabled()) << qPrintable(name);
    for (const char* name : {"open", "toolBar", "about", "quit"})
        EXPECT_TRUE(action(name)->isEnabled()) << name;
    const auto expectButtonsAsEntries = [this] {
        for (const ActionRow& row : Menus::actions()) {
            const auto* const button =
                window().findChild<QWidget*>(QStringLiteral("command_%1").arg(row.command));
            EXPECT_TRUE(!button || button->isEnabled() == action(row.name)->isEnabled()) << row.name;
        }
    };
    expectButtonsAsEntries();
    openColors();
    for (const QString& name : needy)
        EXPECT_EQ(action(name)->isEnabled(), name != "next") << qPrintable(name);
    expectButtonsAsEntries();
}

TEST_F(MainWindowTest, NoKeyHasTwoMeaningsInEitherLanguage)
{
    QStringList keys;
    for (const QAction* const entry : viewer->findChildren<QAction*>())
        for (const QKeySequence& key : entry->shortcuts())
            keys << key.toString();
    EXPECT_EQ(keys.removeDuplicates(), 0) << qPrintable(keys.join(' '));

    const auto repeated = [](const QList<QAction*>& entries) {
        QStringList letters;
        for (const QAction* const entry : entries)
            if (const auto key = QKeySequence::mnemonic(entry->text()); !key.isEmpty())
                letters << key.toString();
        return letters.removeDuplicates();
    };
    for (const char* language : {"ko", "en"}) {
        viewer->setLanguage(language);
        EXPECT_EQ(repeated(viewer->menuBar()->actions()), 0) << language;
        for (const QMenu* const menu : viewer->findChildren<QMenu*>())
            EXPECT_EQ(repeated(menu->actions()), 0) << language << " " << qPrintable(menu->title());
    }
    viewer->setLanguage("ko");
}

TEST_F(MainWindowTest, TheStatusBarTellsThePixelUnderTheMouse)
{
    openColors();
    EXPECT_EQ(field("picture"), "60 x 40  24 bit");
    QWidget* const viewport = window().GetView()->viewport();
    window().Zoom100();
    QTest::mouseMove(viewport, {13, 6});
    EXPECT_EQ(field("pixel"), "X 13  Y 6   R 91  G 66  B 31");
    QImage gray(60, 40, QImage::Format_Grayscale8);
    for (int y = 0; y < 40; ++y)
        std::fill_n(gray.scanLine(y), 60, uchar(3 * y));
    ASSERT_TRUE(viewer->openFiles({saved(gray, "gray.png")}));
    window().Zoom100();
    QTest::mouseMove(viewport, {14, 7});
    EXPECT_EQ(field("pixel"), "X 14  Y 7   값 21");
}

TEST_F(MainWindowTest, TheRegionDialogShowsWhileEditedAndRestoresOnCancel)
{
    openColors();
    window().SetTrackerPosition({5, 6, 14, 15});
    const auto has = [this](CRect r) {
        const CRect now = window().GetTrackerRect();
        return now.left == r.left && now.top == r.top && now.right == r.right && now.bottom == r.bottom;
    };
    withModal<QDialog>([&](QDialog& dialog) {
        const auto box = [&](const char* name) { return dialog.findChild<QSpinBox*>(name); };
        EXPECT_EQ(box("regionWidth")->value(), 10);
        box("left")->setValue(2);
        EXPECT_TRUE(has({2, 6, 14, 15}));
        box("regionWidth")->setValue(60);
        EXPECT_TRUE(has({0, 6, 59, 15})) << "it slides to where it fits";
        box("bottom")->setValue(1000);
        EXPECT_TRUE(has({0, 6, 59, 39}));
        dialog.reject();
    });
    action("enterRegion")->trigger();
    EXPECT_TRUE(has({5, 6, 14, 15}));
    EXPECT_EQ(window().IsTrackerMode(), 0);
    withModal<QDialog>([](QDialog& dialog) {
        dialog.findChild<QSpinBox*>("top")->setValue(9);
        dialog.accept();
    });
    action("enterRegion")->trigger();
    EXPECT_TRUE(has({5, 9, 14, 15}));
    EXPECT_EQ(window().IsTrackerMode(), 1);
    window().SetTrackerPosition({7, 8, 7, 8});
    withModal<QDialog>([](QDialog& dialog) { dialog.accept(); });
    action("enterRegion")->trigger();
    EXPECT_TRUE(has({7, 8, 7, 8})) << "a single pixel is a region";
}

TEST_F(MainWindowTest, SavingAsksWhereAndWritesWhatTheEntrySays)
{
    openColors();
    window().AddRectangle(10, 5, 30, 25, 0, 1, RGB(255, 0, 0), "t");
    const auto saveAs = [&](const char* name, const QString& file) {
        withModal<QFileDialog>([&](QFileDialog& dialog) { type(dialog, path(file)); });
        action(name)->trigger();
        return QImage(path(file)).convertToFormat(QImage::Format_RGB32);
    };
    EXPECT_EQ(saveAs("save", "plain.bmp"), colors(60, 40).convertToFormat(QImage::Format_RGB32));
    EXPECT_EQ(saveAs("saveWithOverlays", "whole.png"), pictureWithOverlays(window()));
    EXPECT_EQ(saveAs("saveAsSeen", "seen.png").size(), window().GetView()->viewport()->size());
    EXPECT_TRUE(reports.isEmpty());
}

TEST_F(MainWindowTest, TheWindowsOwnButtonsOpenAndSaveAsTheMenusDo)
{
    const QString a = saved(colors(11, 8), "a.png"), b = saved(colors(12, 8), "b.tif");
    const auto click = [this](int command) {
        auto* const button = window().findChild<QWidget*>(QStringLiteral("command_%1").arg(command));
        EXPECT_FALSE(button->toolTip().contains("BMP")) << qPrintable(button->toolTip());
        QTest::mouseClick(button, Qt::LeftButton);
    };
    withModal<QFileDialog>([&](QFileDialog& dialog) { type(dialog, '"' + a + "\" \"" + b + '"'); });
    click(5500);
    EXPECT_EQ(field("page"), "1 / 2");
    withModal<QFileDialog>([&](QFileDialog& dialog) { type(dialog, path("out.png")); });
    click(5501);
    EXPECT_EQ(QImage(path("out.png")).size(), QSize(11, 8));
    viewer->setLanguage("en");
    QApplication::processEvents();
    EXPECT_EQ(window().findChild<QWidget*>("command_5500")->toolTip(), "Open Pictures");
    viewer->setLanguage("ko");
}

TEST_F(MainWindowTest, CtrlWithTheArrowsPagesWhileThePictureHasTheFocus)
{
    viewer->openFiles({saved(colors(10, 8), "a.png"), saved(colors(20, 8), "b.png")});
    for (const int region : {0, 1}) {
        window().SetTrackerMode(region);
        window().SetTrackerPosition({2, 2, 5, 5});
        QTest::keyClick(window().GetView(), Qt::Key_Right, Qt::ControlModifier);
        EXPECT_EQ(window().GetWidth(), 20);
        QTest::keyClick(window().GetView(), Qt::Key_Left, Qt::ControlModifier);
        EXPECT_EQ(window().GetWidth(), 10);
        EXPECT_TRUE(window().GetTrackerRect() == CRect(2, 2, 5, 5));
    }
    QTest::keyClick(window().GetView(), Qt::Key_Right);
    EXPECT_TRUE(window().GetTrackerRect() == CRect(3, 2, 6, 5)) << "plain arrows stay the region's";
}

TEST_F(MainWindowTest, OpenTakesSeveralFilesAndCancelTakesNone)
{
    openColors();
    const QString a = saved(colors(11, 8), "a.png"), b = saved(colors(12, 8), "b.png");
    withModal<QFileDialog>([&](QFileDialog& dialog) { type(dialog, '"' + a + "\" \"" + b + '"'); });
    press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(window().GetWidth(), 11);
    EXPECT_EQ(field("page"), "1 / 2");
    withModal<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(window().GetWidth(), 11);
    EXPECT_EQ(field("page"), "1 / 2");
}

} // namespace
