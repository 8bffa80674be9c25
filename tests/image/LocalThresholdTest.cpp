#include "image/OtsuThreshold.h"
#include "image/VisionImage.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace testing_support;

namespace {

using Pixels = std::vector<std::uint8_t>;

// Weighted means in doubles; where one lies so close to the middle of two levels that single precision may
// round it to either, both are right.
void expectMarked(const Pixels& in, const Pixels& out, int width, int height,
                  const std::vector<double>& weights, int offset)
{
    const int window = int(weights.size()), reach = window / 2;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            double mean = 0;
            for (int row = 0; row < window; ++row)
                for (int column = 0; column < window; ++column)
                    mean += weights[row] * weights[column] *
                            in[std::size_t(std::clamp(y + row - reach, 0, height - 1)) * width +
                               std::clamp(x + column - reach, 0, width - 1)];
            if (std::abs(mean - std::floor(mean) - 0.5) < 2e-4)
                continue;
            const std::size_t i = std::size_t(y) * width + x;
            ASSERT_EQ(out[i], in[i] > std::lround(mean) - offset ? 255 : 0)
                << x << ", " << y << " of " << width << " x " << height << ", window " << window;
        }
}

Pixels marked(Pixels pixels, int width, int height, int method, int window, double offset)
{
    CKestImage image;
    image.SetImagePtrLink(width, height, pixels.data());
    EXPECT_EQ(image.LocalThreshold(method, window, offset), 1);
    return pixels;
}

std::vector<double> gaussian(int window)
{
    const double sigma = 0.3 * ((window - 1) * 0.5 - 1) + 0.8;
    std::vector<double> weights;
    double sum = 0;
    for (int i = 0; i < window; ++i) {
        weights.push_back(std::exp(-0.5 * std::pow((i - window / 2) / sigma, 2)));
        sum += weights.back();
    }
    for (double& weight : weights)
        weight /= sum;
    return weights;
}

} // namespace

TEST(LocalThreshold, EqualsTheDefinitionAtEverySize)
{
    forEachKernelTarget([](auto) {
        for (const auto& [width, height] : {std::pair{1, 1}, {3, 5}, {4, 17}, {17, 3}, {67, 50}, {641, 2}}) {
            const Pixels in = randomBytes(std::size_t(width) * height, unsigned(width));
            for (int window : {3, 5, 17, 31})
                expectMarked(in, marked(in, width, height, LOCAL_MEAN, window, -7.5), width, height,
                             std::vector<double>(std::size_t(window), 1.0 / window), -7);
            expectMarked(in, marked(in, width, height, LOCAL_GAUSSIAN, 3, 0), width, height,
                         {0.25, 0.5, 0.25}, 0);
            expectMarked(in, marked(in, width, height, LOCAL_GAUSSIAN, 15, 3), width, height, gaussian(15),
                         3);
        }
    });
}

TEST(LocalThreshold, AllKernelSetsMarkTheSamePixels)
{
    const Pixels in = randomBytes(333 * 90, 5);
    for (int method : {LOCAL_MEAN, LOCAL_GAUSSIAN})
        for (int window : {9, 45, 1001}) {
            const Pixels best = marked(in, 333, 90, method, window, 1.25);
            forEachKernelTarget([&](auto) { EXPECT_EQ(marked(in, 333, 90, method, window, 1.25), best); });
        }
}

TEST(LocalThreshold, FlatPicturesStayOnTheirSideOfTheOffset)
{
    for (int level : {0, 77, 255})
        for (int method : {LOCAL_MEAN, LOCAL_GAUSSIAN}) {
            const Pixels flat(50 * 20, std::uint8_t(level));
            EXPECT_EQ(marked(flat, 50, 20, method, 101, 0), Pixels(flat.size(), 0));
            EXPECT_EQ(marked(flat, 50, 20, method, 101, 1), Pixels(flat.size(), 255));
            EXPECT_EQ(marked(flat, 50, 20, method, 101, 1e300), Pixels(flat.size(), 255));
        }
}

TEST(LocalThreshold, RefusesWhatItCannotDo)
{
    CKestImage image(9, 9);
    for (int window : {-3, 0, 1, 4, 1003})
        EXPECT_EQ(image.LocalThreshold(LOCAL_MEAN, window, -1), 0) << window;
    EXPECT_EQ(image.LocalThreshold(2, 3, -1), 0);
    EXPECT_EQ(image.LocalThreshold(LOCAL_MEAN, 3, std::nan("")), 0);
    EXPECT_EQ(CKestImage().LocalThreshold(LOCAL_MEAN, 3, 0), 0);
    EXPECT_EQ(image.GetGrayLevelCount(0), 81);
}

TEST(OtsuThreshold, SplitsWhereTheVarianceBetweenTheClassesIsLargest)
{
    const auto levelOf = [](std::initializer_list<std::pair<int, int>> levels) {
        ormalux::LevelCounts counts{};
        for (const auto& [level, count] : levels)
            counts[std::size_t(level)] = count;
        return ormalux::otsuLevel(counts);
    };
    EXPECT_EQ(levelOf({}), 0);
    EXPECT_EQ(levelOf({{90, 1000}}), 0);
    EXPECT_EQ(levelOf({{20, 500}, {200, 500}}), 20); // the least of equals
    EXPECT_EQ(levelOf({{0, 1}, {255, 1}}), 0);
    EXPECT_EQ(levelOf({{10, 100}, {50, 100}, {60, 100}, {240, 50}}), 60);
    CKestImage image(2, 2);
    image.SetPixel(0, 0, 200);
    image.SetPixel(1, 0, 40);
    EXPECT_EQ(image.OtsuThreshold(), 40);
    EXPECT_EQ(image.GetPixel(0, 0), 255);
    EXPECT_EQ(image.GetPixel(1, 0), 0);
}
