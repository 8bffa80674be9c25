#include "platform/Stdlib.h"
#include "tools/Script.h"
#include "view/ImageViewWnd.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QProcess>
#include <QVBoxLayout>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <functional>

// What only a real server has: other processes, a mouse, a keyboard and a window manager.

namespace {

/// Runs a program while this one keeps serving events, and returns what it wrote.
QByteArray outputOf(const QString& program, const QStringList& arguments, const QByteArray& input = {})
{
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    const bool ended = QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 15000);
    EXPECT_TRUE(ended && process.exitCode() == 0)
        << program.toStdString() << " " << arguments.join(' ').toStdString();
    return process.readAllStandardOutput();
}

QByteArray clipboardOfAnotherProcess()
{
    return outputOf("xclip", {"-selection", "clipboard", "-out", "-target", "UTF8_STRING"});
}

void xdotool(const QString& arguments)
{
    outputOf("xdotool", arguments.split(' '));
}

QString spot(QPoint global)
{
    return QStringLiteral("mousemove %1 %2").arg(global.x()).arg(global.y());
}

bool comesTrue(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, 5000);
}

/// A host's dialog with a field and an image window, active, with a fitted picture.
class Server : public testing::Test
{
protected:
    Server()
    {
        auto* const layout = new QVBoxLayout(&dialog);
        field = new QLineEdit(&dialog);
        window = new CKestWnd(&dialog);
        layout->addWidget(field);
        layout->addWidget(window, 1);
        dialog.resize(700, 500);
        dialog.move(60, 60);
        window->CreateImage(300, 200, 8);
        dialog.show();
        field->setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog, 10000));
        window->ZoomFitTo();
        QTest::qWait(50);
    }
    /// The middle of an image pixel on the screen.
    QPoint onScreen(int x, int y) const
    {
        CKestView* const view = window->GetView();
        const CPoint first = view->ImageToDevice(x, y), next = view->ImageToDevice(x + 1, y + 1);
        return view->viewport()->mapToGlobal(QPoint((first.x + next.x) / 2, (first.y + next.y) / 2));
    }

    QDialog dialog;
    QLineEdit* field = nullptr;
    CKestWnd* window = nullptr;
};

long pressed[4];
long rememberUp(int x1, int y1, int x2, int y2, CWnd*)
{
    const int all[] = {x1, y1, x2, y2};
    std::copy(all, all + 4, pressed);
    return 0;
}

} // namespace

TEST_F(Server, AnotherProcessReadsTheScriptOfTheLastCommand)
{
    window->SendCommand(6626);
    EXPECT_EQ(clipboardOfAnotherProcess().toStdString(), ormalux::oneStepScript(300, 200, "Blur"));
    outputOf("xclip", {"-selection", "clipboard", "-in"}, "taken by another");
    EXPECT_TRUE(comesTrue([] { return QApplication::clipboard()->text() == "taken by another"; }));
    window->SendCommand(6617);
    EXPECT_EQ(clipboardOfAnotherProcess().toStdString(), ormalux::oneStepScript(300, 200, "Erode"));
    CStdlib::CopyToClipboard(window, "한글 경로 D:\\검사\n");
    EXPECT_EQ(clipboardOfAnotherProcess().toStdString(), "한글 경로 D:\\검사\n");
}

TEST_F(Server, ARealDragMovesTheTrackerAndResizesItByAHandle)
{
    window->Zoom100(); // a device pixel moved is an image pixel moved
    window->SetTrackerMode(1);
    window->SetTrackerPosition(CRect(50, 40, 150, 120));
    xdotool(spot(onScreen(100, 80)) + " mousedown 1 " + spot(onScreen(110, 85)) + " " +
            spot(onScreen(130, 90)) + " mouseup 1");
    EXPECT_TRUE(comesTrue([&] { return window->GetTrackerRect() == CRect(80, 50, 180, 130); }))
        << window->GetTrackerRect().left << "," << window->GetTrackerRect().top;
    const QPoint corner = onScreen(180, 130) + QPoint(2, 2); // the handle's outer half
    xdotool(spot(corner) + " mousedown 1 " + spot(corner + QPoint(10, 10)) + " " +
            spot(corner + onScreen(200, 150) - onScreen(180, 130)) + " mouseup 1");
    EXPECT_TRUE(comesTrue([&] { return window->GetTrackerRect() == CRect(80, 50, 200, 150); }))
        << window->GetTrackerRect().right << "," << window->GetTrackerRect().bottom;
}

TEST_F(Server, ARealRubberBandReportsItsEnds)
{
    window->RegMouseUpProc(rememberUp);
    window->Tool(TOOL_LINE);
    xdotool(spot(onScreen(20, 30)) + " mousedown 1 " + spot(onScreen(100, 90)) + " " +
            spot(onScreen(220, 170)) + " mouseup 1");
    EXPECT_TRUE(comesTrue([] { return pressed[0] == 20 && pressed[1] == 30 && pressed[2] == 220; }));
    EXPECT_EQ(pressed[3], 170);
    EXPECT_EQ(window->GetView()->GetTool(), TOOL_NONE);
}

TEST_F(Server, AClickTakesTheFocusAndArrowsThenMoveTheTracker)
{
    window->SetTrackerMode(1);
    window->SetTrackerPosition(CRect(50, 40, 150, 120));
    ASSERT_TRUE(field->hasFocus());
    xdotool("key --delay 20 Right Right");
    EXPECT_EQ(window->GetTrackerRect(), CRect(50, 40, 150, 120)) << "keys of another field reached the view";
    xdotool(spot(onScreen(100, 80)) + " click 1");
    EXPECT_TRUE(comesTrue([&] { return window->GetView()->hasFocus(); }));
    xdotool("key --delay 20 Right Right Down shift+Right shift+Up");
    EXPECT_TRUE(comesTrue([&] { return window->GetTrackerRect() == CRect(52, 41, 153, 120); }))
        << window->GetTrackerRect().left << "," << window->GetTrackerRect().right;
}

TEST_F(Server, ShortcutsAndTheWheelZoom)
{
    const float fit = window->GetView()->GetZoom();
    xdotool("key ctrl+1");
    EXPECT_FALSE(QTest::qWaitFor([&] { return window->GetView()->GetZoom() != fit; }, 300))
        << "a shortcut worked while the focus was elsewhere";
    xdotool(spot(onScreen(100, 80)) + " click 1 key ctrl+1");
    EXPECT_TRUE(comesTrue([&] { return window->GetView()->GetZoom() == 1.0f; }));
    xdotool("key ctrl+0");
    EXPECT_TRUE(comesTrue([&] { return window->GetView()->GetZoom() == fit; }));
    xdotool(spot(onScreen(100, 80)) + " click 4");
    EXPECT_TRUE(comesTrue([&] { return window->GetView()->GetZoom() == fit + 1.0f; }));
    xdotool("click 5");
    EXPECT_TRUE(comesTrue([&] { return window->GetView()->GetZoom() == fit; }));
}

TEST_F(Server, TheContextMenuOpensAtTheMouseAndItsItemWorks)
{
    window->SetTrackerMode(1);
    window->SetTrackerPosition(CRect(50, 40, 150, 120));
    const QPoint at = onScreen(100, 80);
    xdotool(spot(at) + " click 3");
    ASSERT_TRUE(comesTrue([] { return QApplication::activePopupWidget() != nullptr; }));
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_LE((menu->geometry().topLeft() - at).manhattanLength(), 4);
    const QPoint cancel = menu->mapToGlobal(menu->actionGeometry(menu->actions().at(1)).center());
    xdotool(spot(cancel) + " click 1");
    EXPECT_TRUE(comesTrue([&] { return window->IsTrackerMode() == 0; }));
    EXPECT_EQ(window->GetTrackerRect(), CRect(50, 40, 150, 120));
}

TEST_F(Server, KeysGoToTheActiveOneOfTwoWindows)
{
    CKestWnd other;
    other.CreateImage(300, 200, 8);
    other.SetTrackerMode(1);
    other.SetTrackerPosition(CRect(10, 10, 20, 20));
    window->SetTrackerMode(1);
    window->SetTrackerPosition(CRect(50, 40, 150, 120));
    other.setGeometry(800, 120, 400, 300);
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other, 10000));
    other.GetView()->setFocus();
    xdotool("key Down");
    EXPECT_TRUE(comesTrue([&] { return other.GetTrackerRect() == CRect(10, 11, 20, 21); }));
    xdotool(spot(onScreen(100, 80)) + " click 1");
    ASSERT_TRUE(comesTrue([&] { return dialog.isActiveWindow(); }));
    xdotool("key Down");
    EXPECT_TRUE(comesTrue([&] { return window->GetTrackerRect() == CRect(50, 41, 150, 121); }));
    EXPECT_EQ(other.GetTrackerRect(), CRect(10, 11, 20, 21));
}
