#include "tests/color/Buffers.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

using namespace testing_support;

namespace {

/// A gray picture of one channel.
CKestImage channelOf(const Bytes& bytes, int width, int height, int channel)
{
    CKestImage gray(width, height);
    for (int i = 0; i < width * height; ++i)
        gray.view().pixels[i] = bytes[std::size_t(3 * i + channel)];
    return gray;
}

/// Bytes that fill a part of the range only, a different one for each channel.
Bytes darkBytes(int width, int height, unsigned seed)
{
    Bytes bytes = paddedBytes(width, height, seed);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = std::uint8_t(bytes[i] / (2 + i % 3) + 10 * (i % 3));
    return bytes;
}

} // namespace

// The table reaches the bytes of all pixels, and not the padding behind them.
TEST(ColorLevels, EveryChannelGetsTheGrayOperationsTable)
{
    forEachKernelTarget([](auto target) {
        for (int width : {1, 3, 17, 641}) {
            const int height = 11;
            auto bytes = darkBytes(width, height, 21);
            const auto expectSame = [&](auto gray, auto color) {
                CKestImage24 image(width, height, bytes.data());
                color(image);
                auto expected = bytes;
                for (int c = 0; c < 3; ++c) {
                    CKestImage channel = channelOf(bytes, width, height, c);
                    gray(channel);
                    for (int i = 0; i < width * height; ++i)
                        expected[std::size_t(3 * i + c)] = channel.view().pixels[i];
                }
                ASSERT_EQ(bufferOf(image), expected) << width << " set " << int(target);
            };
            expectSame([](CKestImage& i) { i.Light(30, -20); }, [](CKestImage24& i) { i.Light(30, -20); });
            expectSame([](CKestImage& i) { i.Light(256, 0); }, [](CKestImage24& i) { i.Light(256, 0); });
            expectSame([](CKestImage& i) { i.Gamma(2.2f); }, [](CKestImage24& i) { i.Gamma(2.2f); });
            expectSame([](CKestImage& i) { i.Gamma(-1); }, [](CKestImage24& i) { i.Gamma(-1); });
            expectSame([](CKestImage& i) { i.AutoContrast(); }, [](CKestImage24& i) { i.AutoContrast(); });
        }
    });
}

TEST(WhiteBalance, ScalesByTheSumsOfTheWholePictureOrAPatch)
{
    forEachKernelTarget([](auto) {
        const int width = 67, height = 70;
        auto bytes = darkBytes(width, height, 22);
        const int patches[][4] = {{0, 0, 66, 69}, {5, 60, 9, 3}, {66, 69, 66, 69}};
        for (const auto& patch : patches) {
            std::uint64_t sums[3] = {};
            for (int y = std::min(patch[1], patch[3]); y <= std::max(patch[1], patch[3]); ++y)
                for (int x = std::min(patch[0], patch[2]); x <= std::max(patch[0], patch[2]); ++x)
                    for (int c = 0; c < 3; ++c)
                        sums[c] += bytes[std::size_t(3 * (width * y + x) + c)];
            auto expected = bytes;
            for (int i = 0; i < 3 * width * height; ++i) {
                const std::uint64_t v = bytes[std::size_t(i)];
                expected[std::size_t(i)] = std::uint8_t(
                    std::min<std::uint64_t>(255, v * (sums[0] + sums[1] + sums[2]) / (3 * sums[i % 3])));
            }
            CKestImage24 image(width, height, bytes.data());
            image.WhiteBalance(patch[0], patch[1], patch[2], patch[3]);
            ASSERT_EQ(bufferOf(image), expected);
            if (patch[2] == 66 && patch[0] == 0) {
                CKestImage24 whole(width, height, bytes.data());
                whole.WhiteBalance();
                ASSERT_EQ(bufferOf(whole), expected);
            }
        }
    });
}

TEST(WhiteBalance, LeavesAMissingChannelAndPatchesOutsideAlone)
{
    std::uint8_t bytes[] = {0, 50, 100, 0, 30, 20, 9, 9};
    CKestImage24 image(2, 1, bytes);
    const auto before = bufferOf(image);
    for (int far : {-1, 2, INT_MIN, INT_MAX})
        image.WhiteBalance(0, 0, far, 0);
    EXPECT_EQ(bufferOf(image), before);
    image.WhiteBalance(0, 0, 0, 0);
    EXPECT_EQ(bufferOf(image), (Bytes{0, 50, 50, 0, 30, 10, 9, 9}));
    CKestImage24 empty(INT_MIN, INT_MIN, bytes);
    empty.WhiteBalance();
    empty.AutoContrast();
    empty.Light(1, 1);
}
