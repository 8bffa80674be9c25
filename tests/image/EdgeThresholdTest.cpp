#include "image/AutoThreshold.h"
#include "image/ImagePart.h"
#include "image/Threshold.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <climits>

using namespace ormalux;
using namespace testing_support;

namespace {

// Rising ramps of all slopes and lengths in both directions, with noise: many edges and near-edges.
std::vector<std::uint8_t> ramps(int width, int height, unsigned seed)
{
    auto pixels = randomBytes(std::size_t(width) * height, seed);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            auto& p = pixels[std::size_t(y) * width + x];
            const int slope = 1 + (x / 40 + y / 50 + int(seed)) % 6;
            p = std::uint8_t((x % 37 + y % 29) * slope % 256 + (p % 16 == 0 ? 9 : 0));
        }
    return pixels;
}

struct Edges
{
    long long sum = 0;
    long long count = 0;
};

// One scan line pixel by pixel, as it is defined.
void scan(const ConstGrayView& view, int x, int y, int dx, int dy, Edges& edges)
{
    const int length = dx ? view.width : view.height;
    const auto at = [&](int i) { return int(view.row(y + i * dy)[x + i * dx]); };
    for (int i = 0; i < length;) {
        int n = 1, sum = at(i);
        while (i + n < length && at(i + n) > at(i + n - 1))
            sum += at(i + n++);
        if (n >= 5 && at(i + n - 1) - at(i) > 2 * n) {
            edges.sum += sum / n;
            ++edges.count;
        }
        i += n;
    }
}

long plainAutoThreshold(const ConstGrayView& view, char mode, int step)
{
    step = step < 1 ? 1 : step >= view.width ? std::max(view.width / 2, 1) : step;
    const int bands = bandCount();
    Edges edges;
    for (int i = 0; i < bands; ++i) {
        const int rowEnd = i + 1 == bands ? view.height : view.height / bands * (i + 1);
        const int columnEnd = i + 1 == bands ? view.width : view.width / bands * (i + 1);
        for (int y = view.height / bands * i; mode != 'V' && y < rowEnd; y += step)
            scan(view, 0, y, 1, 0, edges);
        for (int x = view.width / bands * i; mode != 'H' && x < columnEnd; x += step)
            scan(view, x, 0, 0, 1, edges);
    }
    return edges.count ? long(double(edges.sum) / double(float(edges.count))) : 0;
}

ConstGrayView viewOf(const std::vector<std::uint8_t>& pixels, int width, int height)
{
    return {pixels.data(), width, height, width};
}

} // namespace

TEST(AutoThreshold, EqualsAPixelByPixelScanForEverySetBandCountAndStep)
{
    forEachKernelTarget([](auto target) {
        forEachBandCount([&](int bands) {
            for (int width : oddSizes)
                for (int height : {1, 4, 5, 37, 300}) {
                    const auto pixels = ramps(width, height, unsigned(width + height));
                    const auto view = viewOf(pixels, width, height);
                    for (int step : {INT_MIN, 1, 2, 3, 15, 16, 70, 640, INT_MAX})
                        for (char mode : {'H', 'V', 'A'})
                            ASSERT_EQ(autoThreshold(view, mode, step), plainAutoThreshold(view, mode, step))
                                << int(target) << " bands " << bands << " " << width << "x" << height
                                << " step " << step << " " << mode;
                }
        });
    });
}

TEST(AutoThreshold, SeesOnlyTheRectangle)
{
    const auto pixels = ramps(300, 200, 5);
    const auto view = viewOf(pixels, 300, 200).part(33, 21, 150, 140);
    forEachKernelTarget(
        [&](auto) { EXPECT_EQ(autoThreshold(view, 'A', 2), plainAutoThreshold(view, 'A', 2)); });
}

TEST(AutoThreshold, ALongRunMayBeginAnywhereInALongLine)
{
    for (int length : {4223, 9000})
        for (int begin : {0, 1, 60, 63, 3968, 4031, 4064, 4090, 4095, 4096}) {
            // 127 pixels that rise by 255, just enough for an edge.
            std::vector<std::uint8_t> line(std::size_t(length), 0);
            for (int i = 1; i < 127; ++i)
                line[std::size_t(begin + i)] = std::uint8_t(2 * i + 3);
            const auto row = viewOf(line, length, 1), column = viewOf(line, 1, length);
            forEachKernelTarget([&](auto target) {
                EXPECT_EQ(autoThreshold(row, 'H', 1), 128) << int(target) << " " << begin;
                EXPECT_EQ(autoThreshold(column, 'V', 1), 128) << int(target) << " " << begin;
            });
        }
}

TEST(AutoThreshold, RunsMayFillTheWholeRangeOfLevels)
{
    std::vector<std::uint8_t> ramp(256);
    for (int i = 0; i < 256; ++i)
        ramp[i] = std::uint8_t(i);
    forEachKernelTarget([&](auto) {
        EXPECT_EQ(autoThreshold(viewOf(ramp, 256, 1), 'H', 1), 0); // a rise of 255 over 256 pixels is no edge
        EXPECT_EQ(autoThreshold(viewOf(ramp, 1, 256), 'V', 1), 0);
    });
    const std::vector<std::uint8_t> edge{0, 10, 20, 30, 40, 50};
    EXPECT_EQ(autoThreshold(viewOf(edge, 6, 1), 'H', 1), 25);
    EXPECT_EQ(autoThreshold(viewOf(edge, 6, 1), 'h', 1), 0);
    EXPECT_EQ(autoThreshold({}, 'A', 1), 0);
}

TEST(AdaptiveThreshold, EqualsAPixelByPixelScanForEverySetAndBandCount)
{
    for (int width : oddSizes) {
        const int height = 23;
        auto source = ramps(width, height, unsigned(width));
        std::fill_n(source.begin() + 7 * width, width, 50); // a row without edges
        auto expected = source;
        for (int y = 0; y < height; ++y) {
            Edges edges;
            scan(viewOf(source, width, height), 0, y, 1, 0, edges);
            for (int i = y * width; i < (y + 1) * width; ++i)
                expected[i] = edges.count == 0 ? 77 : source[i] > edges.sum / edges.count ? 255 : 0;
        }
        forEachKernelTarget([&](auto target) {
            forEachBandCount([&](int bands) {
                auto pixels = source;
                adaptiveThreshold({pixels.data(), width, height, width}, 77);
                ASSERT_EQ(pixels, expected) << int(target) << " " << bands << " " << width;
            });
        });
    }
}

TEST(Threshold, TakesAnyNumber)
{
    std::vector<std::uint8_t> levels(256);
    for (int i = 0; i < 256; ++i)
        levels[i] = std::uint8_t(i);
    const int numbers[] = {INT_MIN, -1, 0, 1, 100, 254, 255, 256, INT_MAX};
    forEachBandCount([&](int) {
        for (int t : numbers) {
            auto pixels = levels;
            threshold(pixels, t);
            for (int p = 0; p < 256; ++p)
                ASSERT_EQ(pixels[p], p > t ? 255 : 0) << t;
            for (int lower : numbers)
                for (int value : {0, 9, 255}) {
                    pixels = levels;
                    doubleThreshold(pixels, t, lower, std::uint8_t(value));
                    for (int p = 0; p < 256; ++p)
                        ASSERT_EQ(pixels[p], lower <= p && p <= t ? value
                                             : value == 255       ? 0
                                                                  : 255)
                            << lower << " to " << t;
                }
        }
    });
}
