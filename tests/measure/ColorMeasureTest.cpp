#include "color/VisionImage24.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <functional>

using namespace testing_support;

namespace {

constexpr int width = 61, height = 47;

/// A picture of a few colours in patches, so that blobs are larger than a pixel; rows are unpadded.
std::vector<std::uint8_t> patches()
{
    const auto noise = randomBytes(std::size_t(width) * height * 3, 51);
    std::vector<std::uint8_t> bytes(std::size_t(ormalux::paddedStride(width)) * height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < 3; ++c)
                bytes[std::size_t(3 * (width * y + x) + c)] =
                    std::uint8_t(noise[std::size_t(3 * (width * (y / 5) + x / 4) + c)] & 0xE0);
    return bytes;
}

using Search = std::function<int(CBlobRectArray&)>;

/// Both find the same records behind what the array already holds.
void expectSame(const Search& gray, const Search& color)
{
    CBlobRectArray expected, found;
    expected.Add(1, 2, 3, 4, 5);
    found.Add(1, 2, 3, 4, 5);
    EXPECT_EQ(gray(expected), color(found));
    ASSERT_EQ(expected.GetCount(), found.GetCount());
    EXPECT_GT(expected.GetCount(), 1);
    for (int i = 0; i < expected.GetCount(); ++i) {
        const auto boxOf = [](const _stBlobRect& b) { return RECT{b.left, b.top, b.right, b.bottom}; };
        EXPECT_TRUE(boxOf(expected[i]) == boxOf(found[i]));
        EXPECT_EQ(expected[i].pixel_count, found[i].pixel_count);
    }
}

} // namespace

TEST(ColorBlobs, AreThoseOfTheGrayPlane)
{
    auto bytes = patches();
    const CKestImage24 image(width, height, bytes.data());
    CKestImage mean, green, black(width, height), marks(width, height);
    image.GetImageWithFilter('A', mean);
    image.GetImageWithFilter('G', green);
    const COLORREF low = RGB(30, 60, 0), high = RGB(230, 255, 160);
    for (int i = 0; i < width * height; ++i) {
        const std::uint8_t* p = &bytes[std::size_t(3 * i)];
        black.view().pixels[i] = std::uint8_t(255 - std::max({p[0], p[1], p[2]}));
        marks.view().pixels[i] = p[2] >= 30 && p[2] <= 230 && p[1] >= 60 && p[0] <= 160 ? 255 : 0;
    }
    const long large = 1000;
    for (long small : {1L, 3L}) {
        expectSame(
            [&](auto& a) { return marks.GetBlobList(255, small, large, small, large, a); },
            [&](auto& a) { return image.GetColorRangeBlobList(low, high, small, large, small, large, a); });
        expectSame(
            [&](auto& a) { return marks.GetBlobList(3, 4, 50, 40, 255, small, large, small, large, a); },
            [&](auto& a) {
                return image.GetColorRangeBlobList(3, 4, 50, 40, low, high, small, large, small, large, a);
            });
        expectSame(
            [&](auto& a) { return green.GetBlobList(99, 255, small, large, small, large, a); },
            [&](auto& a) { return image.GetPlaneBlobList('G', 99, 255, small, large, small, large, a); });
        expectSame(
            [&](auto& a) { return green.GetBlobList(3, 4, 50, 40, 99, 0, small, large, small, large, a); },
            [&](auto& a) {
                return image.GetPlaneBlobList(3, 4, 50, 40, 'G', 99, 0, small, large, small, large, a);
            });
        expectSame([&](auto& a) { return mean.GetBlobList(99, 0, small, large, small, large, a); },
                   [&](auto& a) { return image.GetBlobList(99, 0, small, large, small, large, a); });
        expectSame(
            [&](auto& a) { return mean.GetBlobList(3, 4, 50, 40, 99, 255, small, large, small, large, a); },
            [&](auto& a) { return image.GetBlobList(3, 4, 50, 40, 99, 255, small, large, small, large, a); });
        expectSame(
            [&](auto& a) { return mean.GetGrayRangeBlobList(80, 130, small, large, small, large, a); },
            [&](auto& a) { return image.GetGrayRangeBlobList(80, 130, small, large, small, large, a); });
        expectSame([&](auto& a) { return black.GetBlobList(60, 255, small, large, small, large, a); },
                   [&](auto& a) { return image.GetKBlobList(60, 255, small, large, small, large, a); });
        expectSame(
            [&](auto& a) { return black.GetBlobList(3, 4, 50, 40, 60, 255, small, large, small, large, a); },
            [&](auto& a) {
                return image.GetKBlobList(3, 4, 50, 40, 60, 255, small, large, small, large, a);
            });
    }
}

TEST(ColorBlobs, UnknownPlanesReversedRangesAndEmptyImagesFindNothing)
{
    auto bytes = patches();
    const CKestImage24 image(width, height, bytes.data());
    CBlobRectArray found;
    EXPECT_EQ(image.GetPlaneBlobList('O', 0, 255, 1, 99, 1, 99, found), 0);
    EXPECT_EQ(image.GetPlaneBlobList(0, 0, 9, 9, 'r', 0, 255, 1, 99, 1, 99, found), 0);
    EXPECT_EQ(image.GetColorRangeBlobList(RGB(0, 9, 0), RGB(255, 8, 255), 1, 99, 1, 99, found), 0);
    EXPECT_EQ(image.GetBlobList(9, 9, 2, 2, 0, 255, 1, 99, 1, 99, found), 0);
    found.Add(0, 0, 0, 0, 0);
    const CKestImage24 empty;
    EXPECT_EQ(empty.GetBlobList(0, 255, 1, 99, 1, 99, found), 0);
    EXPECT_EQ(empty.GetKBlobList(0, 255, 1, 99, 1, 99, found), 0);
    EXPECT_EQ(empty.GetGrayRangeBlobList(0, 255, 1, 99, 1, 99, found), 0);
    EXPECT_EQ(empty.GetColorRangeBlobList(0, 0xFFFFFF, 1, 99, 1, 99, found), 0);
}

TEST(ColorSampling, ListsTheGraySamplesPointsWithTheirColors)
{
    auto bytes = patches();
    const CKestImage24 image(width, height, bytes.data());
    const CKestImage gray(width, height);
    const auto compare = [&](auto graySample, auto colorSample) {
        CPixelArray expected;
        CColorPixelArray found;
        graySample(expected);
        found.Add(-5, -5, 0ul);
        EXPECT_EQ(colorSample(found), expected.GetCount() + 1);
        EXPECT_GT(expected.GetCount(), 0);
        for (int i = 0; i < expected.GetCount(); ++i) {
            const _stColorPixel& pixel = found[i + 1];
            const std::uint8_t* p = &bytes[std::size_t(3 * (width * expected[i].y + expected[i].x))];
            ASSERT_TRUE(pixel.x == expected[i].x && pixel.y == expected[i].y && pixel.parameter == 0.0);
            ASSERT_EQ(pixel.color, RGB(p[2], p[1], p[0]));
        }
    };
    compare([&](auto& a) { gray.GetLinePixelArray(-4, 50, 70, 3, 0, 255, a); },
            [&](auto& a) { return image.GetLinePixelArray(-4, 50, 70, 3, a); });
    compare([&](auto& a) { gray.GetCyclePixelArray(30, 20, 25, 0, 255, a); },
            [&](auto& a) { return image.GetCyclePixelArray(30, 20, 25, a); });
    compare([&](auto& a) { gray.GetEllipsePixelArray(30, 20, 40, 11, 0, 255, a); },
            [&](auto& a) { return image.GetEllipsePixelArray(30, 20, 40, 11, a); });
    compare([&](auto& a) { gray.GetArcPixelArray(30, 20, 3, -20, 400, 0, 255, a); },
            [&](auto& a) { return image.GetArcPixelArray(30, 20, 3, -20, 400, a); });

    CColorPixelArray none;
    EXPECT_EQ(CKestImage24().GetLinePixelArray(0, 0, 9, 9, none), 0);
    EXPECT_EQ(image.GetCyclePixelArray(LONG_MAX, LONG_MIN, LONG_MAX, none), 0);
    EXPECT_EQ(image.GetEllipsePixelArray(LONG_MIN, 0, LONG_MIN, INT_MIN, none), 0);
    EXPECT_EQ(image.GetArcPixelArray(0, 0, LONG_MAX, INT_MIN, INT_MAX, none), 0);
}
