#include "tests/support/ViewFixture.h"
#include "view/ViewTracker.h"

#include <QMenu>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace {

using testing_support::ViewFixture;

struct Call
{
    int x1;
    int y1;
    int x2;
    int y2;
    CWnd* window;
    bool operator==(const Call&) const = default;
};
std::vector<Call> calls[3];

template <int list>
long record(int x1, int y1, int x2, int y2, CWnd* window)
{
    calls[list].push_back({x1, y1, x2, y2, window});
    return 7;
}

class ViewMouse : public ViewFixture
{
protected:
    ViewMouse()
    {
        for (auto& list : calls)
            list.clear();
        view->RegConfirmTrackerProc(record<0>);
        view->RegMouseMoveProc(record<1>);
        view->RegMouseUpProc(record<2>);
        showRandom(300, 200, 8);
        view->Zoom100();
        view->ZoomPlus(); // 1.5, not centred
        view->horizontalScrollBar()->setValue(0);
        view->verticalScrollBar()->setValue(0);
    }
    CPoint image(QPointF device) const { return view->DeviceToImage(device); }
    QMenu* openedMenu()
    {
        send(QEvent::MouseButtonPress, {100, 100}, Qt::RightButton, Qt::RightButton);
        return view->findChild<QMenu*>("viewMenu");
    }
};

} // namespace

TEST_F(ViewMouse, ATrackerDrawnFromBottomRightIsReportedInOrder)
{
    view->SetTrackerMode(1);
    dragFromTo({150, 120}, {30, 60});
    const CPoint a = image({30, 60});
    const CPoint b = image({150, 120});
    EXPECT_EQ(view->GetTrackerRect(), CRect(a.x, a.y, b.x, b.y));
    view->SetTrackerPosition(CRect(40, 30, 10, 5));
    EXPECT_EQ(view->GetTrackerRect(), CRect(10, 5, 40, 30));
}

TEST_F(ViewMouse, HandlesBodyAndOutsideAreHitAsTheyLie)
{
    const CRect device(100, 100, 201, 151);
    EXPECT_EQ(ormalux::handlePoint(device, 2), CPoint(150, 100));
    EXPECT_EQ(ormalux::handlePoint(device, 4), CPoint(201, 125));
    EXPECT_EQ(ormalux::hitTracker(device, {100, 100}), 0); // the inside comes first
    const QPointF outer[] = {{96, 96},   {150, 95},  {205, 95}, {205, 125},
                             {205, 155}, {150, 155}, {95, 155}, {95, 125}};
    for (int handle = 1; handle <= 8; ++handle)
        EXPECT_EQ(ormalux::hitTracker(device, outer[handle - 1]), handle);
    EXPECT_EQ(ormalux::hitTracker(device, {94, 94}), -1);
    EXPECT_EQ(ormalux::hitTracker(device, {206, 125}), -1);
    EXPECT_EQ(ormalux::hitTracker(CRect(201, 151, 100, 100), {150, 125}), 0);
    const CRect dragged[] = {{2, 3, 22, 33}, {2, 3, 20, 30}, {0, 3, 20, 30}, {0, 3, 22, 30}, {0, 0, 22, 30},
                             {0, 0, 22, 33}, {0, 0, 20, 33}, {2, 0, 20, 33}, {2, 0, 20, 30}};
    for (int handle = 0; handle <= 8; ++handle)
        EXPECT_EQ(ormalux::draggedTracker(CRect(0, 0, 20, 30), handle, 2, 3), dragged[handle]) << handle;
}

TEST_F(ViewMouse, DraggingMovesOrResizesTheTrackerAndAClickDoesNothing)
{
    view->SetTrackerMode(1);
    view->SetTrackerPosition(CRect(40, 40, 80, 80));
    dragFromTo({90, 90}, {105, 75}); // 10 pixels at 1.5
    EXPECT_EQ(view->GetTrackerRect(), CRect(50, 30, 90, 70));
    const CPoint corner = view->ImageToDevice(90, 70);
    dragFromTo(QPointF(corner.x + 2, corner.y + 2),
               QPointF(corner.x + 2 - 75, corner.y + 2 + 15)); // past the left side
    EXPECT_EQ(view->GetTrackerRect(), CRect(40, 30, 50, 80));
    press({300, 250});
    release({300, 250});
    EXPECT_EQ(view->GetTrackerRect(), CRect(40, 30, 50, 80));
    EXPECT_EQ(view->viewport()->cursor().shape(), Qt::CrossCursor);
    hover({70, 70});
    EXPECT_EQ(view->viewport()->cursor().shape(), Qt::SizeAllCursor);
    hover(QPointF(view->ImageToDevice(50, 80).x + 3, view->ImageToDevice(50, 80).y + 3));
    EXPECT_EQ(view->viewport()->cursor().shape(), Qt::SizeFDiagCursor);
}

TEST_F(ViewMouse, KeysMoveTheTrackerOrItsFarCornerOnlyInTrackerMode)
{
    view->SetTrackerPosition(CRect(10, 10, 30, 30));
    key(Qt::Key_Left);
    EXPECT_EQ(view->GetTrackerRect(), CRect(10, 10, 30, 30));
    view->SetTrackerMode(1);
    key(Qt::Key_Left);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    EXPECT_EQ(view->GetTrackerRect(), CRect(9, 12, 29, 32));
    key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(view->GetTrackerRect(), CRect(9, 12, 30, 31));
    view->SetTrackerPosition(CRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX));
    key(Qt::Key_Left);
    key(Qt::Key_Right, Qt::ShiftModifier);
    seen();
}

TEST_F(ViewMouse, ConfirmCallsTheHostWithTheWindowAndOnlyInTrackerMode)
{
    QSignalSpy confirmed(view, &CKestView::trackerConfirmed);
    view->SetTrackerPosition(CRect(30, 40, 10, 20));
    EXPECT_TRUE(view->SendCommand(3300));
    EXPECT_TRUE(calls[0].empty());
    view->SetTrackerMode(1);
    QMenu* const menu = openedMenu();
    ASSERT_TRUE(menu);
    QStringList texts;
    for (const QAction* action : menu->actions())
        texts << (action->isSeparator() ? QString("-") : action->text());
    EXPECT_EQ(texts, QStringList({"Confirm ROI", "Cancel ROI", "-", "Save Ocr Source File ...",
                                  "Save Match Source File ..."}));
    menu->findChild<QAction*>("command_3300")->trigger();
    EXPECT_THAT(calls[0], testing::ElementsAre(Call{10, 20, 30, 40, &frame}));
    EXPECT_EQ(confirmed.count(), 1);
    menu->findChild<QAction*>("command_3301")->trigger();
    EXPECT_EQ(view->IsTrackerMode(), 0);
    EXPECT_EQ(view->GetTrackerRect(), CRect(10, 20, 30, 40));
    EXPECT_FALSE(view->SendCommand(3305));
}

TEST_F(ViewMouse, MenuItemsTakeTheReleaseOfTheRightButton)
{
    view->SetTrackerMode(1);
    QMenu* const menu = openedMenu();
    ASSERT_TRUE(menu);
    QApplication::processEvents();
    const QPointF item = menu->actionGeometry(menu->actions()[1]).center();
    for (const QEvent::Type type : {QEvent::MouseMove, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, item, menu->mapToGlobal(item),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::RightButton,
                          type == QEvent::MouseMove ? Qt::RightButton : Qt::NoButton, {});
        QApplication::sendEvent(menu, &event);
    }
    EXPECT_EQ(view->IsTrackerMode(), 0);
}

TEST_F(ViewMouse, AToolDrawsOneRubberBandAndReportsItsEnds)
{
    view->SetTrackerMode(1); // the tool comes first
    view->Tool(TOOL_LINE);
    press({30, 45});
    drag({60, 30});
    EXPECT_THAT(calls[1], testing::ElementsAre(Call{20, 30, 40, 20, view}));
    release({90, 15});
    EXPECT_THAT(calls[2], testing::ElementsAre(Call{20, 30, 60, 10, view}));
    EXPECT_EQ(view->GetTool(), TOOL_NONE);
    EXPECT_EQ(view->GetTrackerRect(), CRect());
    dragFromTo({30, 30}, {60, 60});
    EXPECT_EQ(calls[2].size(), 1u);
    EXPECT_EQ(view->GetTrackerRect(), CRect(20, 20, 40, 40));
}

TEST_F(ViewMouse, DraggingPansOnlyAwayFromTheFitZoom)
{
    view->horizontalScrollBar()->setValue(40);
    dragFromTo({100, 100}, {80, 100});
    EXPECT_EQ(scroll().x(), 60);
    EXPECT_FALSE(calls[1].empty());
    view->ZoomFitTo();
    dragFromTo({100, 100}, {80, 80});
    EXPECT_EQ(scroll(), QPoint(0, 0));
}

TEST_F(ViewMouse, PanningGoesOnAfterTheWheel)
{
    press({100, 100});
    drag({90, 90});
    wheel(120, {90, 90});
    const QPoint zoomed = scroll();
    drag({87, 88});
    EXPECT_EQ(scroll(), zoomed + QPoint(3, 2));
    release({87, 88});
}

TEST_F(ViewMouse, ALostReleaseEndsTheDrag)
{
    view->SetTrackerMode(1);
    press({30, 30});
    drag({90, 90});
    hover({120, 120});
    release({120, 120});
    EXPECT_EQ(view->GetTrackerRect(), CRect());
}

TEST_F(ViewMouse, TheMouseCanBeSwitchedOff)
{
    view->EnableMouseAction(0);
    view->SetTrackerMode(1);
    dragFromTo({30, 30}, {90, 90});
    wheel(120);
    EXPECT_FALSE(openedMenu());
    EXPECT_EQ(view->GetTrackerRect(), CRect());
    EXPECT_EQ(view->GetZoom(), 1.5f);
    EXPECT_TRUE(calls[1].empty());
}

TEST_F(ViewMouse, ArrowKeysAreClaimedFromShortcuts)
{
    QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_Left, Qt::NoModifier);
    event.ignore();
    QApplication::sendEvent(view, &event);
    EXPECT_TRUE(event.isAccepted());
}
