#include "array/Array.h"
#include "tests/support/Random.h"
#include "tools/PatternEditDlg.h"
#include "tools/PatternEditView.h"
#include "tools/PatternTemplate.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using ormalux::PatternHistory;
using ormalux::PatternRead;
using ormalux::PatternTemplate;

/// A file's bytes, its counts as given.
QByteArray fileBytes(int key, int black, int white, int threshold, int width, int height,
                     const std::vector<std::uint8_t>& pixels)
{
    QByteArray bytes(1, char(key));
    for (const int value : {black, white, threshold, width, height})
        for (int i = 0; i < 4; ++i)
            bytes.append(char(unsigned(value) >> (8 * i)));
    return bytes.append(reinterpret_cast<const char*>(pixels.data()), qsizetype(pixels.size()));
}

std::vector<std::uint8_t> blackAndWhite(int count, unsigned seed)
{
    auto pixels = testing_support::randomBytes(std::size_t(count), seed);
    for (auto& pixel : pixels)
        pixel = pixel < 128 ? 0 : 255;
    return {pixels.begin(), pixels.end()};
}

PatternTemplate sample(int width, int height, unsigned seed)
{
    return {'7', 128, width, height, blackAndWhite(width * height, seed)};
}

TEST(PatternTemplate, FlipsMoveEveryPixelToItsMirrorPlace)
{
    for (const auto& [width, height] :
         {std::pair(1, 1), std::pair(5, 4), std::pair(4, 5), std::pair(17, 3)}) {
        const PatternTemplate old = sample(width, height, 3);
        PatternTemplate across = old, down = old;
        across.flipLeftRight();
        down.flipUpDown();
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                EXPECT_EQ(across.at(width - 1 - x, y), old.at(x, y));
                EXPECT_EQ(down.at(x, height - 1 - y), old.at(x, y));
            }
        across.flipLeftRight();
        down.flipUpDown();
        EXPECT_EQ(across, old);
        EXPECT_EQ(down, old);
    }
}

TEST(PatternTemplate, ResizeKeepsTheTopLeftAndAddsWhite)
{
    const PatternTemplate old = sample(10, 10, 4);
    for (const auto& [width, height] :
         {std::pair(12, 8), std::pair(3, 15), std::pair(20, 20), std::pair(1, 1)}) {
        PatternTemplate pattern = old;
        ASSERT_TRUE(pattern.resize(width, height));
        ASSERT_EQ(pattern.pixels.size(), std::size_t(width * height));
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                EXPECT_EQ(pattern.at(x, y), old.contains(x, y) ? old.at(x, y) : 255);
    }
    for (const auto& [width, height] : {std::pair(0, 5), std::pair(-1, 5), std::pair(8193, 1),
                                        std::pair(8192, 8192), std::pair(1 << 30, 1 << 30)}) {
        PatternTemplate pattern = old;
        EXPECT_FALSE(pattern.resize(width, height));
        EXPECT_EQ(pattern, old);
    }
}

TEST(PatternTemplate, RefusesWhatIsNoSourceBeforeItTakesMemory)
{
    const QTemporaryDir folder;
    const auto read = [&folder](const QByteArray& bytes) {
        QFile file(folder.filePath("a.mcs"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();
        const auto [how, pattern] = ormalux::readPattern(file.fileName().toUtf8().constData());
        EXPECT_EQ(pattern.pixels.empty(), how != PatternRead::Done || pattern.width == 0);
        return how;
    };
    const std::vector<std::uint8_t> six(6, 255);
    EXPECT_EQ(read(fileBytes(0, 0, 6, 9, 3, 2, six)), PatternRead::Done);
    EXPECT_EQ(read(fileBytes(0, 0, 6, 9, 3, 2, six) + "rest"), PatternRead::Done);
    EXPECT_EQ(read(fileBytes(0, 0, 0, 0, 0, 7, {})), PatternRead::Done);
    EXPECT_EQ(read(fileBytes(0, 0, 6, 9, 3, 2, six).chopped(1)), PatternRead::NotASource);
    EXPECT_EQ(read(fileBytes(0, 0, 6, 9, -3, -2, six)), PatternRead::NotASource);
    EXPECT_EQ(read(fileBytes(0, 0, 6, 9, 0x7fffffff, 0x7fffffff, six)), PatternRead::NotASource);
    EXPECT_EQ(read(fileBytes(0, 0, 0, 0, 8193, 1, std::vector<std::uint8_t>(8193))), PatternRead::TooLarge);
    EXPECT_EQ(read("BM"), PatternRead::NotASource);
    EXPECT_EQ(read({}), PatternRead::NotASource);
    EXPECT_EQ(ormalux::readPattern("/no/such/file").first, PatternRead::NoFile);
    EXPECT_EQ(ormalux::readPattern(folder.path().toUtf8().constData()).first, PatternRead::NoFile);
}

TEST(PatternHistory, ReturnsEveryStateAndForgetsTheFutureOnlyForARealChange)
{
    PatternHistory history;
    history.restart(sample(6, 5, 8));
    std::vector<PatternTemplate> states{history.current()};
    std::mt19937 random(5);
    for (int i = 0; i < 40; ++i) {
        history.beginStep();
        switch (random() % 4) {
        case 0:
            history.edited().flipLeftRight();
            break;
        case 1:
            history.edited().resize(int(random() % 9) + 1, int(random() % 9) + 1);
            break;
        default:
            history.edited().set(int(random() % 9), int(random() % 9), random() % 2 ? 0 : 255);
        }
        history.endStep();
        if (!(states.back() == history.current()))
            states.push_back(history.current());
    }
    for (std::size_t i = states.size() - 1; i > 0; --i) {
        EXPECT_TRUE(history.undo());
        EXPECT_EQ(history.current(), states[i - 1]);
    }
    EXPECT_FALSE(history.undo());
    EXPECT_TRUE(history.redo());
    history.beginStep(); // changes nothing
    history.endStep();
    for (std::size_t i = 2; i < states.size(); ++i) {
        EXPECT_TRUE(history.redo());
        EXPECT_EQ(history.current(), states[i]);
    }
    EXPECT_FALSE(history.redo());
    history.undo();
    history.beginStep();
    history.edited().key = 1;
    history.endStep();
    EXPECT_FALSE(history.canRedo());
}

TEST(PatternHistory, ForgetsTheOldestRatherThanTakeAllMemory)
{
    PatternHistory history;
    history.restart({0, 0, 4096, 4096, std::vector<std::uint8_t>(4096 * 4096)});
    for (int i = 0; i < 20; ++i) {
        history.beginStep();
        history.edited().set(i, 0, 255);
        history.endStep();
    }
    int steps = 0;
    while (history.undo())
        ++steps;
    EXPECT_GE(steps, 5);
    EXPECT_LT(steps, 20);
}

class PatternEdit : public testing::Test
{
protected:
    PatternEdit()
    {
        path = folder.filePath("part.mcs");
        write(fileBytes(255, 1, 2, 140, 20, 12, blackAndWhite(240, 6)));
    }
    void write(const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    QByteArray bytes() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void open()
    {
        dialog = std::make_unique<CPatternEditDlg>(path);
        dialog->show();
        settle();
        view = dialog->view();
        port = view->viewport();
    }
    static void settle()
    {
        for (int i = 0; i < 4; ++i)
            QApplication::processEvents();
    }
    template <class Widget>
    Widget* control(const char* name)
    {
        Widget* const found = dialog->findChild<Widget*>(QLatin1String(name));
        EXPECT_TRUE(found) << name;
        return found;
    }
    void click(const char* name)
    {
        QTest::mouseClick(control<QPushButton>(name), Qt::LeftButton);
        settle();
    }
    std::string message() { return control<QLabel>("message")->text().toStdString(); }
    /// The middle of a cell in the viewport.
    QPoint cell(int x, int y) const
    {
        return {x * 15 + 7 - view->horizontalScrollBar()->value(),
                y * view->cellHeight() + view->cellHeight() / 2 - view->verticalScrollBar()->value()};
    }
    void send(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held)
    {
        QMouseEvent event(type, QPointF(at), QPointF(port->mapToGlobal(at)), button, held, {});
        QApplication::sendEvent(port, &event);
    }
    /// A drag from cell to cell with a button.
    void drag(std::initializer_list<QPoint> cells, Qt::MouseButton button = Qt::LeftButton)
    {
        const QPoint* at = cells.begin();
        send(QEvent::MouseButtonPress, cell(at->x(), at->y()), button, button);
        while (++at != cells.end())
            send(QEvent::MouseMove, cell(at->x(), at->y()), Qt::NoButton, button);
        --at;
        send(QEvent::MouseButtonRelease, cell(at->x(), at->y()), button, {});
        settle();
    }
    const PatternTemplate& pattern() const { return view->pattern(); }
    QImage seen() { return port->grab().toImage().convertToFormat(QImage::Format_RGB32); }

    QTemporaryDir folder;
    QString path;
    std::unique_ptr<CPatternEditDlg> dialog;
    CPatternEditView* view = nullptr;
    QWidget* port = nullptr;
};

TEST_F(PatternEdit, OpensTheFileAsItStandsAndLeavesItAlone)
{
    const QByteArray before = bytes();
    open();
    EXPECT_EQ(dialog->windowTitle(), "패턴 소스 편집");
    EXPECT_EQ(control<QLineEdit>("key")->text(), QString(QChar(0xff)));
    EXPECT_EQ(control<QSpinBox>("width")->value(), 20);
    EXPECT_EQ(control<QSpinBox>("height")->value(), 12);
    EXPECT_EQ(pattern().pixels, blackAndWhite(240, 6));
    const QSize screen = QGuiApplication::primaryScreen()->size();
    EXPECT_EQ(view->cellHeight(), int(double(screen.width()) / screen.height() * 15 - 1));
    drag({{3, 3}});
    click("undo");
    EXPECT_TRUE(dialog->close()); // nothing changed, nothing asked
    EXPECT_EQ(bytes(), before);
}

TEST_F(PatternEdit, LeftPaintsBlackRightWhiteAndADragLeavesNoGap)
{
    open();
    drag({{0, 0}, {0, 0}}, Qt::RightButton);
    EXPECT_EQ(pattern().at(0, 0), 255);
    for (int y = 0; y < 12; ++y)
        drag({{0, y}, {19, y}}, Qt::RightButton);
    EXPECT_EQ(pattern().whiteCount(), 240);
    drag({{2, 1}, {17, 6}, {17, 10}}); // three positions of a fast mouse
    for (int x = 2; x <= 17; ++x)
        EXPECT_EQ(pattern().at(x, int(std::lround(1 + (x - 2) / 3.0))), 0) << x;
    for (int y = 6; y <= 10; ++y)
        EXPECT_EQ(pattern().at(17, y), 0) << y;
    EXPECT_EQ(pattern().blackCount(), 16 + 4);
    click("undo"); // the whole stroke
    EXPECT_EQ(pattern().blackCount(), 0);
}

TEST_F(PatternEdit, ClicksBesideTheTemplateWriteNothing)
{
    open();
    const PatternTemplate before = pattern();
    for (const QPoint at : {QPoint(5, 12), QPoint(20, 5), QPoint(20, 12), QPoint(0, 13), QPoint(30, 30)})
        drag({at});
    // A captured mouse leaves the view: the first row and column are not outside's.
    const bool inside = before.at(4, 4) == 0;
    send(QEvent::MouseButtonPress, cell(4, 4), inside ? Qt::LeftButton : Qt::RightButton,
         inside ? Qt::LeftButton : Qt::RightButton);
    send(QEvent::MouseButtonRelease, cell(4, 4), Qt::LeftButton, {});
    send(QEvent::MouseButtonPress, QPoint(-8, -8), Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, QPoint(-3, 40), Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, QPoint(-3, 40), Qt::LeftButton, {});
    EXPECT_EQ(pattern(), before);
    EXPECT_FALSE(view->isModified());
}

TEST_F(PatternEdit, PaintsTheCellUnderTheMouseWhenScrolledAndOnAFastSecondClick)
{
    write(fileBytes(0, 0, 0, 0, 200, 150, std::vector<std::uint8_t>(200 * 150, 255)));
    open();
    EXPECT_EQ(view->horizontalScrollBar()->maximum(), 200 * 15 + 1 - port->width());
    view->horizontalScrollBar()->setValue(1007);
    view->verticalScrollBar()->setValue(333);
    send(QEvent::MouseButtonDblClick, {100, 100}, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, {100, 100}, Qt::LeftButton, {});
    EXPECT_EQ(pattern().at(1107 / 15, 433 / view->cellHeight()), 0);
    EXPECT_EQ(pattern().blackCount(), 1);
}

TEST_F(PatternEdit, CrossFollowsTheMouseAndLeavesNoTrace)
{
    open();
    control<QPushButton>("close")->setFocus();
    const QImage before = seen();
    send(QEvent::MouseMove, {100, 70}, Qt::NoButton, {});
    EXPECT_EQ(view->focusCross(), QPoint(100, 70));
    const QImage crossed = seen();
    EXPECT_NE(crossed, before);
    send(QEvent::MouseMove, {40, 90}, Qt::NoButton, {});
    EXPECT_NE(seen(), crossed);
    view->horizontalScrollBar()->setRange(0, 50);
    view->horizontalScrollBar()->setValue(10);
    EXPECT_EQ(view->focusCross(), QPoint(-1, -1));
    view->horizontalScrollBar()->setValue(0);
    EXPECT_EQ(seen(), before);
}

TEST_F(PatternEdit, DrawsCellsGridFrameAndCentreInTheirColours)
{
    write(fileBytes(0, 0, 0, 0, 4, 3, {0, 255, 0, 255, 255, 0, 255, 0, 0, 0, 255, 255}));
    open();
    control<QPushButton>("close")->setFocus();
    const QImage drawn = seen();
    const int high = view->cellHeight();
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x) {
            const QPoint inside(x * 15 + 4, y * high + 3); // beside the centre lines
            EXPECT_EQ(qGray(drawn.pixel(inside)), pattern().at(x, y)) << x << ' ' << y;
        }
    EXPECT_EQ(drawn.pixel(15, high - 3), 0xffc0c0c0);
    EXPECT_EQ(drawn.pixel(3, high), 0xffc0c0c0);
    EXPECT_EQ(drawn.pixel(0, 5), 0xff000080); // a blue frame
    EXPECT_EQ(drawn.pixel(60, 5), 0xff000080);
    EXPECT_EQ(drawn.pixel(30, 5), 0xff800000); // the centre in red
    EXPECT_EQ(drawn.pixel(5, 3 * high / 2), 0xff800000);
    EXPECT_EQ(drawn.pixel(61, 5), 0xffffffff);
}

TEST_F(PatternEdit, KeysPaintWithoutAMouse)
{
    open();
    view->setFocus();
    for (int i = 0; i < 25; ++i)
        QTest::keyClick(view, Qt::Key_Right); // stops at the edge
    QTest::keyClick(view, Qt::Key_Down);
    EXPECT_EQ(view->cursorCell(), QPoint(19, 1));
    QTest::keyClick(view, Qt::Key_W);
    EXPECT_EQ(pattern().at(19, 1), 255);
    QTest::keyClick(view, Qt::Key_Space);
    EXPECT_EQ(pattern().at(19, 1), 0);
    QTest::keyClick(view, Qt::Key_Home, Qt::ShiftModifier); // black on the way
    for (int x = 0; x < 20; ++x)
        EXPECT_EQ(pattern().at(x, 1), 0);
    QTest::keyClick(view, Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(pattern().at(1, 1), 255);
    QTest::keyClick(view, Qt::Key_B);
    EXPECT_EQ(pattern().at(1, 1), 0);
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(dialog.get(), Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(pattern().pixels, blackAndWhite(240, 6));
    QTest::keyClick(dialog.get(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(pattern().at(19, 1), 255);
}

TEST_F(PatternEdit, SavesWhatIsSeenWithItsOwnCountsForTheMatcher)
{
    open();
    QSignalSpy saved(dialog.get(), &CPatternEditDlg::saved);
    click("flipLeftRight");
    click("flipUpDown");
    control<QSpinBox>("width")->setValue(22);
    control<QSpinBox>("height")->setValue(9);
    click("resize");
    drag({{21, 8}, {12, 8}});
    const PatternTemplate shown = pattern();
    click("save");
    EXPECT_FALSE(dialog->isVisible());
    ASSERT_EQ(saved.count(), 1);
    EXPECT_EQ(saved[0][0].toString(), path);

    CMatchSrcArray sources;
    sources.Add(path.toUtf8().constData());
    ASSERT_EQ(sources.GetCount(), 1);
    EXPECT_EQ(sources[0].key, 255); // the polarity survives
    EXPECT_EQ(sources[0].threshold, 140);
    EXPECT_EQ(sources[0].width, 22);
    EXPECT_EQ(sources[0].height, 9);
    ASSERT_TRUE(sources[0].data);
    EXPECT_EQ(std::vector<std::uint8_t>(sources[0].data, sources[0].data + 22 * 9), shown.pixels);
    EXPECT_EQ(sources[0].black_count, std::count(shown.pixels.begin(), shown.pixels.end(), 0));
    EXPECT_EQ(sources[0].white_count, std::count(shown.pixels.begin(), shown.pixels.end(), 255));
}

TEST_F(PatternEdit, KeyIsTheFieldsCharacterOnceItIsEdited)
{
    open();
    auto* const key = control<QLineEdit>("key");
    key->setFocus();
    key->selectAll();
    QTest::keyClick(key, Qt::Key_Delete); // an empty field says nothing
    EXPECT_EQ(pattern().key, 255);
    key->selectAll();
    QTest::keyClicks(key, "7");
    EXPECT_EQ(pattern().key, 0x37);
    EXPECT_EQ(control<QComboBox>("polarity")->currentIndex(), -1);
    click("save");
    EXPECT_EQ(bytes()[0], '7');

    open();
    auto* const polarity = control<QComboBox>("polarity");
    polarity->setFocus();
    QTest::keyClick(polarity, Qt::Key_Down); // Black Object
    EXPECT_EQ(pattern().key, 0);
    click("save");
    EXPECT_EQ(bytes()[0], '\0');
}

TEST_F(PatternEdit, AFileThatCannotBeWrittenKeepsTheDialogAndTheOldFile)
{
    open();
    const QByteArray before = bytes();
    drag({{3, 3}, {3, 9}});
    drag({{4, 3}, {4, 9}}, Qt::RightButton);
    QFile::remove(path);
    ASSERT_TRUE(QDir().mkpath(path + "/in the way")); // a folder of that name, whoever runs this
    QSignalSpy saved(dialog.get(), &CPatternEditDlg::saved);
    click("save");
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(saved.count(), 0);
    EXPECT_NE(message().find(QDir::toNativeSeparators(path).toStdString()), std::string::npos);
    EXPECT_TRUE(view->isModified());

    ASSERT_TRUE(QDir(path).removeRecursively());
    write(before);
    click("save");
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(bytes().size(), before.size());
    EXPECT_NE(bytes(), before);
}

TEST_F(PatternEdit, ClosingWithUnsavedChangesAsks)
{
    const QByteArray before = bytes();
    open();
    drag({{0, 0}, {9, 0}});
    drag({{0, 1}, {9, 1}}, Qt::RightButton);
    const auto answer = [this](QMessageBox::StandardButton button) {
        QTest::keyClick(dialog.get(), Qt::Key_Escape);
        settle();
        EXPECT_TRUE(dialog->isVisible());
        auto* const box = dialog->findChild<QMessageBox*>("unsavedChanges");
        ASSERT_TRUE(box);
        QTest::mouseClick(box->button(button), Qt::LeftButton);
        settle();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    answer(QMessageBox::Cancel);
    EXPECT_TRUE(dialog->isVisible());
    answer(QMessageBox::Discard);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(bytes(), before);
    open();
    drag({{0, 0}, {9, 0}});
    drag({{0, 1}, {9, 1}}, Qt::RightButton);
    answer(QMessageBox::Save);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_NE(bytes(), before);
}

TEST_F(PatternEdit, SaveAsWritesAnotherFileAndStaysOpen)
{
    open();
    const QByteArray before = bytes();
    click("flipUpDown");
    click("saveAs");
    auto* const files = dialog->findChild<QFileDialog*>("saveAsFile");
    ASSERT_TRUE(files);
    EXPECT_EQ(files->defaultSuffix(), "OCS");
    EXPECT_EQ(files->directory(), QDir::current());
    EXPECT_EQ(files->nameFilters().front(), "Ocr Source Files (*.ocs) (*.ocs)");
    const QString other = folder.filePath("seven.ocs");
    Q_EMIT files->fileSelected(other);
    files->close();
    settle();
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(bytes(), before);
    const auto [how, written] = ormalux::readPattern(other.toUtf8().constData());
    EXPECT_EQ(how, PatternRead::Done);
    EXPECT_EQ(written, pattern());
}

TEST_F(PatternEdit, AFileThatIsNoSourceIsNamedAndNotOverwritten)
{
    write("BM this is a picture");
    const QByteArray before = bytes();
    open();
    EXPECT_NE(message().find(QDir::toNativeSeparators(path).toStdString()), std::string::npos);
    EXPECT_TRUE(pattern().pixels.empty());
    for (const char* const button : {"flipLeftRight", "flipUpDown", "resize", "undo"})
        click(button);
    drag({{0, 0}, {5, 5}});
    control<QSpinBox>("width")->setValue(5);
    control<QSpinBox>("height")->setValue(5);
    click("resize");
    EXPECT_EQ(pattern().whiteCount(), 25);
    EXPECT_FALSE(control<QPushButton>("save")->isEnabled());
    QTest::keyClick(dialog.get(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(bytes(), before);
}

} // namespace
