#include "view/Language.h"

#include "tests/support/SourceFiles.h"
#include "tests/support/ToolFixture.h"
#include "tools/PatternEditDlg.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTemporaryDir>

#include <algorithm>
#include <cstring>
#include <map>

namespace {

using namespace testing_support;

std::string named(const QWidget* widget)
{
    const QString name =
        widget->objectName().isEmpty() ? widget->parentWidget()->objectName() + "/?" : widget->objectName();
    return name.toStdString() + "(" + widget->metaObject()->className() + ")";
}

/// An operator without a mouse, in either language.
class Keyboard : public ToolFixture, public testing::WithParamInterface<const char*>
{
protected:
    Keyboard() { CKestLanguage::Set(GetParam()); }
    ~Keyboard() override { CKestLanguage::Set("ko"); }

    void showBlocks(bool color)
    {
        QImage blocks(90, 60, QImage::Format_RGB888);
        for (int y = 0; y < 60; ++y)
            for (int x = 0; x < 90; ++x)
                blocks.setPixel(x, y, x / 15 % 2 && y / 12 % 2 ? qRgb(220, 200, 240) : qRgb(20, 40, 30));
        blocks = blocks.convertToFormat(color ? QImage::Format_BGR888 : QImage::Format_Grayscale8);
        std::vector<unsigned char> rows(std::size_t(blocks.sizeInBytes()));
        std::copy_n(blocks.constBits(), rows.size(), rows.begin());
        window.SetImagePtr(90, 60, color ? 24 : 8, rows.data());
        window.ZoomFitTo();
        settle();
    }
    static void activate(QWidget* dialog)
    {
        dialog->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
    }
    static QRect placeOf(const QWidget* widget)
    {
        return {widget->mapTo(widget->window(), QPoint()), widget->size()};
    }
    /// Where the Tab key leads, from where the dialog puts it until it comes round.
    static QList<QWidget*> walk(QWidget* dialog, Qt::Key key = Qt::Key_Tab)
    {
        QList<QWidget*> path;
        while (QWidget* const here = dialog->focusWidget()) {
            if (path.contains(here))
                break;
            path << here;
            QTest::keyClick(here, key);
        }
        return path;
    }
    /// All that the Tab key should come by. Of the buttons of a group the checked one stands for all.
    static QSet<QWidget*> reachable(QWidget* dialog)
    {
        QSet<QWidget*> all;
        for (QWidget* const widget : dialog->findChildren<QWidget*>()) {
            const auto* const radio = qobject_cast<QRadioButton*>(widget);
            if (widget->window() == dialog && widget->isVisible() && widget->isEnabled() &&
                (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy() &&
                (!radio || radio->isChecked()))
                all << widget;
        }
        return all;
    }
    /// Back to the left or up in a column that was already read.
    static bool stepsBack(const QRect& from, const QRect& to)
    {
        const bool sameRow = from.top() <= to.bottom() && to.top() <= from.bottom();
        return sameRow ? to.left() < from.left() : to.bottom() < from.top() && to.left() <= from.right();
    }
    /// From the first control through all of them as they are read, and the same way back.
    static void expectWalk(QDialog* dialog)
    {
        SCOPED_TRACE(named(dialog));
        activate(dialog);
        const QSet<QWidget*> all = reachable(dialog);
        QWidget* const first = *std::min_element(all.begin(), all.end(), [](QWidget* a, QWidget* b) {
            const QRect x = placeOf(a), y = placeOf(b);
            return x.bottom() < y.top() || (x.top() <= y.bottom() && x.left() < y.left());
        });
        EXPECT_EQ(named(dialog->focusWidget()), named(first));
        first->setFocus(Qt::TabFocusReason);
        const QList<QWidget*> path = walk(dialog);
        for (QWidget* const widget : all)
            EXPECT_TRUE(path.contains(widget)) << named(widget) << " is not reached";
        for (int i = 1; i < path.size(); ++i)
            EXPECT_FALSE(stepsBack(placeOf(path[i - 1]), placeOf(path[i])))
                << named(path[i - 1]) << " then " << named(path[i]);
        first->setFocus(Qt::TabFocusReason);
        QList<QWidget*> back = walk(dialog, Qt::Key_Backtab);
        std::reverse(back.begin() + 1, back.end());
        EXPECT_EQ(back, path);
    }
    static QStringList textsOf(QWidget* dialog)
    {
        QStringList texts{dialog->windowTitle()};
        for (QWidget* const widget : dialog->findChildren<QWidget*>()) {
            texts << widget->toolTip() << widget->accessibleName() << widget->property("text").toString()
                  << widget->property("title").toString();
            if (const auto* const box = qobject_cast<QComboBox*>(widget))
                for (int i = 0; i < box->count(); ++i)
                    texts << box->itemText(i);
            if (const auto* const header = qobject_cast<QHeaderView*>(widget))
                for (int i = 0; i < header->count(); ++i)
                    texts << header->model()->headerData(i, header->orientation()).toString();
        }
        return texts;
    }
    static bool isKorean(const QString& text)
    {
        return std::any_of(text.begin(), text.end(),
                           [](QChar letter) { return letter.script() == QChar::Script_Hangul; });
    }
    static QImage pictureOf(QWidget* dialog) { return dialog->grab().toImage(); }
};

TEST_P(Keyboard, TabWalksEveryDialogInReadingOrder)
{
    showBlocks(true);
    for (const auto& [command, name] : everyTool) {
        QDialog* const dialog = open(command, name);
        expectWalk(dialog);
        dialog->close();
    }
}

TEST_P(Keyboard, TabWalksTheDialogsOfSourceFilesInReadingOrder)
{
    showBlocks(false);
    setArea(10, 8, 50, 40);
    for (const auto& [command, name] : {std::pair(3303, "COcrSrcDlg"), std::pair(3304, "CMatchSrcDlg")}) {
        window.SendCommand(command);
        settle();
        auto* const dialog = window.findChild<QDialog*>(QLatin1String(name));
        ASSERT_TRUE(dialog && dialog->isVisible());
        expectWalk(dialog);
        dialog->reject();
        settle();
    }
    const QTemporaryDir folder;
    const QString path = folder.filePath("a.mcs");
    ASSERT_TRUE(writeBytes(path, sourceBytes(0, 2, 2, QByteArray("\0\xff\xff\0", 4))));
    CPatternEditDlg editor(path);
    editor.show();
    expectWalk(&editor);
}

TEST_P(Keyboard, TheControlWithTheFocusLooksDifferent)
{
    showBlocks(false);
    for (const auto& [command, name] : everyTool) {
        SCOPED_TRACE(name);
        QDialog* const dialog = open(command, name);
        activate(dialog);
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab); // from now on the keyboard leads
        for (int i = reachable(dialog).size(); i > 0; --i) {
            QWidget* const here = dialog->focusWidget();
            const QImage with = pictureOf(dialog);
            QTest::keyClick(here, Qt::Key_Tab);
            settle();
            const QImage without = pictureOf(dialog);
            const QRect place = placeOf(here) + QMargins(3, 3, 3, 3); // a frame lies around
            EXPECT_NE(with.copy(place), without.copy(place)) << named(here);
        }
        dialog->close();
    }
}

TEST_P(Keyboard, NoLetterStandsForTwoControlsOfADialog)
{
    showBlocks(true);
    for (const auto& [command, name] : everyTool) {
        SCOPED_TRACE(name);
        QDialog* const dialog = open(command, name);
        std::map<QString, std::string> owners;
        const auto take = [&](const QString& text, const QWidget* owner) {
            const QString letter = QKeySequence::mnemonic(text).toString();
            EXPECT_TRUE(letter.isEmpty() || owners.emplace(letter, named(owner)).second)
                << letter.toStdString() << " of " << named(owner) << " and " << owners[letter];
        };
        for (const auto* const label : dialog->findChildren<QLabel*>())
            if (label->buddy())
                take(label->text(), label);
        for (const auto* const button : dialog->findChildren<QAbstractButton*>())
            take(button->text(), button);
        for (const auto* const group : dialog->findChildren<QGroupBox*>())
            take(group->title(), group);
        dialog->close();
    }
}

TEST_P(Keyboard, EnterPressesTheButtonWithTheFocusAndNoOther)
{
    showBlocks(false);
    for (const auto& [command, name] : everyTool) {
        SCOPED_TRACE(name);
        QDialog* const dialog = open(command, name);
        activate(dialog);
        const auto before = picture();
        auto* const script = control<QPushButton>(dialog, "scriptToClipboard");
        QApplication::clipboard()->clear();
        script->setFocus(Qt::TabFocusReason);
        QTest::keyClick(script, Qt::Key_Return);
        settle();
        EXPECT_NE(clipboard().find("CVisionImage"), std::string::npos);
        ASSERT_TRUE(dialog->isVisible());
        for (QSlider* const slider : dialog->findChildren<QSlider*>())
            slider->setValue(slider->minimum());
        control<QPushButton>(dialog, "close")->setFocus(Qt::TabFocusReason);
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Enter);
        settle();
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(std::memcmp(picture()->view().pixels, before->view().pixels, 90 * 60), 0);
    }
}

TEST_P(Keyboard, OpenDialogsChangeTheirLanguageAndBack)
{
    showBlocks(true);
    const std::string other = GetParam() == std::string("ko") ? "en" : "ko";
    for (const auto& [command, name] : everyTool) {
        SCOPED_TRACE(name);
        QDialog* const dialog = open(command, name);
        const QStringList before = textsOf(dialog);
        CKestLanguage::Set(other.c_str());
        settle();
        const QStringList changed = textsOf(dialog);
        CKestLanguage::Set(GetParam());
        settle();
        EXPECT_EQ(textsOf(dialog).join('\n').toStdString(), before.join('\n').toStdString());
        EXPECT_NE(changed, before);
        for (const QString& text : other == "en" ? changed : before)
            EXPECT_FALSE(isKorean(text)) << text.toStdString();
        dialog->close();
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, Keyboard, testing::Values("ko", "en"));

} // namespace
