#include "view/Language.h"

#include "tests/app/ViewerFixture.h"

#include <QMenu>
#include <QMenuBar>

using namespace testing_support;

namespace {

class LanguageTest : public ViewerFixture
{
protected:
    ~LanguageTest() override
    {
        viewer->setLanguage("ko");
        viewer->setTheme("light");
    }
    /// Texts with Korean letters among all that the window shows or would show.
    QStringList koreanTexts()
    {
        QStringList found;
        const auto look = [&](const QString& text) {
            if (std::any_of(text.begin(), text.end(),
                            [](QChar letter) { return letter.script() == QChar::Script_Hangul; }))
                found << text;
        };
        for (const QAction* const entry : viewer->findChildren<QAction*>())
            look(entry->text());
        for (const QWidget* const widget : viewer->findChildren<QWidget*>()) {
            look(widget->toolTip());
            look(widget->accessibleName());
            look(widget->property("text").toString());
        }
        found.removeAll("한국어"); // languages are named in their own
        found.removeAll("&Language (언어)");
        return found;
    }
};

TEST_F(LanguageTest, EveryTextOfTheOpenWindowChanges)
{
    viewer->openFiles({saved(colors(50, 40), "a.png")});
    EXPECT_GT(koreanTexts().size(), 30);
    action("language_en")->trigger();
    QApplication::processEvents();
    EXPECT_TRUE(action("language_en")->isChecked());
    EXPECT_STREQ(CKestLanguage::Get(), "en");
    EXPECT_EQ(koreanTexts().join(" | ").toStdString(), "");
    EXPECT_EQ(action("rotateLeft")->text(), "Turn 90° &Left");
    action("language_ko")->trigger();
    QApplication::processEvents();
    EXPECT_EQ(action("rotateLeft")->text(), "왼쪽으로 90도 돌리기(&L)");
    EXPECT_GT(koreanTexts().size(), 30);
}

TEST_F(LanguageTest, NoLetterStandsForTwoEntriesOfAMenu)
{
    for (const char* language : {"ko", "en"}) {
        viewer->setLanguage(language);
        QApplication::processEvents();
        QList<QWidget*> menus{viewer->menuBar()};
        for (QMenu* const menu : viewer->findChildren<QMenu*>())
            menus << menu;
        for (const QWidget* const menu : menus) {
            QMap<QKeySequence, QString> owners;
            for (const QAction* const entry : menu->actions()) {
                const QKeySequence letter = QKeySequence::mnemonic(entry->text());
                if (letter.isEmpty())
                    continue;
                EXPECT_FALSE(owners.contains(letter)) << language << ": " << entry->text().toStdString()
                                                      << ", " << owners[letter].toStdString();
                owners[letter] = entry->text();
            }
        }
    }
}

TEST_F(LanguageTest, AnUnknownLanguageChangesNothing)
{
    for (const char* name : {"", "fr", "EN", static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(CKestLanguage::Set(name));
        EXPECT_STREQ(CKestLanguage::Get(), "ko");
    }
    EXPECT_TRUE(CKestLanguage::Set("en"));
    EXPECT_TRUE(CKestLanguage::Set("en"));
    EXPECT_STREQ(CKestLanguage::Get(), "en");
    EXPECT_TRUE(CKestLanguage::Set("ko"));
    EXPECT_STREQ(CKestLanguage::Get(), "ko");
}

TEST_F(LanguageTest, ThemesChangeTheColorsOfTheOpenWindow)
{
    const auto brightness = [this] {
        QApplication::processEvents();
        return qGray(viewer->grab().toImage().pixel(630, 5));
    };
    action("theme_dark")->trigger();
    EXPECT_LT(brightness(), 80);
    action("theme_light")->trigger();
    EXPECT_GT(brightness(), 200);
    action("theme_system")->trigger();
    EXPECT_TRUE(action("theme_system")->isChecked());
    EXPECT_FALSE(action("theme_light")->isChecked());
}

} // namespace
