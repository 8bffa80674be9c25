#include "color/VisionImage24.h"
#include "tests/color/Buffers.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>

using namespace testing_support;

// Row step 3 x width: a class that used the padded 12 bytes, or the width, would mark other pixels.
TEST(ColorAddressing, MarkingAndInvertUseUnpaddedRows)
{
    auto bytes = paddedBytes(3, 3, 1);
    CKestImage24 image(3, 3, bytes.data());
    image.Marking(1, 1, 2, 2, 200, 100, 50);
    image.Invert();
    auto expected = bytes;
    expected[9 + 3] = 50, expected[9 + 4] = 100, expected[9 + 5] = 200;
    for (std::size_t i = 0; i < 27; ++i)
        expected[i] = std::uint8_t(~expected[i]);
    EXPECT_EQ(bufferOf(image), expected);
}

// Row step width, pixel step 3: neither the unpadded nor the padded row.
TEST(ColorAddressing, PixelsAreReadAndWrittenAtTheWidthAsRowStep)
{
    auto bytes = paddedBytes(5, 4, 2);
    CKestImage24 image(5, 4, bytes.data());
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 5; ++x) {
            const std::uint8_t* p = &bytes[std::size_t(5 * y + 3 * x)];
            ASSERT_EQ(image.GetPixel(x, y), RGB(p[2], p[1], p[0]));
        }
    image.SetPixel(2, 3, 0x00AABBCC);
    auto expected = bytes;
    expected[21] = 0xAA, expected[22] = 0xBB, expected[23] = 0xCC;
    EXPECT_EQ(bufferOf(image), expected);
}

// The padded buffer as it is: 3-pixel rows keep their 3 bytes of padding.
TEST(ColorAddressing, SettingAndAssigningCopyPaddedRows)
{
    auto bytes = paddedBytes(3, 7, 3);
    CKestImage24 image;
    image.SetImagePtr(3, 7, bytes.data());
    CKestImage24 assigned;
    assigned = image;
    const CKestImage24 copied(image);
    image.SetPixel(0, 0, ~image.GetPixel(0, 0));
    EXPECT_EQ(image.GetImageLen(), 84);
    EXPECT_EQ(bufferOf(assigned), bytes);
    EXPECT_EQ(bufferOf(copied), bytes);
    assigned = *&assigned;
    EXPECT_EQ(bufferOf(assigned), bytes);
}

TEST(ColorAddressing, PixelsPartlyOutsideTheBufferKeepTheirInsideBytes)
{
    std::uint8_t bytes[] = {1, 2, 3, 4};
    CKestImage24 image(1, 1, bytes);
    EXPECT_EQ(image.GetPixel(1, 0), 0x00040000u);
    EXPECT_EQ(image.GetPixel(-1, 2), 0x00000102u);
    image.SetPixel(1, 0, 0x00112233);
    image.SetPixel(-1, 1, 0x00445566);
    EXPECT_EQ(bufferOf(image), (Bytes{0x66, 2, 3, 0x11}));
    for (int x : extremes)
        for (int y : extremes)
            if (std::int64_t(y) + std::int64_t(3) * x < -2 || std::int64_t(y) + std::int64_t(3) * x > 3) {
                EXPECT_EQ(image.GetPixel(x, y), 0u);
                image.SetPixel(x, y, 0xFFFFFF);
            }
    EXPECT_EQ(bufferOf(image), (Bytes{0x66, 2, 3, 0x11}));
}

TEST(ColorImage, LinksWithoutOwning)
{
    auto bytes = paddedBytes(5, 2, 4);
    const auto before = bytes;
    {
        CKestImage24 image;
        image.SetImagePtrLink(5, 2, bytes.data());
        EXPECT_EQ(image.view().pixels, bytes.data());
        image.Offset(1, 0);
        EXPECT_NE(image.view().pixels, bytes.data());
        image.SetImagePtrLink(5, 2, bytes.data());
        const CKestImage24 copy(image);
        EXPECT_NE(copy.view().pixels, bytes.data());
        image.SetROIPlacement(0, 0, 2, 1);
        EXPECT_EQ(image.GetImageLen(), 24);
        image.SetImagePtrLink(5, 2, bytes.data());
    }
    EXPECT_EQ(bytes, before);
}

TEST(ColorImage, ImpossibleSizesHaveNoBuffer)
{
    std::uint8_t bytes[16] = {};
    const int sizes[][2] = {{0, 0},
                            {-1, 5},
                            {5, -1},
                            {-4, -4},
                            {INT_MAX, INT_MAX},
                            {1 << 29, 3},
                            {3, 1 << 29},
                            {INT_MIN, INT_MIN},
                            {INT_MAX, 1},
                            {65536, 65536}};
    for (const auto& size : sizes) {
        CKestImage24 image(size[0], size[1], bytes);
        EXPECT_TRUE(image.IsEmpty()) << size[0] << " " << size[1];
        image.SetImagePtrLink(size[0], size[1], size[0] == 0 ? nullptr : bytes);
        EXPECT_TRUE(image.IsEmpty()) << size[0] << " " << size[1];
    }
    CKestImage24 image(2, 2, nullptr);
    EXPECT_TRUE(image.IsEmpty());
    EXPECT_EQ(image.GetPixel(0, 0), 0u);
}

TEST(ColorCrop, LastRowStaysEmptyAndRowsAreUnpadded)
{
    const int width = 6, height = 5;
    auto bytes = paddedBytes(width, height, 5);
    const CKestImage24 image(width, height, bytes.data());
    for (int x1 = 0; x1 < width; ++x1)
        for (int x2 = x1; x2 < width; ++x2)
            for (int y1 = 0; y1 < height; ++y1)
                for (int y2 = y1; y2 < height; ++y2) {
                    const int w = x2 - x1 + 1, h = y2 - y1 + 1;
                    Bytes expected(std::size_t(ormalux::paddedStride(w)) * std::size_t(h));
                    for (int i = 0; i < 3 * w * (h - 1); ++i)
                        expected[std::size_t(i)] =
                            bytes[std::size_t(3 * width * (y1 + i / (3 * w)) + 3 * x1 + i % (3 * w))];
                    const std::unique_ptr<std::uint8_t[]> part(image.GetImagePtr(x2, y1, x1, y2));
                    ASSERT_TRUE(std::equal(expected.begin(), expected.begin() + 3 * w * h, part.get()));
                    CKestImage24 crop(image);
                    crop.SetROIPlacement(RECT{x1, y1, x2, y2});
                    ASSERT_EQ(bufferOf(crop), expected);
                }
    for (int far : {-1, 6, INT_MIN, INT_MAX})
        EXPECT_EQ(image.GetImagePtr(far, 0, 2, 2), nullptr);
    EXPECT_EQ(image.GetImagePtr(0, 0, 2, 5), nullptr);
}

TEST(ColorCrop, ReversedRectangleLeavesASizeBelowOneThatNothingTouches)
{
    auto bytes = paddedBytes(8, 8, 6);
    CKestImage24 image(8, 8, bytes.data());
    image.SetROIPlacement(6, 6, 2, 2);
    EXPECT_EQ(image.GetWidth(), -3);
    EXPECT_EQ(image.GetHeight(), -3);
    EXPECT_FALSE(image.IsEmpty());
    image.Marking(-100, -100, 100, 100, 1, 2, 3);
    image.Invert();
    image.Blur();
    image.Erode();
    image.SetRedGain(2);
    image.Offset(1, 1);
    image.SetPixel(0, 0, 1);
    EXPECT_EQ(image.GetPixel(0, 0), 0u);
    EXPECT_EQ(image.GetImagePtr(0, 0, 0, 0), nullptr);
}
