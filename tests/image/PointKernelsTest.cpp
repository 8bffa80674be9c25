#include "image/kernels/CountKernels.h"
#include "image/kernels/PointKernels.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <span>

using namespace testing_support;
namespace kernels = ormalux::kernels;

namespace {

constexpr std::size_t lengths[] = {0, 1, 15, 16, 63, 64, 65, 127, 128, 300, 1000, 17000};
constexpr std::array<std::uint8_t, 2> ranges[] = {{0, 255},   {0, 0},   {255, 255},
                                                  {100, 200}, {77, 77}, {1, 254}};

// Runs kernel and plain code for every set on runs of all lengths, beginning at odd addresses; what stands
// before and behind the run must stay.
template <class Kernel, class Plain>
void expectEqualEverywhere(Kernel kernel, Plain plain)
{
    forEachKernelTarget([&](auto target) {
        for (std::size_t n : lengths) {
            const std::size_t offset = n % 7;
            auto pixels = randomBytes(n + offset + 3, unsigned(n));
            auto expected = pixels;
            std::transform(expected.begin() + offset, expected.end() - 3, expected.begin() + offset, plain);
            kernel(pixels.data() + offset, n);
            ASSERT_EQ(pixels, expected) << int(target) << " " << n;
        }
    });
}

} // namespace

TEST(PointKernels, EveryByteOfARunChangesAndNoOther)
{
    expectEqualEverywhere(kernels::invert, [](std::uint8_t p) { return std::uint8_t(255 - p); });
    for (int t : {0, 1, 127, 128, 254, 255})
        expectEqualEverywhere(
            [=](std::uint8_t* p, std::size_t n) { kernels::threshold(p, n, std::uint8_t(t)); },
            [=](std::uint8_t p) { return std::uint8_t(p > t ? 255 : 0); });
    for (auto [low, high] : ranges)
        expectEqualEverywhere(
            [low = low, high = high](std::uint8_t* p, std::size_t n) {
                kernels::splitRange(p, n, low, high, 9, 7);
            },
            [low = low, high = high](std::uint8_t p) { return std::uint8_t(low <= p && p <= high ? 9 : 7); });
}

TEST(PointKernels, LookUpFindsEveryEntryOfTheTable)
{
    const auto table = randomBytes(256, 11);
    expectEqualEverywhere([&](std::uint8_t* p, std::size_t n) { kernels::lookUp(p, n, table.data()); },
                          [&](std::uint8_t p) { return table[p]; });
}

TEST(PointKernels, CountsEqualPlainCodeForEverySet)
{
    forEachKernelTarget([](auto target) {
        for (std::size_t n : lengths) {
            const auto bytes = randomBytes(n + 1, unsigned(n));
            const std::span pixels(bytes.data() + 1, n);
            std::uint64_t sum = 0;
            std::array<std::int64_t, 256> counters{}, expectedCounters{};
            for (std::uint8_t p : pixels) {
                sum += p;
                ++expectedCounters[p];
            }
            kernels::countValues(pixels.data(), n, counters.data());
            EXPECT_EQ(counters, expectedCounters);
            EXPECT_EQ(kernels::sumBytes(pixels.data(), n), sum) << int(target) << " " << n;
            for (auto [low, high] : ranges) {
                kernels::IndexSum expected;
                for (std::size_t i = 0; i < n; ++i)
                    if (low <= pixels[i] && pixels[i] <= high) {
                        ++expected.number;
                        expected.sum += i;
                    }
                const kernels::IndexSum found = kernels::sumIndices(pixels.data(), n, low, high);
                EXPECT_EQ(found.number, expected.number) << int(target) << " " << n;
                EXPECT_EQ(found.sum, expected.sum) << int(target) << " " << n;
                EXPECT_EQ(kernels::countRange(pixels.data(), n, low, high), expected.number) << int(target);
            }
        }
    });
}

TEST(PointKernels, CountsOfOneLevelDoNotOverflow)
{
    const std::vector<std::uint8_t> white(300000, 255);
    forEachKernelTarget([&](auto) {
        EXPECT_EQ(kernels::countRange(white.data(), white.size(), 255, 255), 300000u);
        EXPECT_EQ(kernels::sumBytes(white.data(), white.size()), 300000u * 255);
        EXPECT_EQ(kernels::sumIndices(white.data(), white.size(), 0, 255).sum, 300000ull * 299999 / 2);
    });
}
