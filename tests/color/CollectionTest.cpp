#include "tests/color/Buffers.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

using namespace testing_support;

TEST(ColorCollection, ListsEveryPixelInRangeByRows)
{
    const auto low = RGB(40, 0, 90), high = RGB(250, 200, 255);
    forEachKernelTarget([&](auto) {
        forEachBandCount([&](int) {
            for (int width : {1, 7, 130, 2050}) {
                const int height = 9;
                auto bytes = paddedBytes(width, height, 23);
                const CKestImage24 image(width, height, bytes.data());
                const int x1 = width / 3, y1 = 2;
                CColorPixelArray all, part;
                part.Add(-1, -1, 7ul);
                const int count = image.GetPixelArray(low, high, all);
                const int partCount = image.GetPixelArray(width - 1, height - 1, x1, y1, low, high, part);
                int i = 0, k = 1;
                for (int y = 0; y < height; ++y)
                    for (int x = 0; x < width; ++x) {
                        const std::uint8_t* p = &bytes[std::size_t(3 * (width * y + x))];
                        if (p[2] < 40 || p[2] > 250 || p[1] > 200 || p[0] < 90)
                            continue;
                        const auto isHere = [&](const _stColorPixel& pixel) {
                            return pixel.x == x && pixel.y == y && pixel.color == RGB(p[2], p[1], p[0]) &&
                                   pixel.parameter == 0.0;
                        };
                        ASSERT_TRUE(isHere(all[i++])) << width << " " << x << " " << y;
                        if (x >= x1 && y >= y1) {
                            ASSERT_TRUE(isHere(part[k++])) << width << " " << x << " " << y;
                        }
                    }
                ASSERT_EQ(count, i);
                ASSERT_EQ(partCount, k);
                ASSERT_EQ(part.GetCount(), k);
            }
        });
    });
}

TEST(ColorCollection, FindsNothingOutsideOrInReversedRanges)
{
    auto bytes = paddedBytes(5, 4, 24);
    const CKestImage24 image(5, 4, bytes.data());
    CColorPixelArray found;
    for (int far : extremes)
        if (far < 0 || far > 4) {
            EXPECT_EQ(image.GetPixelArray(far, 0, 2, 2, 0, 0xFFFFFF, found), 0);
        }
    EXPECT_EQ(image.GetPixelArray(RGB(0, 9, 0), RGB(255, 8, 255), found), 0);
    EXPECT_EQ(CKestImage24().GetPixelArray(0, 0xFFFFFF, found), 0);
    EXPECT_EQ(image.GetPixelArray(0, 0xFFFFFF, found), 20);
}
