#include "image/NamedFilters.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

using namespace ormalux;
using namespace testing_support;

namespace {

using Pixels = std::vector<std::uint8_t>;

// The definition, word for word, in 64 bits that are cut to 32.
Pixels plainFilter(const Pixels& in, int width, int height, const Convolution& c)
{
    Pixels out(in.size());
    const int size = int(c.size), half = size / 2;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            std::uint64_t sum = 0;
            for (int row = 0; row < size; ++row)
                for (int column = 0; column < size; ++column) {
                    const int nx = std::clamp(x + column - half, 0, width - 1);
                    const int ny = std::clamp(y + row - half, 0, height - 1);
                    sum += std::uint64_t(c.entries[row * size + column]) * in[std::size_t(ny) * width + nx];
                }
            std::int64_t value = std::int32_t(sum);
            if (std::int32_t(c.divisor) != 0)
                value /= std::int32_t(c.divisor);
            out[std::size_t(y) * width + x] =
                std::uint8_t(std::clamp(std::int32_t(std::int64_t(std::int32_t(c.offset)) + value), 0, 255));
        }
    return out;
}

Pixels filtered(Pixels pixels, int width, int height, const Convolution& c, bool threaded)
{
    EXPECT_TRUE(filter(GrayView{pixels.data(), width, height, width}, c, threaded));
    return pixels;
}

std::vector<long> randomEntries(std::mt19937& engine, long size, long magnitude)
{
    std::vector<long> entries(std::size_t(size) * size);
    for (long& entry : entries)
        entry = long(engine() % (2 * std::uint64_t(magnitude) + 1)) - magnitude;
    return entries;
}

const NamedFilter allNames[] = {NamedFilter::Sharpen,    NamedFilter::Blur,       NamedFilter::Soften,
                                NamedFilter::Gassian3x3, NamedFilter::Gassian5x5, NamedFilter::Emboss,
                                NamedFilter::Edge,       NamedFilter::Laplacian};

} // namespace

TEST(Filter, EverySizeAndMagnitudeEqualsTheDefinition)
{
    // The magnitudes lead through entries in bytes, 16-bit sums, 16-bit entries and 32-bit entries.
    const long magnitudes[] = {1, 5, 127, 128, 200, 32767, 40000, 2147483647L};
    forEachKernelTarget([&](auto target) {
        std::mt19937 engine(5);
        for (long size : {1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 16, 31, 33})
            for (long magnitude : magnitudes) {
                const auto entries = randomEntries(engine, size, magnitude);
                const int width = 1 + int(engine() % 150), height = 1 + int(engine() % 40);
                const auto pixels = randomBytes(std::size_t(width) * height, engine());
                const long divisors[] = {1, -1, 0, 7, -13, size * size * magnitude / 2 + 1, INT_MIN};
                const Convolution c{entries.data(), size, std::int32_t(divisors[engine() % 7]),
                                    long(engine() % 512) - 128};
                ASSERT_EQ(filtered(pixels, width, height, c, false), plainFilter(pixels, width, height, c))
                    << int(target) << " size " << size << " magnitude " << magnitude << " divisor "
                    << c.divisor << " " << width << " x " << height;
            }
    });
}

TEST(Filter, BandsReadUnfilteredRowsOfTheirNeighbours)
{
    std::mt19937 engine(6);
    forEachBandCount([&](int bands) {
        for (long size : {1, 2, 3, 5, 7, 10})
            for (int height : {1, 2, 3, 5, 17, 64}) {
                const int width = 70;
                const auto entries = randomEntries(engine, size, 9);
                const auto pixels = randomBytes(std::size_t(width) * height, engine());
                const Convolution c{entries.data(), size, 5, 100};
                ASSERT_EQ(filtered(pixels, width, height, c, true), plainFilter(pixels, width, height, c))
                    << bands << " bands, size " << size << ", height " << height;
            }
    });
}

TEST(Filter, SumsQuotientsAndOffsetsWrapAt32Bits)
{
    const Pixels pixels{0, 1, 2, 127, 128, 129, 254, 255};
    const long entries[] = {INT_MIN, INT_MAX, 16843009L, -8421505L, 65536, -65536, 32768, -32768};
    const long divisors[] = {0, 1, -1, 2, -2, 3, INT_MIN, INT_MAX, 65537};
    const long offsets[] = {0, 255, -255, INT_MIN, INT_MAX, 1073741824};
    forEachKernelTarget([&](auto target) {
        for (long entry : entries)
            for (long divisor : divisors)
                for (long offset : offsets) {
                    const Convolution c{&entry, 1, divisor, offset};
                    ASSERT_EQ(filtered(pixels, 8, 1, c, false), plainFilter(pixels, 8, 1, c))
                        << int(target) << ": " << entry << " / " << divisor << " + " << offset;
                }
    });
}

TEST(Filter, EveryReachableSumOverEveryDivisorIsTruncated)
{
    // 255 x 255 products of both signs, each divided by every divisor up to 260.
    Pixels ramp(256);
    for (int i = 0; i < 256; ++i)
        ramp[i] = std::uint8_t(i);
    forEachKernelTarget([&](auto target) {
        for (long divisor = -260; divisor <= 260; ++divisor)
            for (long entry : {1, -1, 3, 128, -128, 255, -257, 1000, 16448, -16449}) {
                const Convolution c{&entry, 1, divisor, entry * divisor < 0 ? 255 : 0};
                ASSERT_EQ(filtered(ramp, 256, 1, c, false), plainFilter(ramp, 256, 1, c))
                    << int(target) << ": " << entry << " / " << divisor;
            }
    });
}

TEST(Filter, NamedFiltersEqualTheirKernels)
{
    forEachKernelTarget([&](auto target) {
        for (NamedFilter name : allNames)
            for (int width : oddSizes)
                for (int height : {1, 2, 3, 8, 9, 33}) {
                    Pixels pixels = randomBytes(std::size_t(width) * height, unsigned(width * height));
                    if (height == 9) // extremes alone: sums at both ends of their range
                        for (auto& p : pixels)
                            p = p & 1 ? 255 : 0;
                    const Pixels expected = plainFilter(pixels, width, height, convolutionOf(name));
                    ASSERT_TRUE(filter(GrayView{pixels.data(), width, height, width}, name));
                    ASSERT_EQ(pixels, expected)
                        << int(target) << " filter " << int(name) << " " << width << " x " << height;
                }
    });
}

TEST(Filter, NamedDivisionsAreExactForEverySum)
{
    // A flat picture with one pixel more or less visits every sum of the averaging filters.
    forEachKernelTarget([&](auto target) {
        for (NamedFilter name : {NamedFilter::Blur, NamedFilter::Gassian5x5, NamedFilter::Sharpen})
            for (int level = 0; level < 255; ++level) {
                Pixels pixels(128 * 5, std::uint8_t(level));
                for (int i = 0; i < 128 * 5; i += 1 + i % 7)
                    ++pixels[i];
                const Pixels expected = plainFilter(pixels, 128, 5, convolutionOf(name));
                filter(GrayView{pixels.data(), 128, 5, 128}, name);
                ASSERT_EQ(pixels, expected) << int(target) << " filter " << int(name) << " level " << level;
            }
    });
}

TEST(Filter, LeavesTheBytesBetweenTheRowsOfAStridedViewAlone)
{
    forEachKernelTarget([](auto) {
        const Pixels before = randomBytes(100 * 20, 3);
        Pixels general = before, named = before;
        const Convolution blur = convolutionOf(NamedFilter::Blur);
        filter(GrayView{general.data() + 3, 90, 20, 100}, blur, true);
        filter(GrayView{named.data() + 3, 90, 20, 100}, NamedFilter::Blur);
        ASSERT_EQ(general, named);
        for (std::size_t i = 0; i < before.size(); ++i)
            if (i % 100 < 3 || i % 100 >= 93) {
                ASSERT_EQ(general[i], before[i]);
            }
    });
}

TEST(Filter, DoesNothingWithoutAKernelOrWithASizeOutOfRange)
{
    Pixels pixels = randomBytes(100, 1);
    const Pixels before = pixels;
    const GrayView view{pixels.data(), 10, 10, 10};
    const long entry = 2;
    for (long size : {0L, -1L, long(INT_MIN), 1025L, 46341L, 65536L, long(INT_MAX), LONG_MAX, LONG_MIN})
        EXPECT_FALSE(filter(view, Convolution{&entry, size, 1, 0}, true)) << size;
    EXPECT_FALSE(filter(view, Convolution{nullptr, 1, 1, 0}, false));
    EXPECT_FALSE(filter(GrayView{}, Convolution{&entry, 1, 1, 0}, true));
    EXPECT_FALSE(filter(GrayView{}, NamedFilter::Blur));
    EXPECT_EQ(pixels, before);
}
