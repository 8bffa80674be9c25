#include "color/VisionImage24.h"
#include "tests/support/WndFixture.h"

#include <QDialog>
#include <QProxyStyle>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThread>
#include <QTranslator>
#include <QVBoxLayout>

#include <atomic>
#include <functional>
#include <set>
#include <thread>

namespace {

using WndHost = testing_support::WndFixture;

struct Call
{
    int x1, y1, x2, y2;
    CWnd* window;
};
std::vector<Call> calls;
long record(int x1, int y1, int x2, int y2, CWnd* window)
{
    calls.push_back({x1, y1, x2, y2, window});
    return 0;
}

/// Marks every text that it is asked for.
class Marking : public QTranslator
{
public:
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return std::string_view(context) == "CKestWnd" ? "[" + QString::fromUtf8(text) + "]" : QString();
    }
    bool isEmpty() const override { return false; }
};

/// Tells whether another thread than the application's has asked for something.
class WatchingStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override
    {
        if (QThread::currentThread() != qApp->thread())
            strayed = true;
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
    mutable std::atomic<bool> strayed = false;
};

} // namespace

TEST_F(WndHost, PixelsOfColourAreAddressedAndOrderedAsTheyAlwaysWere)
{
    unsigned char bits[2 * 12]; // 3 x 2 pixels, rows of 12 bytes
    for (int i = 0; i < 24; ++i)
        bits[i] = static_cast<unsigned char>(i + 1);
    window.SetImagePtr(3, 2, 24, bits);
    EXPECT_EQ(window.GetPixel24(1, 0), 0x040302ul); // bytes 1 to 3 of the row
    EXPECT_EQ(window.GetPixel24(0, 1), 0x0F0E0Dul);
    window.SetPixel24(1, 0, window.GetPixel24(1, 0));
    EXPECT_EQ(window.GetPixel24(1, 0), 0x020304ul);
    EXPECT_EQ(window.GetPixel(2, 1), 6); // the width is the row step
    window.SetPixel(2, 1, 250);
    EXPECT_EQ(window.GetImagePtr()[5], 250);
}

TEST_F(WndHost, PicturesGoInAndComeOutAsTheHostGaveThem)
{
    showGray(7, 5);
    EXPECT_EQ(seen(), pixels);
    EXPECT_EQ(window.GetRowOrder(), TOP_DOWN);
    const std::unique_ptr<CKestImage> part(window.GetImage(2, 1, 3, 2));
    EXPECT_EQ(part->GetPixel(0, 0), pixels[9]);
    window.SetRowOrder(BOTTOM_UP);
    EXPECT_EQ(seen()[0], pixels[28]);

    unsigned char camera[4 * 2 * 3] = {10, 20, 30};
    window.SetImagePtr(2, 2, 24, camera, 'G');
    EXPECT_EQ(window.GetBitCount(), 8);
    EXPECT_EQ(seen(), std::vector<unsigned char>({0, 0, 20, 0}));
    EXPECT_TRUE(std::unique_ptr<CKestImage24>(window.GetImage24())->IsEmpty());
    window.SetImagePtr(2, 2, 24, camera);
    EXPECT_EQ(std::unique_ptr<CKestImage24>(window.GetImage24())->GetWidth(), 2);
    const std::unique_ptr<CKestImage24> corner(window.GetImage24(0, 1, 1, 1));
    EXPECT_EQ(corner->view().pixels[2], 30);
    window.SetImagePtrLink(2, 2, 24, camera);
    window.Invert();
    EXPECT_EQ(camera[1], 235);
    window.CreateImage(4, 4, 8);
    window.Offset(1, 1);
    window.Light(20, 0);
    window.Gamma(2.0f);
    EXPECT_EQ(seen(), std::vector<unsigned char>(16, 71)); // 255 x sqrt(20 / 255)
}

TEST_F(WndHost, OverlaysOfPointsAndRectanglesAreThoseOfNumbers)
{
    window.CreateImage(200, 150, 8);
    window.Zoom100();
    const auto shot = [this] { return window.GetView()->GetScreen(); };
    const QImage empty = shot();
    const std::pair<std::function<void()>, std::function<void()>> twins[] = {
        {[this] { window.AddLine(10, 20, 60, 90, 0, 1, RGB(255, 0, 0), "t"); },
         [this] { window.AddLine(CPoint(10, 20), CPoint(60, 90), 0, 1, RGB(255, 0, 0), "t"); }},
        {[this] { window.AddArrow(10, 20, 60, 90, 8, 0, 1, RGB(255, 0, 0), "t"); },
         [this] { window.AddArrow(CPoint(10, 20), CPoint(60, 90), 8, 0, 1, RGB(255, 0, 0), "t"); }},
        {[this] { window.AddRectangle(10, 20, 60, 90, 0, 2, RGB(0, 255, 0), "t"); },
         [this] { window.AddRectangle(CRect(10, 20, 60, 90), 0, 2, RGB(0, 255, 0), "t"); }},
        {[this] { window.AddEllipse(10, 20, 60, 90, 0, 1, RGB(0, 255, 0), "t"); },
         [this] { window.AddEllipse(CRect(10, 20, 60, 90), 0, 1, RGB(0, 255, 0), "t"); }},
        {[this] { window.AddEllipse(20, 30, 80, 90, 0, 1, RGB(0, 255, 0), "t"); },
         [this] { window.AddEllipse(CPoint(50, 60), 30, 0, 1, RGB(0, 255, 0), "t"); }},
        {[this] { window.AddCrossLine(50, 60, 7, 0, 1, RGB(0, 0, 255), "t"); },
         [this] { window.AddCrossLine(CPoint(50, 60), 7, 0, 1, RGB(0, 0, 255), "t"); }},
        {[this] { window.AddText(50, 60, "값 7", 14, RGB(0, 0, 255), "t"); },
         [this] { window.AddText(CPoint(50, 60), "값 7", 14, RGB(0, 0, 255), "t"); }}};
    for (const auto& [numbers, points] : twins) {
        numbers();
        const QImage first = shot();
        EXPECT_NE(first, empty);
        window.RemoveGraphics("t");
        EXPECT_EQ(shot(), empty);
        points();
        EXPECT_EQ(shot(), first);
        window.RemoveAllGraphics();
    }
    window.AddEllipse(CPoint(INT_MAX, INT_MIN), INT_MAX, 0, 1, 0, "t");
    POINT line[2] = {{0, 0}, {50, 50}};
    window.RemoveAllGraphics();
    window.AddPolyline(line, 2, 0, 1, RGB(255, 255, 255), "t");
    EXPECT_EQ(shot(), empty);
}

TEST_F(WndHost, CallbacksReportWhatTheOperatorDoes)
{
    calls.clear();
    showGray(400, 300);
    window.Zoom100();
    window.RegMouseMoveProc(&record);
    window.RegMouseUpProc(&record);
    window.RegConfirmTrackerProc(&record);
    QWidget* const port = window.GetView()->viewport();
    const QPoint base = [this] {
        const CPoint zero = window.GetView()->ImageToDevice(0, 0);
        return QPoint(zero.x, zero.y);
    }();
    window.Tool(TOOL_LINE);
    QTest::mousePress(port, Qt::LeftButton, {}, base + QPoint(20, 30));
    QMouseEvent move(QEvent::MouseMove, base + QPointF(60, 80), port->mapToGlobal(base + QPointF(60, 80)),
                     Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(port, &move);
    QTest::mouseRelease(port, Qt::LeftButton, {}, base + QPoint(60, 80));
    ASSERT_EQ(calls.size(), 2u);
    for (const Call& call : calls) {
        EXPECT_EQ(call.window, window.GetView());
        EXPECT_EQ(std::vector({call.x1, call.y1, call.x2, call.y2}), std::vector({20, 30, 60, 80}));
    }
    calls.clear();
    window.SetTrackerPosition(CRect(50, 40, 10, 20));
    window.SendCommand(3300);
    EXPECT_TRUE(calls.empty()); // only in the tracker mode
    window.SetTrackerMode(1);
    window.SendCommand(3300);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].window, &window);
    EXPECT_EQ(window.GetTrackerRect(), CRect(10, 20, 50, 40));
    EXPECT_EQ(calls[0].x1, 10);
}

TEST_F(WndHost, TheScreenIsWrittenWithTheNextUpdate)
{
    const QTemporaryDir folder;
    showGray(60, 40);
    window.ZoomFitTo();
    const std::string path = folder.filePath("화면.bmp").toStdString();
    window.ScreenToFile(path);
    window.ImageUpdate();
    const QImage screen = window.GetView()->GetScreen();
    const QImage file(QString::fromStdString(path));
    ASSERT_EQ(file.size(), screen.size());
    EXPECT_EQ(file.pixel(file.width() / 2, file.height() / 2),
              screen.pixel(file.width() / 2, file.height() / 2));
}

TEST_F(WndHost, AnotherViewTakesThePlaceOfTheFirst)
{
    showGray(8, 8);
    EXPECT_EQ(window.UserCreateView(nullptr), nullptr);
    EXPECT_EQ(window.UserCreateView(&QWidget::staticMetaObject), nullptr);
    EXPECT_EQ(window.UserCreateView(&QAbstractScrollArea::staticMetaObject), nullptr);
    EXPECT_EQ(window.GetWidth(), 8);
    const CKestView* const first = window.GetView();
    CView* const own = window.UserCreateView(&CKestView::staticMetaObject);
    ASSERT_TRUE(own);
    EXPECT_NE(own, first);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window.findChildren<CKestView*>().size(), 1);
    EXPECT_EQ(window.GetView(), own);
    EXPECT_EQ(window.findChild<CView*>("pane_59648"), own);
    EXPECT_EQ(own->y(), 40);
    EXPECT_FALSE(button(6605)->isEnabled()); // it shows nothing yet
    showGray(9, 9);
    EXPECT_TRUE(button(6605)->isEnabled());
}

TEST_F(WndHost, AnotherThreadDrivesTheWindow)
{
    CKestWnd::ParentThreadMode(1);
    const QTemporaryDir folder;
    WatchingStyle style;
    window.GetView()->setStyle(&style);
    showGray(64, 48);
    const std::string path = folder.filePath("a.bmp").toStdString();
    ASSERT_EQ(window.SaveImage(path.c_str()), 1);
    std::atomic<bool> done = false;
    int loaded = 0;
    std::thread host([&] {
        for (int i = 0; i < 50; ++i) {
            std::vector<unsigned char> bits(std::size_t(68) * 40, static_cast<unsigned char>(i));
            window.CreateImage(i + 1, 20, 8);
            window.SetImagePtr(65, 40, 8, bits.data());
            window.Invert();
            window.AddLine(0, 0, i, i, 0, 1, RGB(255, 0, 0), "host");
            window.ImageUpdate();
            loaded += window.LoadImage(path.c_str());
            window.ZoomPlus();
            window.RemoveAllGraphics();
        }
        window.SetTrackerPosition(CRect(1, 2, 3, 4));
        window.SetTrackerMode(1);
        window.ViewToolBar(0);
        EXPECT_FALSE(window.SendCommand(5502));
        done = true;
    });
    while (!done)
        QApplication::processEvents();
    host.join();
    QApplication::processEvents();
    EXPECT_EQ(loaded, 50);
    EXPECT_EQ(seen(), pixels);
    EXPECT_EQ(window.GetTrackerRect(), CRect(1, 2, 3, 4));
    EXPECT_EQ(window.IsTrackerMode(), 1);
    EXPECT_EQ(window.GetView()->y(), 1);
    EXPECT_FALSE(style.strayed);
    window.GetView()->setStyle(nullptr);
    CKestWnd::ParentThreadMode(0);
}

TEST_F(WndHost, WhoHearsOfThePictureMayWaitForAThreadThatUsesIt)
{
    int heard = 0;
    int locked = 0;
    const auto listen = [&] {
        ++heard;
        std::thread([&] {
            const std::unique_lock lock(window.GetView()->GetLock(), std::try_to_lock);
            locked += !lock.owns_lock();
        }).join();
    };
    QObject::connect(window.GetView(), &CKestView::imageChanged, &window, listen);
    QObject::connect(window.GetView(), &CKestView::imageEdited, &window, listen);
    const QTemporaryDir folder;
    const std::string path = folder.filePath("a.bmp").toStdString();
    window.CreateImage(8, 8, 24);
    window.SaveImage(path.c_str());
    std::vector<unsigned char> bits(8 * 8 * 3);
    window.SetImagePtr(8, 8, 24, bits.data());
    window.SetImagePtr(8, 8, 24, bits.data(), 'G');
    window.SetImagePtrLink(8, 8, 24, bits.data());
    window.LoadImage(path.c_str());
    window.LoadImageGdip(path.c_str());
    showGray(8, 8);
    window.Invert();
    window.SetRowOrder(BOTTOM_UP);
    EXPECT_EQ(heard, 9);
    QObject::connect(window.GetView(), &CKestView::zoomChanged, &window, listen);
    QObject::connect(window.GetView(), &CKestView::pixelHovered, &window, listen);
    window.GetView()->Zoom100();
    window.ZoomPlus(); // the small picture fits at a larger zoom
    QWidget* const client = window.GetView()->viewport();
    const QPointF middle = client->rect().center();
    QMouseEvent move(QEvent::MouseMove, middle, client->mapToGlobal(middle), Qt::NoButton, {}, {});
    QApplication::sendEvent(client, &move);
    EXPECT_EQ(heard, 9 + 3);
    EXPECT_EQ(locked, 0);
}

TEST_F(WndHost, AnotherThreadReadsWholeRegionsWhileTheyChange)
{
    std::atomic<bool> done = false;
    int torn = 0;
    window.SetTrackerPosition(CRect(0, 0, 9, 9));
    std::thread inspection([&] {
        while (!done) {
            const CRect region = window.GetTrackerRect();
            torn += region.right != region.left + 9 || region.bottom != region.top + 9;
        }
    });
    for (int i = 0; i < 50000; ++i) {
        const int at = i % 2 * 100;
        window.SetTrackerPosition(CRect(at + 9, at + 9, at, at));
    }
    done = true;
    inspection.join();
    EXPECT_EQ(torn, 0);
}

TEST_F(WndHost, WhatAFastThreadAsksForIsDoneOnceForItsLatestPicture)
{
    QSignalSpy changed(window.GetView(), &CKestView::imageChanged);
    QSignalSpy edited(window.GetView(), &CKestView::imageEdited);
    std::vector<unsigned char> bits(16 * 8);
    std::thread camera([&] {
        for (int i = 1; i <= 200; ++i) {
            std::fill(bits.begin(), bits.end(), static_cast<unsigned char>(i));
            window.SetImagePtr(16, 8, 8, bits.data());
            window.SetRowOrder(i & 1);
            window.ImageUpdate();
        }
    });
    camera.join();
    QApplication::processEvents();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_LE(edited.count(), 2);
    const QImage screen = window.GetView()->GetScreen();
    EXPECT_EQ(qGray(screen.pixel(screen.rect().center())), 200);
    window.ImageUpdate();
    EXPECT_GE(edited.count(), 2);
}

TEST_F(WndHost, TheLevelUnderTheMouseOfAColourPictureShownInGrayIsAGrayColour)
{
    showColor(40, 30);
    ASSERT_TRUE(window.SendCommand(6603));
    QApplication::processEvents();
    QSignalSpy hovered(window.GetView(), &CKestView::pixelHovered);
    QWidget* const area = window.GetView()->viewport();
    std::set<unsigned int> values;
    for (int x = 0; x < 40; ++x) {
        const QPointF at(window.GetView()->ImageToDevice(x, 10).x + 0.5,
                         window.GetView()->ImageToDevice(0, 10).y + 0.5);
        QMouseEvent move(QEvent::MouseMove, at, area->mapToGlobal(at), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(area, &move);
        values.insert(hovered.last()[2].toUInt());
    }
    EXPECT_EQ(values, (std::set<unsigned int>{0x000000, 0xFFFFFF}));
}

TEST_F(WndHost, AToolSeesThePictureTurnedOverWithItsRowOrder)
{
    pixels = {0, 0, 0, 0, 200, 200, 200, 200};
    window.SetImagePtr(4, 2, 8, pixels.data()); // the dark row is the lower one
    ASSERT_TRUE(window.SendCommand(6603));
    const auto lower = [this] {
        QApplication::processEvents();
        const CPoint at = window.GetView()->ImageToDevice(2, 1);
        const qreal scale = window.devicePixelRatioF();
        return qGray(window.GetView()->GetScreen().pixel(int((at.x + 4) * scale), int((at.y + 4) * scale)));
    };
    window.ZoomFitTo();
    EXPECT_EQ(lower(), 0);
    window.SetRowOrder(TOP_DOWN);
    EXPECT_EQ(lower(), 255);
}

TEST_F(WndHost, SeveralWindowsLiveInOneDialogAndKeepApart)
{
    QDialog dialog;
    QVBoxLayout layout(&dialog);
    CKestWnd windows[3];
    for (int i = 0; i < 3; ++i) {
        layout.addWidget(&windows[i]);
        windows[i].CreateImage(10 * (i + 1), 20, 8);
    }
    dialog.resize(500, 700);
    dialog.show();
    QApplication::processEvents();
    QTest::mouseClick(windows[1].findChild<CDrawButton2*>("command_6600"), Qt::LeftButton);
    windows[1].SetTrackerPosition(CRect(0, 0, 5, 5));
    windows[1].SendCommand(6618);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(windows[i].IsTrackerMode(), i == 1);
        EXPECT_EQ(windows[i].GetWidth(), 10 * (i + 1));
        EXPECT_GT(windows[i].GetView()->height(), 100);
    }
}

TEST_F(WndHost, TextsFollowTheLanguageOfTheApplication)
{
    Marking marking;
    QCoreApplication::installTranslator(&marking);
    QApplication::processEvents();
    EXPECT_EQ(button(5503)->toolTip(), "[확대]");
    EXPECT_EQ(button(5503)->accessibleName(), "[확대]");
    EXPECT_EQ(item(6617)->text(), "[Erode(&R)]");
    QCoreApplication::removeTranslator(&marking);
    QApplication::processEvents();
    EXPECT_EQ(button(5503)->toolTip(), "확대");
}

TEST(WndEnd, AWindowMayGoWhateverStandsOpen)
{
    const std::vector<std::function<void(CKestWnd&)>> openings = {
        [](CKestWnd& window) { window.SendCommand(6500); },
        [](CKestWnd& window) { window.SendCommand(5500); },
        [](CKestWnd& window) { window.SendCommand(6603); },
        [](CKestWnd& window) { window.SendCommand(3304); },
        [](CKestWnd& window) {
            window.findChild<CDrawButton2*>("command_5500")->setFocus(Qt::TabFocusReason);
        },
        [](CKestWnd& window) { window.UserCreateView(&CKestView::staticMetaObject); },
        [](CKestWnd& window) {
            window.resize(150, 200);
            QApplication::processEvents();
            window.findChild<CDrawButton2*>("moreCommands")->click();
        }};
    for (const auto& open : openings) {
        auto window = std::make_unique<CKestWnd>();
        window->resize(800, 400);
        window->CreateImage(200, 100, 8);
        window->SetTrackerPosition(CRect(10, 10, 60, 60));
        window->SetTrackerMode(1);
        window->show();
        window->activateWindow();
        QApplication::processEvents();
        open(*window);
        QApplication::processEvents();
        window.reset();
        QApplication::processEvents();
    }
    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty());
}
