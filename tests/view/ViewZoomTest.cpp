#include "tests/support/ViewFixture.h"
#include "view/ViewGeometry.h"

namespace {
using testing_support::ViewFixture;
using ViewZoom = ViewFixture;

QSize shown(int width, int height, float zoom)
{
    return {int(float(width) * zoom), int(float(height) * zoom)};
}
} // namespace

TEST_F(ViewZoom, FitLeavesATenthAndCentres)
{
    showRandom(200, 100, 8);
    view->ZoomFitTo();
    EXPECT_FLOAT_EQ(view->GetZoom(), 400 / 200.0f - 0.1f);
    EXPECT_EQ(view->GetFitZoom(), view->GetZoom());
    EXPECT_EQ(view->ImageToDevice(0, 0), (CPoint{(400 - 380) / 2, (300 - 190) / 2}));
    view->ZoomPlus();
    EXPECT_EQ(view->ImageToDevice(0, 0), CPoint(-scroll().x(), -scroll().y()));
    EXPECT_EQ(ormalux::fitZoomOf({400, 300}, QSize()), 1.0f);
    EXPECT_GT(ormalux::fitZoomOf({400, 300}, {100000, 100000}), 0.0f); // no room for the border
    EXPECT_GT(ormalux::fitZoomOf({0, 0}, {10, 10}), 0.0f);
}

TEST_F(ViewZoom, StepsInScrollByTheGrowthOver2Point5AndEndAt25)
{
    showRandom(300, 200, 8);
    view->Zoom100();
    for (float zoom = 1; zoom < 25;) {
        const QSize before = shown(300, 200, zoom);
        const QPoint old = scroll();
        view->ZoomPlus();
        zoom += 0.5f;
        ASSERT_EQ(view->GetZoom(), zoom);
        const QSize after = shown(300, 200, zoom);
        const QPoint wanted(int((after.width() - before.width()) / 2.5 + old.x()),
                            int((after.height() - before.height()) / 2.5 + old.y()));
        const QPoint most(view->horizontalScrollBar()->maximum(), view->verticalScrollBar()->maximum());
        EXPECT_EQ(scroll(), QPoint(std::min(wanted.x(), most.x()), std::min(wanted.y(), most.y())));
        EXPECT_EQ(most.x() + view->viewport()->width(), std::max(after.width(), view->viewport()->width()));
        EXPECT_EQ(most.y() + view->viewport()->height(),
                  std::max(after.height(), view->viewport()->height()));
    }
    view->ZoomPlus();
    EXPECT_EQ(view->GetZoom(), 25.0f);
}

TEST_F(ViewZoom, StepsOutReturnToTheFitAsSoonAsThePictureFits)
{
    showRandom(380, 290, 8); // fits at 1.0, whose fit zoom is below
    view->ZoomFitTo();
    const float fit = view->GetFitZoom();
    while (view->GetZoom() < 25)
        view->ZoomPlus();
    for (float zoom = 24.5f; zoom * 380 >= 400 || zoom * 290 >= 300; zoom -= 0.5f) {
        view->ZoomMinus();
        ASSERT_EQ(view->GetZoom(), zoom);
    }
    view->ZoomMinus();
    EXPECT_EQ(view->GetZoom(), fit);
    EXPECT_EQ(scroll(), QPoint(0, 0));
    EXPECT_EQ(view->viewport()->size(), QSize(400, 300));
    view->ZoomMinus();
    EXPECT_EQ(view->GetZoom(), fit);
}

TEST_F(ViewZoom, ResizingKeepsAFittedPictureFitted)
{
    showRandom(200, 100, 8);
    view->ZoomFitTo();
    view->resize(200, 200);
    EXPECT_FLOAT_EQ(view->GetZoom(), 0.9f);
    view->ZoomPlus();
    view->resize(300, 300);
    EXPECT_FLOAT_EQ(view->GetZoom(), 1.4f);
}

TEST_F(ViewZoom, AnUnfittedLargePictureIsReachableToItsLastPixel)
{
    showRandom(1000, 900, 8);
    EXPECT_EQ(view->GetZoom(), 1.0f);
    EXPECT_EQ(view->ImageToDevice(0, 0), CPoint(0, 0));
    view->horizontalScrollBar()->setValue(10000);
    view->verticalScrollBar()->setValue(10000);
    const QSize client = view->viewport()->size();
    EXPECT_EQ(view->DeviceToImage(QPointF(client.width() - 1, client.height() - 1)), CPoint(999, 899));
}

TEST_F(ViewZoom, RevealingScrollsNoFurtherThanItMustForAnyRectangle)
{
    showRandom(1000, 900, 8);
    view->Zoom100();
    const QSize client = view->viewport()->size();
    view->Reveal({500, 10, 599, 19});
    EXPECT_EQ(scroll(), QPoint(600 - client.width(), 0));
    view->Reveal({500, 10, 599, 19});
    EXPECT_EQ(scroll(), QPoint(600 - client.width(), 0));
    view->Reveal({INT_MAX, INT_MAX, INT_MAX, INT_MAX});
    EXPECT_EQ(scroll(), QPoint(1000 - client.width(), 900 - client.height()));
    view->Reveal({INT_MIN, INT_MIN, INT_MAX, INT_MAX});
    EXPECT_EQ(scroll(), QPoint(0, 0));
}

TEST_F(ViewZoom, TheFirstScrollSizeIs100UntilAPictureComes)
{
    view->setGeometry(0, 0, 70, 60);
    const QSize client = view->viewport()->size();
    EXPECT_EQ(view->horizontalScrollBar()->maximum(), 100 - client.width());
    EXPECT_EQ(view->verticalScrollBar()->maximum(), 100 - client.height());
    showRandom(10, 10, 8);
    EXPECT_EQ(view->verticalScrollBar()->maximum(), 0);
}

TEST_F(ViewZoom, ParentThreadModeKeepsTheScrollSizes)
{
    showRandom(1000, 900, 8);
    const int range = view->horizontalScrollBar()->maximum();
    CKestView::SetParentThreadMode(1);
    view->ZoomPlus();
    showRandom(2000, 900, 8);
    EXPECT_EQ(view->horizontalScrollBar()->maximum(), range);
    CKestView::SetParentThreadMode(0);
    showRandom(2000, 900, 8);
    EXPECT_GT(view->horizontalScrollBar()->maximum(), range);
}

TEST_F(ViewZoom, WheelZoomsByWholeStepsAndWithControlAboutTheCursor)
{
    showRandom(300, 200, 8);
    view->Zoom100();
    wheel(120);
    EXPECT_EQ(view->GetZoom(), 2.0f);
    wheel(480); // one message, one step
    EXPECT_EQ(view->GetZoom(), 3.0f);
    wheel(-120);
    EXPECT_EQ(view->GetZoom(), 2.0f);
    for (int i = 0; i < 8; ++i)
        wheel(15);
    EXPECT_EQ(view->GetZoom(), 3.0f);

    const QPointF cursor(150, 120);
    const CPoint under = view->DeviceToImage(cursor);
    for (int i = 0; i < 6; ++i) {
        wheel(120, cursor, Qt::ControlModifier);
        const CPoint now = view->DeviceToImage(cursor);
        EXPECT_NEAR(now.x, under.x, 1);
        EXPECT_NEAR(now.y, under.y, 1);
    }
}

TEST_F(ViewZoom, EveryZoomSurvivesExtremePictures)
{
    for (const QSize size :
         {QSize(1, 1), QSize(30000, 1), QSize(1, 30000), QSize(-1, 5), QSize(INT_MAX, INT_MAX)}) {
        if (size.width() > 0 && size.width() < INT_MAX)
            showRandom(size.width(), size.height(), 24);
        else
            view->SetImagePtr(size.width(), size.height(), 24, bytes.data());
        view->ZoomFitTo();
        for (int i = 0; i < 60; ++i)
            i < 30 ? view->ZoomPlus(1) : view->ZoomMinus(1);
        seen();
    }
}
