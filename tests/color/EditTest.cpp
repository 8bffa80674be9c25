#include "color/VisionImage24.h"
#include "tests/color/Buffers.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <limits>

using namespace testing_support;

namespace {

/// A box painted pixel by pixel, with the buffer as the only bound.
void paintPlainly(Bytes& bytes, int width, int x1, int y1, int x2, int y2, int channel, std::uint8_t value)
{
    for (int y = y1; y < y2; ++y)
        for (int x = x1; x < x2; ++x) {
            const long i = 3L * width * y + 3L * x + channel;
            if (i >= 0 && i < long(bytes.size()))
                bytes[std::size_t(i)] = value;
        }
}

} // namespace

TEST(ColorBox, EqualsPaintingEveryPixelInsideTheBuffer)
{
    const int edges[] = {-7, -2, 0, 1, 3, 4, 5, 12};
    for (int width : {1, 3, 4}) {
        const auto bytes = paddedBytes(width, 4, 7);
        for (int x1 : edges)
            for (int x2 : edges)
                for (int y1 : edges)
                    for (int y2 : edges) {
                        auto expected = bytes;
                        CKestImage24 image(width, 4, const_cast<std::uint8_t*>(bytes.data()));
                        image.Marking(x1, y1, x2, y2, 0x1AA, 0xBB, -1);
                        paintPlainly(expected, width, x1, y1, x2, y2, 2, 0xAA);
                        paintPlainly(expected, width, x1, y1, x2, y2, 1, 0xBB);
                        paintPlainly(expected, width, x1, y1, x2, y2, 0, 0xFF);
                        const char letter = "RGBx"[(x1 + y1 + 20) % 4];
                        image.AbandonColorCell(y1, x1, y2, x2, letter, 77);
                        paintPlainly(expected, width, y1, x1, y2, x2, letter == 'R' ? 2 : letter == 'G', 77);
                        ASSERT_EQ(bufferOf(image), expected)
                            << width << ": " << x1 << " " << y1 << " " << x2 << " " << y2;
                    }
    }
}

TEST(ColorBox, SurvivesTheEndsOfTheIntegerRange)
{
    for (int x1 : extremes)
        for (int x2 : extremes)
            for (int y1 : extremes)
                for (int y2 : extremes) {
                    std::uint8_t bytes[12 * 4] = {};
                    CKestImage24 image(3, 4, bytes);
                    image.Marking(x1, y1, x2, y2, 1, 1, 1);
                    image.AbandonColorCell(x1, y1, x2, y2, 'G', 2);
                    image.SetROIPlacement(x1, y1, x2, y2);
                    image.Offset(x1, y2);
                }
}

TEST(ColorArithmetic, WrapsSumsStopsDifferencesAndLeavesThePadding)
{
    auto a = paddedBytes(3, 5, 8), b = paddedBytes(3, 5, 9);
    CKestImage24 sum(3, 5, a.data()), difference(3, 5, a.data()), other(3, 5, b.data());
    auto expectedSum = a, expectedDifference = a;
    for (std::size_t i = 0; i < 45; ++i) {
        expectedSum[i] = std::uint8_t(a[i] + b[i]);
        expectedDifference[i] = std::uint8_t(std::max(a[i] - b[i], 0));
    }
    EXPECT_EQ(&(sum + other), &sum);
    EXPECT_EQ(&(difference - other), &difference);
    EXPECT_EQ(bufferOf(sum), expectedSum);
    EXPECT_EQ(bufferOf(difference), expectedDifference);

    CKestImage24 narrower(2, 5, b.data());
    sum + narrower;
    sum - CKestImage24();
    EXPECT_EQ(bufferOf(sum), expectedSum);
}

TEST(ColorOffset, ShiftsTheWholeBufferByUnpaddedRows)
{
    const auto bytes = paddedBytes(3, 4, 10);
    for (int dx = -13; dx <= 13; ++dx)
        for (int dy = -5; dy <= 5; ++dy) {
            CKestImage24 image(3, 4, const_cast<std::uint8_t*>(bytes.data()));
            image.Offset(dx, dy);
            Bytes expected(48);
            for (int i = 0; i < 48; ++i)
                if (const int from = i + 9 * dy + 3 * dx; from >= 0 && from < 48)
                    expected[std::size_t(i)] = bytes[std::size_t(from)];
            ASSERT_EQ(bufferOf(image), expected) << dx << " " << dy;
        }
}

TEST(ColorGain, MultipliesTheFirstPixelOfARowOncePerColumn)
{
    for (int width : {1, 2, 7, 8, 100})
        for (float gain : {0.0f, 0.5f, 0.9f, 1.0f, 1.1f, 2.0f, -1.5f, 1e30f}) {
            const auto bytes = paddedBytes(width, 300, 11);
            CKestImage24 image(width, 300, const_cast<std::uint8_t*>(bytes.data()));
            image.SetRedGain(gain);
            image.SetGreenGain(gain / 2);
            auto expected = bytes;
            const auto multiply = [&](std::uint8_t& v, float factor) {
                for (int x = 0; x < width; ++x)
                    v = std::uint8_t(int(std::min(float(v) * factor, 255.0f)));
            };
            for (int y = 0; y < 300; ++y) {
                multiply(expected[std::size_t(3 * width * y + 2)], gain);
                multiply(expected[std::size_t(3 * width * y + 1)], gain / 2);
            }
            ASSERT_EQ(bufferOf(image), expected) << width << " " << gain;
            image.SetBlueGain(std::numeric_limits<float>::quiet_NaN());
            image.SetBlueGain(std::numeric_limits<float>::infinity());
            ASSERT_EQ(bufferOf(image), expected);
            image.SetBlueGain(-1e38f);
        }
}

TEST(ColorFilter, FiltersTheFirstBytesAsAGrayPictureAndClearsTheRest)
{
    const int width = 7, height = 6;
    auto bytes = paddedBytes(width, height, 12);
    long kernel[9] = {1, -2, 3, 0, 5, 1, -1, 2, 4};
    const auto expectSame = [&](auto grayOperation, auto colorOperation) {
        CKestImage gray(width, height, bytes.data());
        CKestImage24 color(width, height, bytes.data());
        grayOperation(gray);
        colorOperation(color);
        Bytes expected(bytes.size());
        std::copy_n(gray.view().pixels, width * height, expected.begin());
        EXPECT_EQ(bufferOf(color), expected);
    };
#define ORMALUX_SAME(member)                                                                                 \
    expectSame([](CKestImage& i) { i.member(); }, [](CKestImage24& i) { i.member(); })
    ORMALUX_SAME(Sharpen);
    ORMALUX_SAME(Blur);
    ORMALUX_SAME(Soften);
    ORMALUX_SAME(Gassian3x3);
    ORMALUX_SAME(Gassian5x5);
    ORMALUX_SAME(Emboss);
    ORMALUX_SAME(Edge);
    ORMALUX_SAME(Laplacian);
#undef ORMALUX_SAME
    forEachBandCount([&](int) {
        expectSame([&](CKestImage& i) { i.Filter(kernel, 3, 9, 10, 1); },
                   [&](CKestImage24& i) { i.Filter(kernel, 3, 9, 10, 1); });
    });
    CKestImage24 refused(width, height, bytes.data());
    refused.Filter(nullptr, 3, 1, 0, 0);
    refused.Filter(kernel, 0, 1, 0, 1);
    EXPECT_EQ(bufferOf(refused), bytes);
}

TEST(ColorMorphology, ScansEveryChannelForItself)
{
    for (int width : {1, 3, 22}) {
        const int height = 9;
        auto bytes = paddedBytes(width, height, 13);
        const auto expectSame = [&](void (CKestImage::*grayOperation)(),
                                    void (CKestImage24::*colorOperation)()) {
            CKestImage24 color(width, height, bytes.data());
            (color.*colorOperation)();
            auto expected = bytes;
            for (int c = 0; c < 3; ++c) {
                CKestImage gray(width, height);
                for (int i = 0; i < width * height; ++i)
                    gray.view().pixels[i] = bytes[std::size_t(3 * i + c)];
                (gray.*grayOperation)();
                for (int i = 0; i < width * height; ++i)
                    expected[std::size_t(3 * i + c)] = gray.view().pixels[i];
            }
            EXPECT_EQ(bufferOf(color), expected) << width;
        };
        expectSame(&CKestImage::Erode, &CKestImage24::Erode);
        expectSame(&CKestImage::Dilate, &CKestImage24::Dilate);
        expectSame(&CKestImage::OpenBox, &CKestImage24::OpenBox);
        expectSame(&CKestImage::CloseBox, &CKestImage24::CloseBox);
    }
}
