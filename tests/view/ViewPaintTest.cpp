#include "tests/support/ViewFixture.h"
#include "view/PictureImage.h"
#include "view/PictureReader.h"
#include "view/ViewPainter.h"
#include "view/ViewTracker.h"
#include "view/XorFigures.h"

#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <random>
#include <thread>

namespace {

using testing_support::ViewFixture;

class ViewPaint : public ViewFixture
{
protected:
    /// The pixel that the view reports under a device point; -1 beside the picture.
    QPoint reported(QPointF device)
    {
        QSignalSpy spy(view, &CKestView::pixelHovered);
        hover({-5, -5});
        hover(device);
        const auto last = spy.isEmpty() ? QList<QVariant>{-1, -1, 0u} : spy.last();
        value = last[2].toUInt();
        return {last[0].toInt(), last[1].toInt()};
    }
    unsigned value = 0;
};

QRgb shownColor(unsigned value, int bits)
{
    return bits == 8 ? qRgb(int(value), int(value), int(value)) : 0xff000000u | value;
}

} // namespace

TEST_F(ViewPaint, ThePixelUnderARestingPointerIsToldWhenItBecomesAnother)
{
    showRandom(50, 40, 8);
    view->ZoomFitTo();
    const QPointF rest(view->viewport()->rect().center());
    reported(rest);
    QSignalSpy told(view, &CKestView::pixelHovered);
    const auto last = [&](const std::function<void()>& change) {
        told.clear();
        change();
        QTest::qWait(20);
        return told.isEmpty() ? QPoint(-2, -2) : QPoint(told.last()[0].toInt(), told.last()[1].toInt());
    };
    EXPECT_EQ(last([&] { view->viewport()->update(); }), QPoint(-2, -2)); // the same one
    const QPoint zoomed = last([&] { view->ZoomPlus(3); });
    EXPECT_EQ(zoomed, reported(rest));
    const QPoint scrolled = last([&] { view->horizontalScrollBar()->setValue(0); });
    EXPECT_EQ(scrolled, reported(rest));
    EXPECT_NE(scrolled, zoomed);
    EXPECT_EQ(last([&] { showRandom(50, 40, 24); }), reported(rest));
    EXPECT_EQ(last([&] { view->SetImagePtr(0, 0, 8, nullptr); }), QPoint(-1, -1));
}

TEST_F(ViewPaint, ThePaintedPixelIsTheReportedOneAtEveryZoom)
{
    const qreal scale = view->devicePixelRatioF();
    for (const int bits : {8, 24}) {
        showRandom(223, 157, bits);
        for (const float start : {0.0f, 0.3f, 0.7f, 1.0f, 2.0f, 7.3f, 24.0f}) {
            view->ZoomFitTo();
            if (start > 0)
                view->ZoomPlus(start - view->GetZoom() > 0 ? start - view->GetZoom() : 0.37f);
            view->horizontalScrollBar()->setValue(view->horizontalScrollBar()->maximum() / 2 + 3);
            view->verticalScrollBar()->setValue(view->verticalScrollBar()->maximum());
            const QImage image = seen();
            ASSERT_EQ(image.width(), int(std::ceil(view->viewport()->width() * scale)));
            for (int y = 0; y < image.height(); y += 13)
                for (int x = 0; x < image.width(); x += 11) {
                    const QPoint pixel = reported(QPointF(x / scale, y / scale));
                    const QRgb expected = pixel.x() < 0 ? 0xff000000u : shownColor(value, bits);
                    ASSERT_EQ(image.pixel(x, y), expected) << x << "," << y << " zoom " << view->GetZoom()
                                                           << " pixel " << pixel.x() << "," << pixel.y();
                }
        }
    }
}

TEST_F(ViewPaint, RandomZoomsAndScrollsShowTheNearestPixelBelow)
{
    const double scale = view->devicePixelRatioF();
    std::mt19937 engine(11);
    const auto upTo = [&](int most) { return int(engine() % unsigned(most + 1)); };
    for (int round = 0; round < 60; ++round) {
        const int bits = round % 2 ? 24 : 8;
        const int width = 1 + upTo(900), height = 1 + upTo(700);
        showRandom(width, height, bits);
        view->ZoomFitTo();
        if (round % 5)
            view->ZoomPlus(round % 5 == 1 ? 30.0f : float(upTo(9000)) / 1000);
        view->horizontalScrollBar()->setValue(upTo(view->horizontalScrollBar()->maximum()));
        view->verticalScrollBar()->setValue(upTo(view->verticalScrollBar()->maximum()));
        const QImage image = view->GetScreen();
        const CPoint start = view->ImageToDevice(0, 0);
        const double zoom = double(view->GetZoom());
        for (int i = 0; i < 400; ++i) {
            const int x = upTo(image.width() - 1), y = upTo(image.height() - 1);
            const double across = x / scale - start.x, down = y / scale - start.y;
            const double column = across / zoom, row = down / zoom;
            const auto unsure = [](double at) { return std::abs(at - std::round(at)) < 1e-3; };
            if (unsure(column) || unsure(row) ||
                (bits == 8 && zoom >= 25)) // the levels written there cover it
                continue;
            const std::size_t stride = std::size_t((width * bits + 31) / 32 * 4);
            QRgb expected = 0xff000000u;
            if (column >= 0 && row >= 0 && across < std::floor(width * zoom) &&
                down < std::floor(height * zoom)) {
                const std::uint8_t* const at = bytes.data() + stride * std::size_t(height - 1 - int(row)) +
                                               std::size_t(int(column) * bits / 8);
                expected = bits == 8 ? qRgb(at[0], at[0], at[0]) : qRgb(at[2], at[1], at[0]);
            }
            ASSERT_EQ(image.pixel(x, y), expected) << "round " << round << " at " << x << "," << y;
        }
    }
}

TEST_F(ViewPaint, PaintingAPartLeavesTheRestOfTheScreenAsItWas)
{
    showRandom(60, 50, 8);
    for (const bool largest : {false, true}) {
        view->ZoomFitTo();
        if (largest)
            view->ZoomPlus(30);
        view->GetOverlays().AddEllipse(3, 3, 30, 20, 0, 1, RGB(0, 255, 0), "a");
        view->GetOverlays().AddLine(0, 49, 59, 0, 1, 1, RGB(255, 0, 0), "a");
        view->GetOverlays().AddArrow(5, 12, 28, 12, 40, 0, 19, RGB(0, 0, 255), "a");
        view->SetTrackerMode(1);
        view->SetTrackerPosition(CRect(2, 2, 12, 9));
        QApplication::processEvents();
        QImage store = seen();
        const QImage whole = store.copy();
        for (const QRect part :
             {QRect(0, 0, 30, 40), QRect(0, 50, 400, 9), QRect(51, 33, 101, 77), QRect(390, 290, 50, 50)}) {
            view->viewport()->render(&store, part.topLeft(), part, QWidget::RenderFlags());
            EXPECT_EQ(store, whole) << largest << " part at " << part.left();
        }
    }
}

TEST_F(ViewPaint, RowsRunAsTheBufferSays)
{
    showRandom(5, 4, 8);
    view->Zoom100();
    ASSERT_EQ(reported(QPointF(view->ImageToDevice(0, 0).x, view->ImageToDevice(0, 0).y)), QPoint(0, 0));
    EXPECT_EQ(value, bytes[8 * 3]); // the bottom row comes first
    view->SetRowOrder(TOP_DOWN);
    reported(QPointF(view->ImageToDevice(0, 0).x, view->ImageToDevice(0, 0).y));
    EXPECT_EQ(value, bytes[0]);
    EXPECT_EQ(reported({1, 1}), QPoint(-1, -1)); // centred: beside the picture
}

TEST_F(ViewPaint, WithoutAPictureOrOfAnotherDepthTheClientIsBlack)
{
    const std::vector<unsigned char> data(400 * 300 * 4, 200);
    for (const int bits : {16, 32, 8}) {
        view->SetImagePtr(400, 300, bits, bits == 8 ? nullptr : data.data());
        QImage black = seen();
        const QImage painted = black.copy();
        black.fill(Qt::black);
        EXPECT_EQ(painted, black) << bits;
    }
}

TEST_F(ViewPaint, OverlaysFollowZoomScrollAndCentre)
{
    showRandom(300, 200, 8);
    view->GetOverlays().AddRectangle(20, 10, 60, 40, 0, 1, RGB(0, 255, 0), "a");
    for (const bool fit : {true, false}) {
        view->ZoomFitTo();
        if (!fit)
            view->ZoomPlus(2);
        view->horizontalScrollBar()->setValue(15);
        view->verticalScrollBar()->setValue(7);
        const CPoint corner = view->ImageToDevice(60, 40);
        EXPECT_EQ(view->GetScreen().pixel(int(corner.x * view->devicePixelRatioF()),
                                          int(corner.y * view->devicePixelRatioF())),
                  0xff00ff00u);
        view->SendCommand(3302);
        EXPECT_EQ(view->IsOverlayVisible(), 0);
        EXPECT_NE(view->GetScreen().pixel(int(corner.x * view->devicePixelRatioF()),
                                          int(corner.y * view->devicePixelRatioF())),
                  0xff00ff00u);
        view->SendCommand(3302);
    }
}

TEST_F(ViewPaint, GrayLevelsAreWrittenAtTheLargestZoomOnly)
{
    const auto magenta = [&] {
        const QImage image = view->GetScreen();
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += qRed(image.pixel(x, y)) > 60;
        return count;
    };
    for (const int bits : {8, 24}) {
        view->CreateImage(40, 30, bits);
        view->ZoomPlus(30);
        EXPECT_EQ(magenta() > 1000, bits == 8);
        view->ZoomMinus();
        EXPECT_EQ(magenta(), 0);
    }
}

TEST_F(ViewPaint, GrayLevelsStandInTheMiddleOfCellsOfEverySize)
{
    for (const bool fitted : {true, false}) {
        const int side = fitted ? 3 : 100; // three pixels fit at more than the steps reach
        view->CreateImage(side, side, 8);
        view->ZoomFitTo();
        view->ZoomPlus(30);
        view->horizontalScrollBar()->setValue(0);
        view->verticalScrollBar()->setValue(0);
        ASSERT_EQ(view->GetZoom() > 25, fitted);
        const qreal scale = view->devicePixelRatioF();
        const CPoint from = view->ImageToDevice(1, 1);
        const CPoint to = view->ImageToDevice(2, 2);
        const QRect cell(QPoint(int(from.x * scale), int(from.y * scale)),
                         QPoint(int(to.x * scale) - 1, int(to.y * scale) - 1));
        const QImage screen = view->GetScreen();
        QRect ink;
        for (int y = cell.top(); y <= cell.bottom(); ++y)
            for (int x = cell.left(); x <= cell.right(); ++x)
                if (qRed(screen.pixel(x, y)) > 60)
                    ink |= QRect(x, y, 1, 1);
        ASSERT_FALSE(ink.isEmpty());
        EXPECT_NEAR(ink.center().x(), cell.center().x(), 2 * scale);
        EXPECT_NEAR(ink.center().y(), cell.center().y(), 2 * scale);
    }
}

namespace {

/// The pixels of an outline, or every other of them, counted from its left top corner.
bool outlines(const RECT& rect, int x, int y, bool everyOther)
{
    const CRect r = ormalux::ordered(rect);
    const bool inside = x >= r.left && x <= r.right && y >= r.top && y <= r.bottom;
    const bool edge = x == r.left || x == r.right || y == r.top || y == r.bottom;
    return inside && edge && (!everyOther || (x - r.left + y - r.top) % 2 == 0);
}

} // namespace

TEST_F(ViewPaint, InvertingFiguresInvertEachOfTheirPixelsOnceBesideTheClientAreaToo)
{
    using ormalux::XorFigure;
    std::mt19937 random(7);
    const auto at = [&](int size) { return int(random() % unsigned(3 * size)) - size; };
    for (int round = 0; round < 400; ++round) {
        const RECT rect{at(60), at(40), round % 20 ? at(60) : 30, round % 30 ? at(40) : 20};
        QImage frame;
        ormalux::prepareFrame(frame, {60, 40}, 1);
        const auto expectInverted = [&](auto paint, auto covers) {
            frame.fill(QColor(10, 90, 200));
            paint(frame);
            for (int y = 0; y < 40; ++y)
                for (int x = 0; x < 60; ++x)
                    ASSERT_EQ(frame.pixel(x, y), covers(x, y) ? qRgb(245, 165, 55) : qRgb(10, 90, 200))
                        << rect.left << " " << rect.top << " " << rect.right << " " << rect.bottom << " at "
                        << x << " " << y;
        };
        const COLORREF white = RGB(255, 255, 255);
        for (const XorFigure figure : {XorFigure::Rectangle, XorFigure::FocusRectangle})
            expectInverted(
                [&](QImage& on) { ormalux::paintXor(on, figure, rect, white); },
                [&](int x, int y) { return outlines(rect, x, y, figure == XorFigure::FocusRectangle); });
        expectInverted([&](QImage& on) { ormalux::paintTracker(on, rect); },
                       [&](int x, int y) {
                           bool inverted = outlines(rect, x, y, false);
                           for (int handle = 1; handle <= 8; ++handle) {
                               const CRect s = ormalux::handleSquare(rect, handle);
                               inverted ^= outlines({s.left, s.top, s.right - 1, s.bottom - 1}, x, y, false);
                           }
                           return inverted;
                       });
        // On any screen what is cut off does not change what is left: a larger frame shows the same there.
        const qreal scale = view->devicePixelRatioF();
        QImage part, whole;
        ormalux::prepareFrame(part, {60, 40}, scale);
        ormalux::prepareFrame(whole, {180, 120}, scale);
        const RECT moved{rect.left + 60, rect.top + 40, rect.right + 60, rect.bottom + 40};
        for (const XorFigure figure : {XorFigure::Rectangle, XorFigure::FocusRectangle}) {
            part.fill(Qt::black);
            whole.fill(Qt::black);
            ormalux::paintXor(part, figure, rect, white);
            ormalux::paintXor(whole, figure, moved, white);
            ASSERT_EQ(whole.copy(int(60 * scale), int(40 * scale), part.width(), part.height()), part)
                << int(figure) << " " << round;
        }
    }
}

TEST_F(ViewPaint, AnInvertingLineHasOnePixelInEachStepOnTheClientArea)
{
    std::mt19937 random(11);
    const auto at = [&](int size) { return int(random() % unsigned(3 * size)) - size; };
    for (int round = 0; round < 400; ++round) {
        const RECT ends{at(60), at(40), at(60), at(40)};
        QImage frame;
        ormalux::prepareFrame(frame, {60, 40}, 1);
        frame.fill(Qt::black);
        ormalux::paintXor(frame, ormalux::XorFigure::Line, ends, RGB(255, 255, 255));
        const int dx = ends.right - ends.left, dy = ends.bottom - ends.top;
        const int steps = std::max(std::abs(dx), std::abs(dy));
        std::vector<int> inverted(std::size_t(steps) + 1);
        const bool flat = std::abs(dx) >= std::abs(dy);
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 60; ++x)
                if (frame.pixel(x, y) != qRgb(0, 0, 0)) {
                    const int step = flat ? std::abs(x - ends.left) : std::abs(y - ends.top);
                    ASSERT_LE(step, steps);
                    const double beside = flat ? ends.top + double(dy) * step / std::max(steps, 1) - y
                                               : ends.left + double(dx) * step / std::max(steps, 1) - x;
                    EXPECT_LE(std::abs(beside), 1.1) << round;
                    ++inverted[std::size_t(step)];
                }
        for (int step = 0; step <= steps; ++step) {
            const double x = ends.left + double(dx) * step / std::max(steps, 1);
            const double y = ends.top + double(dy) * step / std::max(steps, 1);
            const bool surely = x > 1 && x < 58 && y > 1 && y < 38;
            ASSERT_LE(inverted[std::size_t(step)], 1) << round;
            ASSERT_TRUE(!surely || inverted[std::size_t(step)] == 1) << round << " at " << x << " " << y;
        }
    }
}

TEST_F(ViewPaint, InvertingFiguresDrawnTwiceAreGoneWhereverTheyLie)
{
    QImage frame;
    ormalux::prepareFrame(frame, {200, 150}, view->devicePixelRatioF());
    frame.fill(QColor(10, 90, 200));
    const QImage before = frame.copy();
    const RECT rects[] = {{20, 30, 90, 100},
                          {90, 100, 20, 30},
                          {-50, -50, 500, 70},
                          {40, 40, 40, 40},
                          {INT_MIN, INT_MIN, INT_MAX, INT_MAX},
                          {5, 5, INT_MAX, 20}};
    for (const RECT& rect : rects) {
        using ormalux::XorFigure;
        for (const XorFigure figure : {XorFigure::Line, XorFigure::Rectangle, XorFigure::FocusRectangle}) {
            ormalux::paintXor(frame, figure, rect, RGB(255, 0, 0));
            ormalux::paintXor(frame, figure, rect, RGB(255, 0, 0));
        }
        ormalux::paintTracker(frame, rect);
        ormalux::paintTracker(frame, rect);
        EXPECT_EQ(frame, before);
    }
    ormalux::paintXor(frame, ormalux::XorFigure::Rectangle, {20, 30, 90, 100}, RGB(255, 255, 255));
    const qreal scale = frame.devicePixelRatio();
    for (const QPoint corner : {QPoint(20, 30), QPoint(90, 30), QPoint(90, 100), QPoint(20, 100)})
        EXPECT_EQ(frame.pixel(int(corner.x() * scale), int(corner.y() * scale)), qRgb(245, 165, 55))
            << "a corner cancelled itself";
}

TEST_F(ViewPaint, TheScreenFileHasOverlaysButNoTrackerAndIsWrittenOnce)
{
    const QTemporaryDir folder;
    const std::string path = folder.filePath("화면.bmp").toStdString();
    showRandom(100, 80, 24);
    view->ZoomFitTo();
    view->GetOverlays().AddLine(0, 0, 99, 79, 0, 1, RGB(255, 0, 0), "a");
    view->SetTrackerMode(1);
    view->SetTrackerPosition(CRect(20, 20, 60, 60));
    view->ScreenToFile(path);
    view->ImageUpdate();
    const ormalux::Picture file = ormalux::readPicture(path.c_str());
    EXPECT_EQ(ormalux::toQImage(file.source()).convertToFormat(QImage::Format_RGB32), [&] {
        QImage screen = view->GetScreen();
        screen.setDevicePixelRatio(1);
        return screen;
    }());
    EXPECT_NE(seen(), view->GetScreen()); // the tracker is on the screen
    ASSERT_TRUE(QFile::remove(QString::fromStdString(path)));
    view->ImageUpdate();
    EXPECT_FALSE(QFile::exists(QString::fromStdString(path)));
    frame.hide();
    view->ScreenToFile(path);
    view->ImageUpdate();
    EXPECT_TRUE(QFile::exists(QString::fromStdString(path)));
}

TEST_F(ViewPaint, OnDrawPaintsOntoAnyPainter)
{
    showRandom(100, 80, 8);
    QImage target(400, 300, QImage::Format_RGB32);
    target.fill(Qt::red);
    QPainter painter(&target);
    view->OnDraw(&painter);
    EXPECT_EQ(target.pixel(0, 0), 0xff000000u);
    view->OnDraw(nullptr);
}

TEST_F(ViewPaint, AHiddenViewNeedsNoScreen)
{
    CKestView hidden;
    hidden.resize(200, 100);
    hidden.CreateImage(100, 100, 8);
    hidden.ZoomFitTo();
    EXPECT_FLOAT_EQ(hidden.GetZoom(), 0.9f);
    EXPECT_EQ(hidden.GetScreen().deviceIndependentSize().toSize(), QSize(200, 100));
}

TEST_F(ViewPaint, PicturesMayComeFromAnotherThreadWhileTheViewPaints)
{
    CKestView::SetParentThreadMode(1);
    std::thread camera([this] {
        for (int i = 0; i < 300; ++i) {
            const std::vector<unsigned char> data(std::size_t(100 + i) * 4 * 50, 128);
            view->SetImagePtr(100 + i, 50, 8, data.data());
            view->ImageUpdate();
        }
    });
    for (int i = 0; i < 50; ++i) {
        view->GetScreen();
        QApplication::processEvents();
    }
    camera.join();
    CKestView::SetParentThreadMode(0);
    QApplication::processEvents();
    EXPECT_EQ(view->GetWidth(), 399);
}
