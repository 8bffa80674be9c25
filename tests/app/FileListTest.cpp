#include "tests/app/ViewerFixture.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QStatusBar>

using namespace testing_support;

namespace {

class FileListTest : public ViewerFixture
{
protected:
    QString place() { return viewer->statusBar()->findChild<QLabel*>("page")->text(); }
    bool drop(const QMimeData& data)
    {
        QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, {});
        enter.ignore();
        QApplication::sendEvent(viewer.get(), &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent event({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(viewer.get(), &event);
        return true;
    }
    QMenu& recent()
    {
        auto* const menu = viewer->findChild<QMenu*>("menu_recent");
        Q_EMIT menu->aboutToShow();
        return *menu;
    }
    QStringList recentNames()
    {
        QStringList names;
        for (const QAction* const entry : recent().actions())
            if (entry->objectName() == "recentFile")
                names << entry->text().section('/', -1).section('\\', -1);
        return names;
    }
};

TEST_F(FileListTest, DroppedFilesAreOpenedAndPagedThrough)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(saved(colors(10, 8), "하나.png")),
                  QUrl::fromLocalFile(saved(colors(20, 8), "둘.png")),
                  QUrl::fromLocalFile(written({}, "broken.png")),
                  QUrl::fromLocalFile(saved(colors(30, 8), "셋.bmp"))});
    EXPECT_TRUE(drop(data));
    EXPECT_EQ(window().GetWidth(), 10);
    EXPECT_EQ(place(), "1 / 4");
    press(Qt::Key_PageDown);
    EXPECT_EQ(window().GetWidth(), 20);
    EXPECT_TRUE(reports.isEmpty());
    press(Qt::Key_PageDown);
    EXPECT_EQ(window().GetWidth(), 30) << "what cannot be read is passed over";
    EXPECT_EQ(reports.size(), 1);
    EXPECT_EQ(place(), "3 / 3");
    press(Qt::Key_PageDown);
    EXPECT_EQ(window().GetWidth(), 10);
    press(Qt::Key_PageUp);
    EXPECT_EQ(window().GetWidth(), 30);
    EXPECT_TRUE(viewer->windowTitle().startsWith("셋.bmp"));

    QMimeData words;
    words.setText("no file");
    EXPECT_FALSE(drop(words));
}

TEST_F(FileListTest, OnlyTheLastPictureStaysWhenTheOthersCannotBeRead)
{
    QStringList files;
    for (int i = 0; i < 3; ++i)
        files << saved(colors(10 + i, 8), QString("%1.png").arg(i));
    ASSERT_TRUE(viewer->openFiles(files));
    QFile::remove(files[1]);
    QFile::remove(files[2]);
    press(Qt::Key_PageUp);
    EXPECT_EQ(window().GetWidth(), 10);
    EXPECT_EQ(reports.size(), 1) << "one message for both";
    EXPECT_TRUE(reports[0].contains("1.png") && reports[0].contains("2.png"));
    EXPECT_FALSE(action("next")->isEnabled());
}

TEST_F(FileListTest, OfAFolderThePicturesAreOpenedByName)
{
    QDir(folder.path()).mkdir("폴더");
    for (const char* name : {"b.png", "a.bmp", "c.JPG"})
        ASSERT_TRUE(colors(name[0] - 'a' + 5, 8).save(folder.path() + "/폴더/" + name));
    QFile note(folder.path() + "/폴더/a.txt");
    ASSERT_TRUE(note.open(QIODevice::WriteOnly));
    EXPECT_TRUE(viewer->openFiles({folder.path() + "/폴더"}));
    EXPECT_EQ(place(), "1 / 3");
    EXPECT_EQ(window().GetWidth(), 5);
    press(Qt::Key_PageUp);
    EXPECT_EQ(window().GetWidth(), 7);
}

TEST_F(FileListTest, RecentFilesAndTheWindowAreRememberedOverARestart)
{
    for (int i = 0; i < 12; ++i)
        ASSERT_TRUE(viewer->openFiles({saved(colors(10 + i, 8), QString("%1.png").arg(i))}));
    ASSERT_TRUE(viewer->openFiles({path("5.png")}));
    viewer->resize(700, 500);
    action("toolBar")->trigger();
    viewer->setLanguage("en");
    viewer->close();

    start();
    EXPECT_EQ(window().GetView()->y(), 1) << "without the strip of buttons";
    EXPECT_EQ(viewer->findChild<QMenu*>("menu_file")->title(), "&File");
    EXPECT_EQ(recentNames(), QStringList({"5.png", "11.png", "10.png", "9.png", "8.png", "7.png", "6.png",
                                          "4.png", "3.png", "2.png"}));
    recent().actions().at(1)->trigger();
    EXPECT_EQ(window().GetWidth(), 21);

    QFile::remove(path("10.png"));
    recent().actions().at(2)->trigger();
    EXPECT_EQ(reports.size(), 1);
    EXPECT_EQ(window().GetWidth(), 21);
    EXPECT_FALSE(recentNames().contains("10.png")) << "a file that is gone leaves the list";
    action("clearRecent")->trigger();
    EXPECT_TRUE(Preferences::read().recent.isEmpty());
    viewer->setLanguage("ko");
}

TEST_F(FileListTest, TheDesktopsLanguageHoldsUntilTheOperatorChoosesOne)
{
    QSettings().remove("language");
    start();
    viewer->close();
    EXPECT_FALSE(QSettings().contains("language")) << "nothing was chosen";
    for (const char* language : {"en", "ko"}) {
        start();
        action(QString("language_") + language)->trigger();
        viewer->close();
        EXPECT_EQ(Preferences::read().language, language);
    }
}

TEST_F(FileListTest, SettingsThatMakeNoSenseCountAsNone)
{
    QSettings settings;
    settings.setValue("language", "klingon");
    settings.setValue("theme", 17);
    settings.setValue("geometry", "not a geometry");
    settings.setValue("recent", QStringList{"", "/a.png"});
    settings.sync();
    const Preferences read = Preferences::read();
    EXPECT_EQ(read.language, Preferences::first().language);
    EXPECT_FALSE(read.languageChosen);
    EXPECT_EQ(read.theme, "system");
    EXPECT_EQ(read.recent, QStringList{"/a.png"});
    start();
    EXPECT_GT(viewer->width(), 100);
}

} // namespace
