#pragma once

#include <QDir>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace testing_support {

/// How far a picture may be from the kept one.
enum class Likeness
{
    Same,   ///< every pixel: what we write ourselves
    Nearly, ///< one pixel in a hundred may differ: what the toolkit strokes
    Texts   ///< the same amount of ink in about the same places: fonts of other systems
};

inline QImage plainRgb(QImage image)
{
    image.setDevicePixelRatio(1);
    return image.convertToFormat(QImage::Format_RGB32);
}

inline int furthestChannel(QRgb a, QRgb b)
{
    return std::max(
        {std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
}

/// How far two pictures of one size lie apart, pixel by pixel, as gray levels.
inline QImage differenceOf(const QImage& expected, const QImage& actual)
{
    QImage difference(expected.size(), QImage::Format_RGB32);
    for (int y = 0; y < expected.height(); ++y)
        for (int x = 0; x < expected.width(); ++x) {
            const int far = furthestChannel(expected.pixel(x, y), actual.pixel(x, y));
            difference.setPixel(x, y, qRgb(far, far, far));
        }
    return difference;
}

inline bool isLike(const QImage& expected, const QImage& actual, Likeness likeness)
{
    if (expected.size() != actual.size())
        return false;
    const QImage difference = differenceOf(expected, actual);
    if (likeness == Likeness::Texts) {
        constexpr int block = 12;
        const auto coarse = [](const QImage& image) {
            return image.scaled(image.size() / block, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        };
        const QImage blocks = differenceOf(coarse(expected), coarse(actual));
        qint64 sum = 0;
        int most = 0;
        for (int y = 0; y < blocks.height(); ++y)
            for (int x = 0; x < blocks.width(); ++x) {
                sum += qRed(blocks.pixel(x, y));
                most = std::max(most, qRed(blocks.pixel(x, y)));
            }
        return most <= 60 && sum <= 5 * blocks.width() * blocks.height();
    }
    int wrong = 0;
    for (int y = 0; y < difference.height(); ++y)
        for (int x = 0; x < difference.width(); ++x)
            wrong += qRed(difference.pixel(x, y)) > 0;
    return likeness == Likeness::Same ? wrong == 0 : wrong * 100 <= difference.width() * difference.height();
}

/// Compares a picture with tests/golden/NAME.png. Whatever comes out, the picture, its difference and the
/// three side by side stand in the build folder's golden/ afterwards; scripts/golden.sh shows and keeps them.
inline void expectGolden(const QString& name, const QImage& painted, Likeness likeness)
{
    const QDir folder(QStringLiteral(ORMALUX_GOLDEN_RESULTS));
    folder.mkpath(QStringLiteral("."));
    const QImage actual = plainRgb(painted);
    ASSERT_TRUE(actual.save(folder.filePath(name + QStringLiteral(".actual.png"))));
    QFile::remove(folder.filePath(name + QStringLiteral(".side.png")));
    const QImage expected =
        plainRgb(QImage(QStringLiteral(ORMALUX_GOLDEN_PICTURES "/") + name + QStringLiteral(".png")));
    ASSERT_EQ(expected.size(), actual.size()) << "no picture of this size is kept for " << name.toStdString();
    QImage side(3 * actual.width() + 8, actual.height(), QImage::Format_RGB32);
    side.fill(Qt::white);
    QPainter painter(&side);
    painter.drawImage(0, 0, expected);
    painter.drawImage(actual.width() + 4, 0, actual);
    painter.drawImage(2 * actual.width() + 8, 0, differenceOf(expected, actual));
    painter.end();
    ASSERT_TRUE(side.save(folder.filePath(name + QStringLiteral(".side.png"))));
    EXPECT_TRUE(isLike(expected, actual, likeness))
        << name.toStdString() << " differs: scripts/golden.sh show";
}

} // namespace testing_support
