#include "app/PictureFile.h"

#include "tests/app/ViewerFixture.h"

#include <QImageWriter>
#include <QLabel>
#include <QRegularExpression>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace testing_support;
using namespace ormalux::viewer;

namespace {

class PictureFileTest : public ViewerFixture
{
protected:
    QByteArray bytesOf(const QString& name)
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QImage shown() { return pictureOf(window()); }
};

/// Levels that go through all 256 entries of a palette.
QImage indexed(QRgb (*palette)(int))
{
    QImage image(37, 21, QImage::Format_Indexed8);
    QList<QRgb> table;
    for (int i = 0; i < 256; ++i)
        table << palette(i);
    image.setColorTable(table);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, uint((x * 9 + y * 31) % 256));
    return image;
}

QImage deepGray()
{
    QImage image(9, 5, QImage::Format_Grayscale16);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 9; ++x)
            reinterpret_cast<quint16*>(image.scanLine(y))[x] = quint16(x * 7000 + y * 257);
    return image;
}

/// A gray TIFF of 4 x 4 samples.
QByteArray tiff(int bits, int sampleFormat)
{
    const quint32 length = quint32(bits) * 2;
    const quint32 fields[][2] = {{256, 4}, {257, 4},      {258, quint32(bits)},
                                 {259, 1}, {262, 1},      {273, 8},
                                 {278, 4}, {279, length}, {339, quint32(sampleFormat)}};
    QByteArray file("II*\0\0\0\0\0", 8);
    const auto put = [&file](quint32 value, int bytes) {
        for (int i = 0; i < bytes; ++i)
            file.append(char(value >> 8 * i));
    };
    for (quint32 i = 0; i < length; ++i)
        file.append(bits == 16 && i % 2 ? char(i / 2) : char(0x3f)); // 12 bits of 16
    file[4] = char(file.size());
    put(std::size(fields), 2);
    for (const auto& [tag, value] : fields) {
        put(tag, 2);
        put(tag == 273 || tag == 279 ? 4 : 3, 2);
        put(1, 4);
        put(value, 4);
    }
    put(0, 4);
    return file;
}

QImage blackAndWhite()
{
    QImage image(19, 7, QImage::Format_Mono);
    image.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 19; ++x)
            image.setPixel(x, y, uint(x * y % 3 == 0));
    return image;
}

/// The upper eight of 16 bits.
QImage upperBits(const QImage& deep)
{
    QImage image(deep.size(), QImage::Format_Grayscale8);
    for (int y = 0; y < deep.height(); ++y)
        for (int x = 0; x < deep.width(); ++x)
            image.scanLine(y)[x] = uchar(reinterpret_cast<const quint16*>(deep.constScanLine(y))[x] >> 8);
    return image;
}

TEST_F(PictureFileTest, EveryKindIsShownUprightAndInItsOwnColors)
{
    const auto gray = [](int i) { return qRgb(i, i, i); };
    const auto negative = [](int i) { return qRgb(255 - i, 255 - i, 255 - i); };
    const auto rainbow = [](int i) { return qRgb(i, 255 - i, 17); };
    struct Case
    {
        QString name;
        QImage image;
        int depth;
    };
    const Case cases[] = {
        {"색.png", colors(41, 23), 24},
        {"색.bmp", colors(41, 23), 24},
        {"색.tif", colors(41, 23), 24},
        {"회색.png", colors(41, 23).convertToFormat(QImage::Format_Grayscale8), 8},
        {"회색.bmp", indexed(gray), 8},
        {"팔레트.png", indexed(rainbow), 24},
        {"팔레트.bmp", indexed(rainbow), 24},
        {"뒤집힌 회색.png", indexed(negative), 8},
        {"16비트.png", deepGray(), 8},
        {"흑백.png", blackAndWhite(), 8},
    };
    for (const Case& c : cases) {
        QString why;
        ASSERT_TRUE(openPicture(window(), saved(c.image, c.name), &why)) << qPrintable(why);
        EXPECT_EQ(window().GetBitCount(), c.depth) << qPrintable(c.name);
        const auto depth = c.depth == 8 ? QImage::Format_Grayscale8 : QImage::Format_BGR888;
        const QImage read(path(c.name));
        const bool deep = read.format() == QImage::Format_Grayscale16;
        EXPECT_EQ(shown(), deep ? upperBits(read) : read.convertToFormat(depth)) << qPrintable(c.name);
    }
}

TEST_F(PictureFileTest, ATurnedCameraPictureIsUpright)
{
    QImageWriter writer(path("turned.jpg"), "jpg");
    writer.setQuality(100);
    writer.setTransformation(QImageIOHandler::TransformationRotate90);
    QImage picture(64, 32, QImage::Format_RGB888);
    picture.fill(Qt::black);
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 16; ++x)
            picture.setPixel(x, y, qRgb(255, 255, 255));
    ASSERT_TRUE(writer.write(picture));
    ASSERT_TRUE(viewer->openFiles({path("turned.jpg")}));
    EXPECT_EQ(shown().size(), QSize(32, 64));
    EXPECT_GT(qGray(shown().pixel(16, 5)), 240) << "the left edge of the sensor is the top";
    EXPECT_LT(qGray(shown().pixel(16, 58)), 15);
}

TEST_F(PictureFileTest, ABadFileLeavesThePictureAndSaysWhy)
{
    ASSERT_TRUE(viewer->openFiles({saved(colors(30, 20), "good.png")}));
    const QImage before = shown();
    const QByteArray png = bytesOf("good.png");
    written(png.left(png.size() / 2), "cut.png");
    for (const char* name : {"good.jpg", "good.tif"})
        saved(colors(30, 20), name);
    written(bytesOf("good.jpg").chopped(2), "cut.jpg");
    written(tiff(8, 1).left(20), "cut.tif");
    written(tiff(32, 3), "real.tif");
    written(tiff(16, 2), "signed.tif");
    written(tiff(12, 1), "odd.tif");
    written({}, "empty.png");
    written("BM is how this note begins", "text.bmp");
    // A header that promises 60,000 x 60,000 pixels.
    written(QByteArray::fromHex("89504e470d0a1a0a0000000d494844520000ea600000ea600800000000a5b92a9e"
                                "000000004944415435af061e0000000049454e44ae426082"),
            "huge.png");
    QDir(path("")).mkdir("folder");
    const std::pair<const char*, const char*> cases[] = {
        {"nowhere.png", "찾을 수 없습니다"},
        {"cut.png", "끊겨"},
        {"cut.jpg", "끊겨"},
        {"cut.tif", "끊겨"},
        {"real.tif", "지원하지 않는"},
        {"signed.tif", "지원하지 않는"},
        {"odd.tif", "지원하지 않는"},
        {"empty.png", "그림 파일이 아닙니다"},
        {"text.bmp", "그림 파일이 아닙니다|끊겨"},
        {"huge.png", "너무 큽니다"},
        {"folder", "폴더"},
    };
    for (const auto& [name, reason] : cases) {
        reports.clear();
        EXPECT_FALSE(viewer->openFiles({path(name)})) << name;
        ASSERT_EQ(reports.size(), 1) << name;
        EXPECT_TRUE(reports[0].contains(QLatin1String(name))) << qPrintable(reports[0]);
        EXPECT_TRUE(reports[0].contains(QRegularExpression(QString::fromUtf8(reason))))
            << qPrintable(reports[0]);
        EXPECT_EQ(shown(), before) << name;
        EXPECT_TRUE(viewer->windowTitle().startsWith("good.png")) << name;
    }
}

TEST_F(PictureFileTest, ABmpWithoutAllItsPixelsIsRefusedWhateverItsDepth)
{
    const auto rainbow = [](int i) { return qRgb(i, 255 - i, 17); };
    for (const QImage& image : {colors(41, 23), indexed(rainbow), blackAndWhite(),
                                colors(41, 23).convertToFormat(QImage::Format_RGB32)}) {
        ASSERT_TRUE(viewer->openFiles({saved(image, "whole.bmp")})) << image.depth();
        const QImage before = shown();
        written(bytesOf("whole.bmp").chopped(5), "cut.bmp");
        reports.clear();
        EXPECT_FALSE(viewer->openFiles({path("cut.bmp")})) << image.depth();
        EXPECT_TRUE(reports.value(0).contains("끊겨")) << qPrintable(reports.value(0));
        EXPECT_EQ(shown(), before);
    }
}

#ifdef Q_OS_UNIX
TEST_F(PictureFileTest, PipesAndDevicesAreNotReadForPicturesOrResults)
{
    const QString pipe = path("pipe.png");
    ASSERT_EQ(mkfifo(pipe.toUtf8().constData(), 0600), 0);
    for (const QString& file : {pipe, QStringLiteral("/dev/zero")}) {
        reports.clear();
        EXPECT_FALSE(viewer->openFiles({file}));
        EXPECT_FALSE(viewer->openResultsFile(file));
        ASSERT_EQ(reports.size(), 2);
        for (const QString& report : reports)
            EXPECT_TRUE(report.contains(file) && report.contains("장치나 파이프")) << qPrintable(report);
    }
}
#endif

TEST_F(PictureFileTest, APictureCutToEightBitsSaysSoUntilTheNext)
{
    const auto* const loss = viewer->findChild<QLabel*>("loss");
    const QImage deep = colors(41, 23).convertToFormat(QImage::Format_RGBA64);
    for (const QString& file : {saved(deepGray(), "gray.png"), saved(deepGray(), "gray.tif"),
                                saved(deep, "color.png"), saved(deep, "color.tif")}) {
        ASSERT_TRUE(viewer->openFiles({file}));
        EXPECT_TRUE(loss->isVisible()) << qPrintable(file);
        EXPECT_TRUE(loss->text().contains("16")) << qPrintable(loss->text());
        action("erode")->trigger();
        EXPECT_FALSE(viewer->openFiles({path("nowhere.png")}));
        EXPECT_TRUE(loss->isVisible()) << "the picture is still that one";
        ASSERT_TRUE(viewer->openFiles({saved(colors(5, 5), "plain.png")}));
        EXPECT_FALSE(loss->isVisible());
    }
    ASSERT_TRUE(viewer->openFiles({written(tiff(16, 1), "12.tif")}));
    EXPECT_TRUE(loss->text().contains("12비트만 쓰여 어둡습니다")) << qPrintable(loss->text());
}

TEST_F(PictureFileTest, TurningMovesEveryPixelExactlyAndUndoesNothing)
{
    const QImage color = colors(31, 17).convertToFormat(QImage::Format_BGR888);
    for (const QImage& image : {color, color.convertToFormat(QImage::Format_Grayscale8), colors(800, 600)}) {
        ASSERT_TRUE(viewer->openFiles({saved(image, "in.png")}));
        action("flipHorizontal")->trigger();
        const QImage before = shown();
        const auto turned = [&](int quarters) { // clockwise, pixel by pixel
            QImage out = before;
            for (; quarters > 0; --quarters) {
                QImage next(out.height(), out.width(), out.format());
                for (int y = 0; y < out.height(); ++y)
                    for (int x = 0; x < out.width(); ++x)
                        next.setPixelColor(out.height() - 1 - y, x, out.pixelColor(x, y));
                out = next;
            }
            return out;
        };
        action("rotateLeft")->trigger();
        EXPECT_EQ(shown(), turned(3));
        action("rotateLeft")->trigger();
        EXPECT_EQ(shown(), turned(2));
        EXPECT_EQ(shown(), before.mirrored(true, true));
        window().SendCommand(6606);
        EXPECT_EQ(shown(), turned(3));
        QTest::mouseClick(window().findChild<QWidget*>("command_6606"), Qt::LeftButton);
        EXPECT_EQ(shown(), before);
    }
}

TEST_F(PictureFileTest, SavedFilesHoldThePictureAndFailuresKeepTheOldFile)
{
    QString why;
    for (const QImage::Format format : {QImage::Format_BGR888, QImage::Format_Grayscale8}) {
        const QImage image = colors(31, 17).convertToFormat(format);
        ASSERT_TRUE(openPicture(window(), saved(image, "in.png"), &why));
        for (const char* name : {"밖.bmp", "out.png", "out.tif"}) {
            ASSERT_TRUE(savePicture(window(), path(name), &why)) << name;
            EXPECT_EQ(QImage(path(name)).convertToFormat(format), image) << name;
        }
    }
    written("old", "kept.xyz");
    EXPECT_FALSE(savePicture(window(), path("kept.xyz"), &why));
    EXPECT_TRUE(why.contains("kept.xyz"));
    EXPECT_EQ(bytesOf("kept.xyz"), "old");
    for (const char* name : {"no such folder/a.png", "no such folder/a.bmp"}) {
        EXPECT_FALSE(savePicture(window(), path(name), &why));
        EXPECT_TRUE(why.contains("저장할 폴더가 없습니다.")) << why.toStdString();
    }
    QDir(path("")).mkdir("folder.png");
    EXPECT_FALSE(savePicture(window(), path("folder.png"), &why));
    EXPECT_TRUE(why.contains("같은 이름의 폴더가 있습니다.")) << why.toStdString();
}

TEST_F(PictureFileTest, TheCopyWithOverlaysIsThePictureWithTheirPixels)
{
    ASSERT_TRUE(viewer->openFiles({saved(colors(50, 40), "in.png")}));
    window().AddRectangle(10, 5, 30, 25, 0, 1, RGB(255, 0, 0), "t");
    const QImage image = pictureWithOverlays(window());
    ASSERT_EQ(image.size(), QSize(50, 40));
    EXPECT_EQ(image.pixel(10, 15), qRgb(255, 0, 0));
    EXPECT_EQ(image.pixel(20, 5), qRgb(255, 0, 0));
    EXPECT_EQ(image.pixel(20, 15), colors(50, 40).pixel(20, 15));
    EXPECT_EQ(shown().pixel(10, 15), colors(50, 40).pixel(10, 15));
}

} // namespace
