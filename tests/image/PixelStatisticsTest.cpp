#include "image/VisionImage.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

using namespace testing_support;

namespace {

struct Picture
{
    Picture(int w, int h, unsigned seed) : width(w), height(h), pixels(randomBytes(std::size_t(w) * h, seed))
    {
        image.SetImagePtr(w, h, pixels.data());
    }

    int width;
    int height;
    std::vector<std::uint8_t> pixels;
    CKestImage image;
};

bool samePixel(const _stPixel& a, const _stPixel& b)
{
    return a.x == b.x && a.y == b.y && a.gray_level == b.gray_level && a.parameter == b.parameter;
}

std::vector<_stPixel> plainCollection(const Picture& picture, const RECT& area, int low, int high)
{
    std::vector<_stPixel> found;
    for (int y = area.top; y <= area.bottom; ++y)
        for (int x = area.left; x <= area.right; ++x) {
            const std::uint8_t p = picture.pixels[std::size_t(y) * picture.width + x];
            if (low <= p && p <= high)
                found.push_back({x, y, p, 0.0});
        }
    return found;
}

} // namespace

TEST(PixelStatistics, CollectedPixelsStandInRowOrderForEverySetAndBandCount)
{
    for (int width : oddSizes) {
        const Picture picture(width, 11, unsigned(width));
        const RECT whole{0, 0, width - 1, 10};
        const RECT part{width / 3, 2, width - 1, 8};
        forEachKernelTarget([&](auto target) {
            forEachBandCount([&](int bands) {
                for (auto [low, high] : {std::pair{0, 255}, {0, 84}, {7, 7}, {250, 255}, {9, 8}}) {
                    CPixelArray ar;
                    ar.Add(1, 2, 3, 4.0); // stays in front
                    auto expected = plainCollection(picture, whole, low, high);
                    const auto more = plainCollection(picture, part, low, high);
                    expected.insert(expected.begin(), _stPixel{1, 2, 3, 4.0});
                    expected.insert(expected.end(), more.begin(), more.end());
                    picture.image.GetPixelArray(std::uint8_t(low), std::uint8_t(high), ar);
                    const int count =
                        picture.image.GetPixelArray(part.right, part.bottom, part.left, part.top,
                                                    std::uint8_t(low), std::uint8_t(high), ar);
                    ASSERT_EQ(std::size_t(count), expected.size());
                    ASSERT_TRUE(std::ranges::equal(ar.records(), expected, samePixel))
                        << int(target) << " " << bands << " " << width << " " << low;
                }
            });
        });
    }
}

TEST(PixelStatistics, MeansEqualPlainCodeOverPictureAndRectangle)
{
    const Picture picture(129, 65, 4);
    std::uint64_t whole = 0, part = 0;
    long number[2] = {}, x[2] = {}, y[2] = {};
    for (int i = 0; i < 129 * 65; ++i) {
        const int p = picture.pixels[std::size_t(i)], column = i % 129, row = i / 129;
        whole += std::uint64_t(p);
        if (column < 5 || column > 100 || row < 7 || row > 40)
            continue;
        part += std::uint64_t(p);
        const int bright = p > 90;
        ++number[bright];
        x[bright] += column;
        y[bright] += row;
    }
    forEachKernelTarget([&](auto) {
        forEachBandCount([&](int) {
            EXPECT_EQ(picture.image.GetGrayLevelAverage(), double(whole) / (129 * 65));
            EXPECT_EQ(picture.image.GetGrayLevelAverage(100, 40, 5, 7), double(part) / (96 * 34));
        });
        for (int bright : {0, 1}) {
            long cx = 0, cy = 0;
            picture.image.GetGravityCenter(100, 7, 5, 40, 90, bright ? 255 : 0, &cx, &cy);
            EXPECT_EQ(cx, x[bright] / number[bright]);
            EXPECT_EQ(cy, y[bright] / number[bright]);
        }
    });
}

TEST(PixelStatistics, NothingCountedLeavesTheOutputsUntouched)
{
    const Picture picture(8, 8, 1);
    long cx = -5, cy = -6;
    picture.image.GetGravityCenter(INT_MAX, 255, &cx, &cy);
    picture.image.GetGravityCenter(INT_MIN, 0, &cx, &cy);
    picture.image.GetGravityCenter(100, 1, &cx, &cy);
    picture.image.GetGravityCenter(0, 0, 8, 7, 100, 255, &cx, &cy);
    picture.image.GetGravityCenter(INT_MIN, INT_MIN, INT_MAX, INT_MAX, 100, 255, &cx, &cy);
    CKestImage().GetGravityCenter(0, 255, &cx, &cy);
    EXPECT_EQ(cx, -5);
    EXPECT_EQ(cy, -6);
    picture.image.GetGravityCenter(INT_MIN, 255, &cx, nullptr);
    EXPECT_EQ(cx, 3);
}

TEST(PixelStatistics, HistogramAddsToTheCallersCounts)
{
    const Picture picture(641, 31, 2);
    std::vector<long> counts(256, 0), expected(256, 0);
    for (std::uint8_t p : picture.pixels)
        expected[p] += 2;
    picture.image.Histogram(nullptr);
    picture.image.Histogram(counts.data());
    picture.image.Histogram(counts.data());
    EXPECT_EQ(counts, expected);
    EXPECT_EQ(picture.image.GetGrayLevelCount(9) * 2, expected[9]);
}

TEST(PixelStatistics, PicturesWithoutPixelsSurviveEveryOperation)
{
    CKestImage images[] = {CKestImage(), CKestImage(3, 4, 7, nullptr, nullptr), CKestImage(-1, 5)};
    for (CKestImage& image : images) {
        image.Invert();
        image.Light(1, 1);
        image.Gamma(2);
        image.HistoEqualize();
        image.HistoLog();
        image.HistoRoot();
        image.HistoNormalize();
        image.HistoStretch();
        image.AutoContrast();
        image.Threshold(3);
        image.DoubleThreshold(3, 1, 0);
        image.AdaptiveThreshold(1);
        CPixelArray ar;
        EXPECT_EQ(image.GetPixelArray(0, 255, ar), 0);
        EXPECT_EQ(image.GetPixelArray(0, 0, 0, 0, 0, 255, ar), 0);
        EXPECT_EQ(image.GetAutoThreshold('A', 1), 0);
        EXPECT_EQ(image.GetGrayLevelAverage(), 0);
        EXPECT_EQ(image.GetGrayLevelAverage(0, 0, 0, 0), 0);
        EXPECT_EQ(image.GetGrayLevelCount(0), 0);
    }
}

TEST(PixelStatistics, TablesReachThePixels)
{
    Picture picture(17, 5, 3);
    picture.image.Light(20, 0);
    picture.image.Invert();
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 17; ++x)
            EXPECT_EQ(picture.image.GetPixel(x, y), 255 - std::min(picture.pixels[y * 17 + x] + 20, 255));
    unsigned char two[] = {10, 20, 20, 10};
    CKestImage image(2, 2, two);
    image.HistoNormalize();
    EXPECT_EQ(image.GetPixel(0, 0), 0);
    EXPECT_EQ(image.GetPixel(1, 0), 254);
    image.HistoStretch();
    EXPECT_EQ(image.GetPixel(1, 0), 255);
}
