#include "image/Morphology.h"
#include "image/VisionImage.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace ormalux;
using namespace testing_support;

namespace {

using Pixels = std::vector<std::uint8_t>;

struct Picture
{
    int width, height, step;
    std::ptrdiff_t stride;
    Pixels bytes;

    Picture(int w, int h, int bytesPerPixel, int gap, unsigned seed)
        : width(w), height(h), step(bytesPerPixel), stride(w * bytesPerPixel + gap),
          bytes(randomBytes(std::size_t(stride) * h, seed))
    {}
    InterleavedView view() { return {bytes.data(), width, height, stride, step}; }
};

// The scan word for word: every pixel reads what the scan has written so far.
template <class Better>
Pixels plainScan(Picture picture, Better better)
{
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            for (int channel = 0; channel < picture.step; ++channel) {
                const auto at = [&](int px, int py) -> std::uint8_t& {
                    return picture.bytes[py * picture.stride + px * picture.step + channel];
                };
                std::uint8_t best = at(x, y);
                for (int ny = std::max(0, y - 1); ny <= std::min(picture.height - 1, y + 1); ++ny)
                    for (int nx = std::max(0, x - 1); nx <= std::min(picture.width - 1, x + 1); ++nx)
                        best = better(best, at(nx, ny));
                at(x, y) = best;
            }
    return picture.bytes;
}

void expectBothScansRight(const Picture& picture, const char* what)
{
    const auto smaller = [](std::uint8_t a, std::uint8_t b) { return std::min(a, b); };
    const auto larger = [](std::uint8_t a, std::uint8_t b) { return std::max(a, b); };
    Picture eroded = picture, dilated = picture;
    erode(eroded.view());
    dilate(dilated.view());
    ASSERT_EQ(eroded.bytes, plainScan(picture, smaller))
        << what << " " << picture.width << " x " << picture.height;
    ASSERT_EQ(dilated.bytes, plainScan(picture, larger))
        << what << " " << picture.width << " x " << picture.height;
}

} // namespace

TEST(Morphology, InPlaceScanEqualsTheLiteralLoopForEveryWidth)
{
    forEachKernelTarget([](auto target) {
        for (int step : {1, 3, 2, 4})
            for (int width = 1; width <= 200; width += width < 70 ? 1 : 29)
                for (int height : {1, 2, 5})
                    expectBothScansRight(
                        Picture(width, height, step, width % 3, unsigned(width * step + height)),
                        int(target) == 3 ? "plain" : "vectors");
    });
}

TEST(Morphology, RampsThatFallAllAlongTheRowAreFollowed)
{
    // Every block lowers (raises) the running extreme of its row.
    forEachKernelTarget([](auto) {
        for (int step : {1, 3})
            for (int direction : {1, -1}) {
                Picture picture(331, 9, step, 0, 1);
                for (std::size_t i = 0; i < picture.bytes.size(); ++i)
                    picture.bytes[i] =
                        std::uint8_t(128 + direction * int(i % (331 * step)) / (2 * step) % 127 + i % 3);
                expectBothScansRight(picture, "ramp");
            }
    });
}

TEST(Morphology, ABlackPixelSpreadsDownAndToTheRight)
{
    forEachKernelTarget([](auto) {
        Pixels pixels(25, 255);
        pixels[2 * 5 + 2] = 0;
        erode(GrayView{pixels.data(), 5, 5, 5});
        Pixels expected(25, 0);
        std::fill_n(expected.begin(), 6, 255);
        EXPECT_EQ(pixels, expected);
    });
}

TEST(Morphology, DoesNothingToAnEmptyPicture)
{
    erode(GrayView{});
    dilate(InterleavedView{});
    std::uint8_t pixel = 7;
    dilate(InterleavedView{&pixel, 1, 0, 3, 3});
    erode(InterleavedView{&pixel, 1, 1, 1, 0});
    EXPECT_EQ(pixel, 7);
}

TEST(Morphology, OpeningAndClosingLeaveOneLevelOfTheTopLeftCorner)
{
    for (const auto& [width, height] : {std::pair{1, 1}, {2, 1}, {3, 5}, {64, 17}, {129, 40}}) {
        Pixels levels = randomBytes(std::size_t(width) * height, 9);
        int least = 255, greatest = 0;
        for (int y = 0; y < std::min(2, height); ++y)
            for (int x = 0; x < std::min(2, width); ++x) {
                least = std::min<int>(least, levels[y * width + x]);
                greatest = std::max<int>(greatest, levels[y * width + x]);
            }
        CKestImage opened(width, height, levels.data()), closed(opened);
        opened.OpenBox();
        closed.CloseBox();
        EXPECT_EQ(opened.GetGrayLevelCount(std::uint8_t(least)), width * height);
        EXPECT_EQ(closed.GetGrayLevelCount(std::uint8_t(greatest)), width * height);
    }
}
