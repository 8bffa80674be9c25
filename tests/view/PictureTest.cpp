#include "color/VisionImage24.h"
#include "image/BmpReader.h"
#include "image/ImagePainter.h"
#include "platform/File.h"
#include "tests/support/Random.h"
#include "view/FileHead.h"
#include "view/PicturePainters.h"
#include "view/PictureImage.h"
#include "view/PictureReader.h"
#include "view/PictureWriter.h"

#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using ormalux::PaletteUse;
using ormalux::Picture;
using ormalux::readPicture;
using testing::HasSubstr;

class PictureFiles : public testing::Test
{
protected:
    std::string path(const char* name) const
    {
        return m_folder.filePath(QString::fromUtf8(name)).toStdString();
    }
    QTemporaryDir m_folder{QDir::tempPath() + QString::fromUtf8("/그림-XXXXXX")};
};

Picture randomPicture(int width, int height, int bitCount)
{
    Picture picture;
    picture.width = width;
    picture.height = height;
    picture.bitCount = bitCount;
    picture.pixels =
        testing_support::randomBytes(std::size_t(width) * height * (bitCount / 8), unsigned(width));
    return picture;
}

void expectSame(const Picture& read, const Picture& expected)
{
    ASSERT_EQ(read.width, expected.width);
    ASSERT_EQ(read.height, expected.height);
    ASSERT_EQ(read.bitCount, expected.bitCount);
    EXPECT_TRUE(read.pixels == expected.pixels);
}

std::vector<std::uint8_t> bytesOf(const std::string& path)
{
    return ormalux::readFile(path.c_str()).value_or(std::vector<std::uint8_t>{});
}

} // namespace

TEST_F(PictureFiles, EveryWidthSurvivesBmpAndPngInBothDepthsUnderKoreanNames)
{
    for (const int bits : {8, 24})
        for (const int width : {1, 2, 3, 4, 5, 7, 64, 641})
            for (const char* name : {"사진 1.bmp", "사진 1.PNG"}) {
                const Picture picture = randomPicture(width, 5, bits);
                std::string error;
                ASSERT_TRUE(ormalux::writePicture(path(name).c_str(), picture.source(), &error)) << error;
                expectSame(readPicture(path(name).c_str()), picture);
                QImage seen(QString::fromStdString(path(name))); // another reader agrees
                ASSERT_EQ(seen.size(), QSize(width, 5));
                EXPECT_EQ(seen.convertToFormat(QImage::Format_RGB32),
                          ormalux::toQImage(picture.source()).convertToFormat(QImage::Format_RGB32));
            }
}

/// The file that a colour image saves: unpadded rows, the last one first and each with a gap of stride -
/// width bytes behind it, then the padded rows once more.
std::vector<std::uint8_t> doubledFile(const Picture& picture)
{
    const std::size_t row = std::size_t(picture.width) * 3;
    const std::size_t stride = (row + 3) / 4 * 4;
    std::vector<std::uint8_t> file(54);
    const auto put = [&](std::size_t at, std::size_t value) {
        for (int i = 0; i < 4; ++i)
            file[at + std::size_t(i)] = std::uint8_t(value >> (8 * i));
    };
    put(0, 0x4d42 | 14 << 16);
    put(10, 54);
    put(14, 40);
    put(18, std::size_t(picture.width));
    put(22, std::size_t(picture.height));
    put(26, 1 | 24 << 16);
    for (const std::size_t gap : {stride - std::size_t(picture.width), stride - row})
        for (int y = picture.height - 1; y >= 0; --y) {
            const auto* pixels = picture.source().row(y);
            file.insert(file.end(), pixels, pixels + row);
            file.insert(file.end(), gap, 0);
        }
    return file;
}

TEST_F(PictureFiles, ReadsTheDoubledFilesOfColourImages)
{
    for (const int width : {1, 3, 4, 5, 6, 17}) {
        const Picture color = randomPicture(width, 7, 24);
        ormalux::writeFile(path("color.bmp").c_str(), doubledFile(color));
        expectSame(readPicture(path("color.bmp").c_str()), color);
    }
}

TEST_F(PictureFiles, BmpPalettesAndRowOrdersAreHonoured)
{
    const Picture picture = randomPicture(5, 3, 8);
    ASSERT_TRUE(ormalux::writeBmp(path("a.bmp").c_str(), picture.source()));
    std::vector<std::uint8_t> file = bytesOf(path("a.bmp"));

    std::vector<std::uint8_t> topDown = file;
    for (int i = 0; i < 4; ++i)
        topDown[22 + i] = std::uint8_t(-3 >> (8 * i));
    ormalux::writeFile(path("b.bmp").c_str(), topDown);
    Picture flipped = readPicture(path("b.bmp").c_str());
    ASSERT_FALSE(flipped.empty());
    for (int x = 0; x < 5; ++x)
        EXPECT_EQ(flipped.pixels[x], picture.pixels[2 * 5 + x]);

    for (int i = 0; i < 256; ++i) // a negative: gray, but not a ramp
        std::fill_n(file.begin() + 54 + 4 * i, 3, std::uint8_t(255 - i));
    ormalux::writeFile(path("c.bmp").c_str(), file);
    Picture expected = picture;
    for (auto& p : expected.pixels)
        p = std::uint8_t(255 - p);
    expectSame(readPicture(path("c.bmp").c_str()), expected);
    expectSame(readPicture(path("c.bmp").c_str(), nullptr, PaletteUse::IndicesAreGray), picture);

    for (int i = 0; i < 256; ++i) // colours
        file[54 + 4 * std::size_t(i)] = 7;
    ormalux::writeFile(path("d.bmp").c_str(), file);
    const Picture color = readPicture(path("d.bmp").c_str());
    ASSERT_EQ(color.bitCount, 24);
    for (std::size_t i = 0; i < 15; ++i) {
        EXPECT_EQ(color.pixels[3 * i], 7);
        EXPECT_EQ(color.pixels[3 * i + 2], 255 - picture.pixels[i]);
    }
}

TEST_F(PictureFiles, AWideBmpReadsAsTheToolkitReadsIt)
{
    QImage image(7, 5, QImage::Format_RGB32);
    const auto noise = testing_support::randomBytes(7 * 5 * 4, 3);
    for (int y = 0; y < 5; ++y)
        std::memcpy(image.scanLine(y), noise.data() + 28 * y, 28);
    ASSERT_TRUE(image.convertToFormat(QImage::Format_RGB888).save(QString::fromStdString(path("a.bmp"))));
    std::vector<std::uint8_t> file = bytesOf(path("a.bmp"));
    file.resize(54);
    file[28] = 32;
    file.insert(file.end(), noise.begin(), noise.end());
    for (const int kind : {0, 1, 2, 3, 4}) {
        std::vector<std::uint8_t> other = file;
        if (kind == 1) // the top row first
            for (int i = 0; i < 4; ++i)
                other[std::size_t(22 + i)] = std::uint8_t(-5 >> (8 * i));
        if (kind == 2) // a gap before the pixels
            other.insert(other.begin() + 54, std::size_t(other[10] = 60) - 54, 99);
        if (kind == 3) // a number of planes that nothing has
            other[26] = 7;
        if (kind == 4) // no place for the pixels
            other[10] = 0;
        Picture own, toolkits;
        ormalux::PictureRefusal why;
        const bool wide = ormalux::readWideBmp(other, own) == ormalux::BmpOutcome::Read;
        EXPECT_EQ(wide, kind < 3);
        toolkits = ormalux::decodePicture(other, PaletteUse::Applied, why);
        if (wide)
            expectSame(own, toolkits);
        ormalux::writeFile(path("b.bmp").c_str(), other);
        expectSame(readPicture(path("b.bmp").c_str()), toolkits);
    }
}

TEST_F(PictureFiles, OtherKindsBecomeGrayOnlyWhenTheyAre)
{
    QImage deep(4, 2, QImage::Format_Grayscale16);
    for (int i = 0; i < 8; ++i)
        reinterpret_cast<std::uint16_t*>(deep.scanLine(i / 4))[i % 4] = std::uint16_t(i * 9000 + 128);
    ASSERT_TRUE(deep.save(QString::fromStdString(path("deep.png"))));
    const Picture shallow = readPicture(path("deep.png").c_str());
    ASSERT_EQ(shallow.bitCount, 8);
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(shallow.pixels[std::size_t(i)], (i * 9000 + 128) >> 8);

    QImage palette(4, 2, QImage::Format_Indexed8); // 256 colours: a file with 8 bits a pixel
    QList<QRgb> colors;
    for (int i = 0; i < 256; ++i)
        colors.append(qRgb(i, 255 - i, 9));
    palette.setColorTable(colors);
    palette.fill(200);
    ASSERT_TRUE(palette.save(QString::fromStdString(path("palette.png"))));
    Picture read = readPicture(path("palette.png").c_str());
    EXPECT_EQ(read.bitCount, 24);
    EXPECT_EQ(read.pixels[2], 200);
    read = readPicture(path("palette.png").c_str(), nullptr, PaletteUse::IndicesAreGray);
    EXPECT_EQ(read.bitCount, 8);
    EXPECT_EQ(read.pixels[0], 200);

    palette.setColorTable({qRgb(10, 20, 30), qRgb(40, 50, 60)}); // few colours: fewer bits a pixel
    palette.fill(1);
    ASSERT_TRUE(palette.convertToFormat(QImage::Format_Mono).save(QString::fromStdString(path("few.png"))));
    EXPECT_EQ(readPicture(path("few.png").c_str(), nullptr, PaletteUse::IndicesAreGray).bitCount, 24);

    for (const char* name : {"a.jpg", "a.tif"}) {
        QImage gray(9, 9, QImage::Format_Grayscale8);
        gray.fill(77);
        ASSERT_TRUE(gray.save(QString::fromStdString(path(name)))) << name;
        read = readPicture(path(name).c_str());
        ASSERT_EQ(read.bitCount, 8) << name;
        EXPECT_NEAR(read.pixels[40], 77, 1);
    }
}

TEST_F(PictureFiles, ErrorsNameTheFileAndTheReason)
{
    std::string error;
    const auto errorOf = [&](const std::string& name) {
        error.clear();
        EXPECT_TRUE(readPicture(name.c_str(), &error).empty()) << name;
        EXPECT_THAT(error, HasSubstr("'" + name + "'"));
        return error;
    };
    EXPECT_THAT(errorOf(path("없음.bmp")), HasSubstr("no such file"));
    EXPECT_THAT(errorOf(m_folder.path().toStdString()), HasSubstr("directory"));
    EXPECT_TRUE(readPicture(nullptr, &error).empty());

    const std::vector<std::uint8_t> words(200, 'x');
    ormalux::writeFile(path("text.png").c_str(), words);
    EXPECT_THAT(errorOf(path("text.png")), HasSubstr("known kind"));
    ormalux::writeFile(path("empty.bmp").c_str(), std::span<const std::uint8_t>{});
    EXPECT_THAT(errorOf(path("empty.bmp")), HasSubstr("empty"));

    for (const char* name : {"cut.bmp", "cut.png"}) {
        ASSERT_TRUE(ormalux::writePicture(path(name).c_str(), randomPicture(40, 40, 8).source()));
        std::vector<std::uint8_t> file = bytesOf(path(name));
        file.resize(file.size() - 200);
        ormalux::writeFile(path(name).c_str(), file);
        EXPECT_THAT(errorOf(path(name)), HasSubstr("truncated"));
    }
    ASSERT_TRUE(ormalux::writePicture(path("big.bmp").c_str(), randomPicture(40, 40, 8).source()));
    std::vector<std::uint8_t> file = bytesOf(path("big.bmp"));
    file[20] = file[24] = 0x7f; // a size that no file holds
    ormalux::writeFile(path("big.bmp").c_str(), file);
    EXPECT_THAT(errorOf(path("big.bmp")), HasSubstr("larger than 512 megapixels"));
    file[20] = file[24] = file[21] = file[25] = 0x7f; // so many bytes that their number overflows
    file[28] = 32;
    EXPECT_TRUE(ormalux::readFileHead(file).truncated);
    ormalux::writeFile(path("big.bmp").c_str(), file);
    EXPECT_THAT(errorOf(path("big.bmp")), HasSubstr("truncated"));
}

TEST_F(PictureFiles, WhatIsCutIsToldAndAnUprightPictureIsTurned)
{
    QImage deep(3, 2, QImage::Format_RGBA64);
    deep.fill(QColor::fromRgba64(0x0fff, 0x0200, 3, 0xffff));
    ASSERT_TRUE(deep.save(QString::fromStdString(path("deep.png"))));
    Picture read = readPicture(path("deep.png").c_str());
    EXPECT_TRUE(read.origin.depthCut() && !read.origin.transparent);
    EXPECT_EQ(read.origin.bits, 16);
    EXPECT_EQ(read.origin.usedBits, 12);
    QImage clear(3, 2, QImage::Format_ARGB32);
    clear.fill(QColor(10, 20, 30));
    for (const int alpha : {255, 254}) {
        clear.setPixelColor(2, 1, QColor(1, 2, 3, alpha));
        ASSERT_TRUE(clear.save(QString::fromStdString(path("clear.png"))));
        read = readPicture(path("clear.png").c_str());
        EXPECT_EQ(read.origin.transparent, alpha != 255);
        EXPECT_EQ(ormalux::whatWasCut(read.origin).size(), alpha != 255 ? 1u : 0u);
        EXPECT_EQ(read.pixels[17], 1);
    }
    QImage half(40, 20, QImage::Format_Grayscale8);
    half.fill(0);
    for (int y = 0; y < 10; ++y)
        std::memset(half.scanLine(y), 255, 40);
    ASSERT_TRUE(half.save(QString::fromStdString(path("held.jpg"))));
    std::vector<std::uint8_t> file = bytesOf(path("held.jpg"));
    static constexpr char note[] = "\xFF\xE1\0\x22"
                                   "Exif\0\0MM\0*\0\0\0\10\0\1\1\22\0\3\0\0\0\1\0\6\0\0\0\0\0";
    file.insert(file.begin() + 2, note, note + sizeof note); // the camera was held on its side
    ormalux::writeFile(path("held.jpg").c_str(), file);
    read = readPicture(path("held.jpg").c_str());
    ASSERT_EQ(read.width, 20);
    EXPECT_GT(read.pixels[19], 200); // what was above is on the right
    EXPECT_LT(read.pixels[0], 50);
    EXPECT_EQ(readPicture(path("held.jpg").c_str(), nullptr, PaletteUse::IndicesAreGray).width, 40);
}

TEST_F(PictureFiles, NoFileIsReadInPart)
{
    QImage image(64, 48, QImage::Format_RGB32);
    for (int y = 0; y < 48; ++y)
        for (int x = 0; x < 64; ++x)
            image.setPixel(x, y, qRgb(x * y, 3 * x, 5 * y));
    for (const char* name : {"a.jpg", "a.png", "a.tif", "a.ppm", "a.bmp"})
        ASSERT_TRUE(image.save(QString::fromStdString(path(name)))) << name;
    std::vector<std::uint8_t> wide = bytesOf(path("a.bmp")); // the kind that the toolkit fills up
    wide[28] = 32;
    wide.resize(54 + 64 * 48 * 4);
    ormalux::writeFile(path("wide.bmp").c_str(), wide);
    for (const char* name : {"a.jpg", "a.png", "a.tif", "a.ppm", "a.bmp", "wide.bmp"}) {
        const std::vector<std::uint8_t> file = bytesOf(path(name));
        ASSERT_FALSE(readPicture(path(name).c_str()).empty()) << name;
        for (const std::size_t length : {file.size() * 99 / 100, file.size() / 2, file.size() / 5}) {
            ormalux::writeFile(path("cut").c_str(), std::span(file).first(length));
            EXPECT_TRUE(readPicture(path("cut").c_str()).empty()) << name << " " << length;
        }
        // Damaged heads are read without a step outside the file, and end.
        const auto noise = testing_support::randomBytes(3 * 400, unsigned(file.size()));
        std::vector<std::uint8_t> damaged = file;
        for (std::size_t i = 0; i + 2 < noise.size(); i += 3) {
            const std::size_t back = i % 2 ? damaged.size() - 1 - noise[i] : noise[i];
            damaged[back] = noise[i + 1];
            EXPECT_GE(ormalux::readFileHead(std::span(damaged).first(damaged.size() - noise[i + 2])).pages,
                      0);
        }
    }
}

TEST_F(PictureFiles, AFailedWriteLeavesTheOldFile)
{
    std::string error;
    EXPECT_FALSE(
        ormalux::writePicture(path("no/such/folder.bmp").c_str(), randomPicture(2, 2, 8).source(), &error));
    EXPECT_THAT(error, HasSubstr("no/such/folder.bmp"));
    EXPECT_FALSE(ormalux::writePicture(path("a.xyz").c_str(), randomPicture(2, 2, 8).source(), &error));
    EXPECT_THAT(error, HasSubstr("kind"));
    EXPECT_FALSE(ormalux::fileLength(path("a.xyz").c_str()));
    EXPECT_FALSE(ormalux::writePicture(path("a.bmp").c_str(), QImage(), &error));
}

TEST(PicturePainters, PaintsTheNearestPixelsInAnyRectangle)
{
    Picture picture = randomPicture(7, 5, 24);
    for (const QRect target :
         {QRect(3, 4, 7, 5), QRect(-20, 2, 90, 33), QRect(1, 1, 3, 2), QRect(50, 40, 500, 400)})
        for (const bool mirrored : {false, true}) {
            QImage image(60, 50, QImage::Format_RGB32);
            image.fill(Qt::red);
            QPainter painter(&image);
            RECT rect{target.x(), target.y(), target.x() + target.width(), target.y() + target.height()};
            if (mirrored)
                std::swap(rect.left, rect.right);
            ormalux::paintPicture(&painter, rect, picture.source());
            for (int y = 0; y < 50; ++y)
                for (int x = 0; x < 60; ++x) {
                    QRgb expected = 0xffff0000u;
                    if (target.contains(x, y)) {
                        const int i = mirrored ? target.right() - x : x - target.x();
                        const int column = i * 7 / target.width();
                        const int row = (y - target.y()) * 5 / target.height();
                        const std::uint8_t* p = picture.source().row(row) + 3 * column;
                        expected = qRgb(p[2], p[1], p[0]);
                    }
                    ASSERT_EQ(image.pixel(x, y), expected) << x << "," << y;
                }
        }
}

TEST(PicturePainters, ImagesPaintThroughTheDisplayModule)
{
    std::uint8_t gray[6] = {10, 20, 30, 40, 50, 60};
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Qt::red);
    QPainter painter(&image);
    ASSERT_TRUE(ormalux::grayPainter());
    ormalux::grayPainter()(&painter, CRect(1, 1, 4, 3), {gray, 3, 2, 3});
    EXPECT_EQ(image.pixel(1, 1), 0xff0a0a0au);
    EXPECT_EQ(image.pixel(3, 2), 0xff3c3c3cu);
    EXPECT_EQ(image.pixel(0, 1), 0xffff0000u);

    std::uint8_t color[16] = {1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12, 0, 0};
    CKestImage24 image24(2, 2, color);
    image24.PaintImage(&painter, CRect(0, 0, 2, 2)); // the last row on top
    EXPECT_EQ(image.pixel(0, 0), 0xff090807u);
    EXPECT_EQ(image.pixel(1, 1), 0xff060504u);
}
