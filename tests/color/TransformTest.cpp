#include "tests/color/Buffers.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

/// The byte of a channel in padded rows.
std::size_t padded(int width, int x, int y, int channel)
{
    return std::size_t(ormalux::paddedStride(width)) * std::size_t(y) + std::size_t(3 * x + channel);
}

/// What the gray operation makes of each channel, in rows that are padded; the padding is taken from padding.
template <class Operation>
Bytes byChannels(const Bytes& bytes, int width, int height, const Bytes& padding, Operation operation)
{
    Bytes result = padding;
    for (int c = 0; c < 3; ++c) {
        CKestImage gray(width, height);
        for (int i = 0; i < width * height; ++i)
            gray.view().pixels[i] = bytes[padded(width, i % width, i / width, c)];
        operation(gray);
        for (int i = 0; i < width * height; ++i)
            result[padded(width, i % width, i / width, c)] = gray.view().pixels[i];
    }
    return result;
}

} // namespace

// Rows at the padded stride: at 3 x width the rows below the first would tear.
TEST(ColorTransform, MovesThePixelsOfPaddedRowsAsTheGrayImageMovesItsOwn)
{
    forEachBandCount([](int) {
        for (int width : {1, 2, 3, 4, 5, 17})
            for (int height : {1, 6, 15}) {
                auto bytes = paddedBytes(width, height, 31);
                const Bytes cleared(bytes.size());
                const auto expectSame = [&](const Bytes& padding, auto gray, auto color) {
                    CKestImage24 image(width, height, bytes.data());
                    color(image);
                    ASSERT_EQ(bufferOf(image), byChannels(bytes, width, height, padding, gray))
                        << width << " x " << height;
                };
                expectSame(
                    bytes, [](CKestImage& i) { i.Rotate180(); }, [](CKestImage24& i) { i.Rotate180(); });
                expectSame(
                    bytes, [](CKestImage& i) { i.RotateHorzFlip(); },
                    [](CKestImage24& i) { i.RotateHorzFlip(); });
                for (double angle : {0.0, 7.3, -45.0, 180.0})
                    expectSame(
                        cleared, [=](CKestImage& i) { i.Rotate(3, 2, angle, 9); },
                        [=](CKestImage24& i) { i.Rotate(3, 2, angle, 9); });
                expectSame(
                    cleared, [](CKestImage& i) { i.Rotate90L(); }, [](CKestImage24& i) { i.Rotate90L(); });
                expectSame(
                    cleared, [](CKestImage& i) { i.Rotate90R(); }, [](CKestImage24& i) { i.Rotate90R(); });
            }
    });
}

TEST(ColorTransform, VerticalMirrorMovesWholePaddedRows)
{
    for (int width : {1, 3, 4, 22}) {
        const int height = 5;
        auto bytes = paddedBytes(width, height, 32);
        CKestImage24 image(width, height, bytes.data());
        image.RotateVertFlip();
        const std::size_t stride = std::size_t(ormalux::paddedStride(width));
        Bytes expected;
        for (int y = height - 1; y >= 0; --y)
            expected.insert(expected.end(), bytes.begin() + long(stride) * y,
                            bytes.begin() + long(stride) * (y + 1));
        EXPECT_EQ(bufferOf(image), expected);

        // With the horizontal mirror it makes the half turn of the pixels.
        CKestImage24 turned(width, height, bytes.data());
        turned.Rotate180();
        image.RotateHorzFlip();
        for (int i = 0; i < 3 * width * height; ++i) {
            const std::size_t at = padded(width, i / 3 % width, i / 3 / width, i % 3);
            ASSERT_EQ(bufferOf(turned)[at], bufferOf(image)[at]);
        }
    }
}
