#include "tests/support/WndFixture.h"
#include "view/IconPixmap.h"
#include "view/TipWindow.h"

#include <QAccessible>
#include <QDialog>
#include <QHelpEvent>
#include <QLineEdit>
#include <QVBoxLayout>

#include <set>

namespace {

using WndToolbar = testing_support::WndFixture;

struct ExpectedButton
{
    int command;
    const char* tip;
    const char* caption;
};
constexpr ExpectedButton expectedButtons[] = {
    {5500, "BMP 파일 열기", ""},
    {5501, "BMP 파일로 저장 하기", ""},
    {5505, "1:1 보기", ""},
    {5502, "화면에 꽉 차게 보기", ""},
    {5503, "확대", ""},
    {5504, "축소", ""},
    {6600, "ROI 영역 설정 하기", ""},
    {6605, "왼쪽으로 90도 돌리기", ""},
    {6606, "오른쪽으로 90도 돌리기", ""},
    {6607, "좌우 바꾸기", ""},
    {6608, "상하 바꾸기", ""},
    {6609, "180도 돌리기", ""},
    {6610, "임의로 돌리기", ""},
    {6500, "Gamma, Light, Erode, Dilate, Open Box, Close Box", "E"},
    {6501, "Histogram Equalize, Normalize, Root, Log, Stretch", "H.E"},
    {6502, "Blur, Soften, Gaussian 5X5, Gaussian 3X3, Sharpen, Emboss, Edge, Laplacian, User Filter", "F"},
    {6601, "BLOB Object 추출 하기", ""},
    {6602, "히스토그램 보기", ""},
    {6603, "Threshold", ""},
    {6604, "Double Threshold", ""},
    {6709, "Point 게이지", ""},
    {6710, "Line 게이지", ""},
    {6711, "OCR", ""},
    {6712, "Match", ""}};

struct ExpectedMenu
{
    int button;
    std::vector<std::pair<int, const char*>> items;
};
const std::vector<ExpectedMenu> expectedMenus = {{6500,
                                                  {{6701, "Gamma(&G) ..."},
                                                   {6702, "Light(&L) ..."},
                                                   {0, ""},
                                                   {6617, "Erode(&R)"},
                                                   {6618, "Dilate(&D)"},
                                                   {6619, "OpenBox(&O)"},
                                                   {6620, "CloseBox(&C)"}}},
                                                 {6501,
                                                  {{6703, "Histogram Equalize(&E)"},
                                                   {6704, "Histogram Normalize(&N)"},
                                                   {6705, "Histogram Root(&R)"},
                                                   {6706, "Histogram Log(&L)"},
                                                   {6707, "Histogram Stretch(&S)"}}},
                                                 {6502,
                                                  {{6626, "Blur(&B)"},
                                                   {6627, "Soften(&S)"},
                                                   {6628, "Gaussian 5X5(&5)"},
                                                   {6629, "Gaussian 3X3(&3)"},
                                                   {0, ""},
                                                   {6625, "Sharpen(&P)"},
                                                   {0, ""},
                                                   {6630, "Emboss(&E)"},
                                                   {6631, "Edge(&G)"},
                                                   {6632, "Laplacian(&L)"},
                                                   {0, ""},
                                                   {6633, "Filter(&F) ..."}}}};

QPalette paletteOf(QColor ground, QColor ink)
{
    QPalette palette(ground);
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::WindowText, ink);
    palette.setColor(QPalette::Highlight, QColor(61, 142, 228));
    return palette;
}

QImage imageOf(QWidget& widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// The largest difference in lightness between two pixels.
int contrast(const QImage& image)
{
    int low = 255;
    int high = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            low = std::min(low, qGray(image.pixel(x, y)));
            high = std::max(high, qGray(image.pixel(x, y)));
        }
    return high - low;
}

} // namespace

TEST_F(WndToolbar, ButtonsStandInOrderWithTheirNamesTipsAndRoles)
{
    showGray(64, 48);
    int x = 0;
    for (const ExpectedButton& expected : expectedButtons) {
        CDrawButton2* const found = button(expected.command);
        ASSERT_TRUE(found) << expected.command;
        EXPECT_TRUE(found->isVisible());
        EXPECT_GE(found->x(), x);
        x = found->x() + found->width();
        EXPECT_LT(found->y() + found->height(), 36);
        EXPECT_EQ(found->toolTip(), QString::fromUtf8(expected.tip));
        EXPECT_EQ(found->text(), QString::fromUtf8(expected.caption));
        QAccessibleInterface* const access = QAccessible::queryAccessibleInterface(found);
        ASSERT_TRUE(access);
        EXPECT_EQ(access->text(QAccessible::Name), QString::fromUtf8(expected.tip));
        EXPECT_EQ(access->role(), *expected.caption          ? QAccessible::ButtonMenu
                                  : expected.command == 6600 ? QAccessible::CheckBox
                                                             : QAccessible::PushButton);
    }
    EXPECT_LE(x, 800);
    EXPECT_EQ(window.findChildren<CDrawButton2*>().size(), 25); // and the one for those without room
    EXPECT_FALSE(window.findChild<CDrawButton2*>("moreCommands")->isVisible());
}

TEST_F(WndToolbar, MenusHoldTheirCommandsInOrderWithTheirSeparators)
{
    for (const ExpectedMenu& expected : expectedMenus) {
        const QList<QAction*> actions = button(expected.button)->menu()->actions();
        ASSERT_EQ(std::size_t(actions.size()), expected.items.size());
        for (std::size_t i = 0; i < expected.items.size(); ++i) {
            const auto& [command, text] = expected.items[i];
            EXPECT_EQ(actions[int(i)]->isSeparator(), command == 0);
            EXPECT_EQ(actions[int(i)]->text(), QString::fromUtf8(text));
            EXPECT_EQ(actions[int(i)]->data().toInt(), command);
        }
    }
}

TEST_F(WndToolbar, TheViewFillsWhatStripAndFrameLeave)
{
    showGray(64, 48);
    EXPECT_EQ(window.GetView()->geometry(), QRect(1, 40, 798, 559));
    const auto colorAt = [this](int x, int y) {
        const QImage image = imageOf(window);
        const double ratio = image.devicePixelRatio();
        return image.pixelColor(int((x + 0.5) * ratio), int((y + 0.5) * ratio));
    };
    const QColor frame(0x52, 0x5F, 0x67);
    for (const QPoint at :
         {QPoint(0, 300), QPoint(799, 300), QPoint(400, 0), QPoint(400, 599), QPoint(400, 36)})
        EXPECT_EQ(colorAt(at.x(), at.y()), frame) << at.x() << ' ' << at.y();
    EXPECT_EQ(colorAt(796, 38), window.palette().color(QPalette::Window));

    window.ViewToolBar(0);
    EXPECT_EQ(window.GetView()->geometry(), QRect(1, 1, 798, 598));
    EXPECT_FALSE(button(5500)->isVisible());
    EXPECT_NE(colorAt(400, 36), frame);
    window.ViewToolBar(1);
    EXPECT_EQ(window.GetView()->y(), 40);
    EXPECT_TRUE(button(5500)->isVisible());
    window.resize(3, 3); // nothing left for the view
    QApplication::processEvents();
}

TEST_F(WndToolbar, EveryCommandIsReachedAtEveryWidth)
{
    showGray(64, 48);
    auto* const more = window.findChild<CDrawButton2*>("moreCommands");
    for (const int width : {120, 260, 420, 611, 621, 700, 735, 800}) {
        window.resize(width, 300);
        QApplication::processEvents();
        std::set<int> reached;
        for (const ExpectedButton& expected : expectedButtons) {
            const CDrawButton2* const one = button(expected.command);
            if (!one->isVisible())
                continue;
            reached.insert(expected.command);
            EXPECT_LE(one->geometry().right(), width - 2);
            EXPECT_FALSE(more->isVisible() && one->geometry().intersects(more->geometry()));
        }
        if (more->isVisible()) {
            more->click();
            ASSERT_TRUE(more->menu()->isVisible());
            for (QAction* const action : more->menu()->actions())
                if (!action->isSeparator()) {
                    EXPECT_TRUE(reached.insert(action->objectName().mid(5).toInt()).second);
                }
            more->menu()->close();
        }
        EXPECT_EQ(reached.size(), std::size(expectedButtons)) << width;
    }
    window.resize(200, 300);
    QApplication::processEvents();
    more->click();
    auto* const region = window.findChild<QAction*>("more_6600");
    ASSERT_TRUE(region);
    region->trigger();
    EXPECT_EQ(window.IsTrackerMode(), 1);
    window.SendCommand(6502); // the menu of a hidden button opens all the same
    EXPECT_TRUE(button(6502)->menu()->isVisible());
    button(6502)->menu()->close();
}

TEST_F(WndToolbar, APressOpensTheMenuBelowItsButtonAndBothButtonsChoose)
{
    showGray(64, 48);
    for (const Qt::MouseButton chooser : {Qt::LeftButton, Qt::RightButton}) {
        CDrawButton2* const caption = button(6500);
        QTest::mousePress(caption, Qt::LeftButton);
        QMenu* const menu = caption->menu();
        ASSERT_TRUE(menu->isVisible());
        EXPECT_TRUE(caption->isDown());
        QPoint corner = caption->mapToGlobal(QPoint(0, caption->height()));
        corner.setX(std::min(corner.x(), window.screen()->geometry().right() + 1 - menu->width()));
        EXPECT_EQ(menu->pos(), corner); // the screens of the larger factors are narrow
        const std::vector<unsigned char> before = seen();
        const QPoint on = menu->actionGeometry(item(6618)).center();
        QTest::mouseMove(menu, on);
        QTest::mousePress(menu, chooser, {}, on);
        QTest::mouseRelease(menu, chooser, {}, on);
        EXPECT_FALSE(menu->isVisible());
        EXPECT_FALSE(caption->isDown());
        EXPECT_NE(seen(), before);
    }
}

TEST_F(WndToolbar, StatesLookDifferentAndLegibleOnLightAndDark)
{
    showGray(64, 48);
    CDrawButton2* const one = button(5502);
    for (const QPalette& colors : {paletteOf(QColor(239, 239, 239), Qt::black),
                                   paletteOf(QColor(45, 45, 48), QColor(230, 230, 230))}) {
        window.setPalette(colors);
        QApplication::processEvents();
        std::vector<QImage> states = {imageOf(*one)};
        EXPECT_GT(contrast(states[0]), 150);
        one->setAttribute(Qt::WA_UnderMouse);
        states.push_back(imageOf(*one));
        one->setDown(true);
        states.push_back(imageOf(*one));
        one->setDown(false);
        one->setAttribute(Qt::WA_UnderMouse, false);
        one->setCheckable(true);
        one->setChecked(true);
        states.push_back(imageOf(*one));
        one->setChecked(false);
        one->setFocus(Qt::TabFocusReason);
        states.push_back(imageOf(*one));
        window.GetView()->setFocus();
        one->setEnabled(false);
        states.push_back(imageOf(*one));
        EXPECT_LT(contrast(states.back()), contrast(states[0]) * 2 / 3);
        one->setEnabled(true);
        states.push_back(imageOf(*one));
        EXPECT_EQ(states.back(), states.front());
        for (std::size_t i = 0; i + 1 < states.size(); ++i)
            for (std::size_t k = i + 1; k + 1 < states.size(); ++k)
                EXPECT_NE(states[i], states[k]) << i << ' ' << k;
        for (const ExpectedButton& expected : expectedButtons) {
            button(expected.command)->setEnabled(true);
            EXPECT_GT(contrast(imageOf(*button(expected.command))), 100) << expected.command;
        }
    }
}

TEST_F(WndToolbar, IconsAreDrawnForTheScreenAndNotScaled)
{
    for (const double ratio : {1.0, 1.5, 2.0}) {
        const QImage icon = ormalux::iconPixmap("save", Qt::black, 24, ratio).toImage();
        ASSERT_EQ(icon.width(), int(24 * ratio));
        // The left edge of the disk: nothing, then two units of full ink at once.
        const int row = int(12 * ratio);
        for (int x = 0; x < int(4 * ratio); ++x)
            EXPECT_EQ(qAlpha(icon.pixel(x, row)), x < int(2 * ratio) ? 0 : 255) << ratio << ' ' << x;
    }
    EXPECT_TRUE(ormalux::iconPixmap("none", Qt::black, 24, 1).isNull());
}

TEST_F(WndToolbar, TheTipShowsUnderTheMouseAndWithTheFocus)
{
    showGray(64, 48);
    auto* const tip = window.findChild<CTipWnd*>("tip");
    CDrawButton2* const save = button(5501);
    QHelpEvent asked(QEvent::ToolTip, QPoint(5, 5), save->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(save, &asked);
    ASSERT_TRUE(tip->isVisible());
    EXPECT_EQ(tip->GetText(), "BMP 파일로 저장 하기");
    EXPECT_GE(tip->y(), save->mapToGlobal(QPoint(0, save->height())).y());
    QEvent left(QEvent::Leave);
    QApplication::sendEvent(save, &left);
    EXPECT_FALSE(tip->isVisible());

    window.activateWindow();
    button(6609)->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(tip->isVisible());
    EXPECT_EQ(tip->GetText(), "180도 돌리기");
    window.GetView()->setFocus();
    EXPECT_FALSE(tip->isVisible());
    QApplication::sendEvent(button(6502), &asked); // a long text stays on the screen
    EXPECT_TRUE(window.screen()->geometry().contains(tip->geometry()));
    QTest::mousePress(button(6502), Qt::LeftButton);
    EXPECT_FALSE(tip->isVisible());
    button(6502)->menu()->close();
}

TEST_F(WndToolbar, TabReachesEveryButtonThatCanRunAndEnterPressesItNotTheHostsDefault)
{
    QDialog dialog;
    QVBoxLayout layout(&dialog);
    CKestWnd inside;
    QPushButton ok("OK");
    ok.setDefault(true);
    int accepted = 0;
    QObject::connect(&ok, &QPushButton::clicked, [&accepted] { ++accepted; });
    layout.addWidget(&inside);
    layout.addWidget(&ok);
    inside.CreateImage(64, 48, 8);
    dialog.resize(820, 500);
    dialog.show();
    dialog.activateWindow();
    QApplication::processEvents();
    inside.findChild<CDrawButton2*>("command_5500")->setFocus(Qt::TabFocusReason);
    std::set<QString> reached;
    for (int i = 0; i < 40 && QApplication::focusWidget(); ++i) {
        reached.insert(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    for (const CDrawButton2* const one : inside.findChildren<CDrawButton2*>())
        EXPECT_EQ(reached.count(one->objectName()), one->isEnabled() && one->isVisible())
            << one->objectName().toStdString();
    EXPECT_EQ(reached.count("pane_59648"), 1u);
    CDrawButton2* const actual = inside.findChild<CDrawButton2*>("command_5505");
    actual->setFocus();
    QTest::keyClick(actual, Qt::Key_Return);
    EXPECT_EQ(inside.GetView()->GetZoom(), 1.0f);
    EXPECT_EQ(accepted, 0);
    QTest::keyClick(actual, Qt::Key_Right); // the neighbour
    EXPECT_TRUE(inside.findChild<CDrawButton2*>("command_5502")->hasFocus());
    CDrawButton2* const menu = inside.findChild<CDrawButton2*>("command_6500");
    for (const int key : {int(Qt::Key_Space), int(Qt::Key_Down), int(Qt::Key_Enter)}) {
        menu->setFocus();
        QTest::keyClick(menu, Qt::Key(key));
        EXPECT_TRUE(menu->menu()->isVisible()) << key;
        menu->menu()->close();
    }
}
