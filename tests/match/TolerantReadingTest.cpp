#include "image/VisionImage.h"
#include "match/CharacterReading.h"
#include "match/kernels/InkKernels.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

using namespace testing_support;

namespace {

constexpr int dot = 3;
constexpr int glyphWidth = 5 * dot, glyphHeight = 7 * dot;
constexpr int paper = 180, ink = 70;

/// Digits of 5 x 7 dots.
constexpr const char* font[10] = {
    "01110100011001110101110011000101110", "00100011000010000100001000010001110",
    "01110100010000100010001000100011111", "11111000100010000010000011000101110",
    "00010001100101010010111110001000010", "11111100001111000001000011000101110",
    "00110010001000011110100011000101110", "11111000010001000100010000100001000",
    "01110100011000101110100011000101110", "01110100011000101111000010001001100",
};

std::vector<std::uint8_t> glyph(int digit, std::uint8_t inkLevel)
{
    std::vector<std::uint8_t> pixels(std::size_t(glyphWidth * glyphHeight), std::uint8_t(255 - inkLevel));
    for (int y = 0; y < glyphHeight; ++y)
        for (int x = 0; x < glyphWidth; ++x)
            if (font[digit][y / dot * 5 + x / dot] == '1')
                pixels[std::size_t(y * glyphWidth + x)] = inkLevel;
    return pixels;
}

/// A source a digit, cut to its box.
struct Digits
{
    std::vector<std::vector<std::uint8_t>> pixels;
    std::vector<_stMatchSource> records;
    CMatchSrcArray sources;

    explicit Digits(std::uint8_t inkLevel = 0)
    {
        for (int digit = 0; digit < 10; ++digit) {
            const std::vector<std::uint8_t> whole = glyph(digit, inkLevel);
            const int left = digit == 1 ? dot : 0, width = digit == 1 ? 3 * dot : glyphWidth;
            std::vector<std::uint8_t> cut;
            for (int y = 0; y < glyphHeight; ++y)
                for (int x = left; x < left + width; ++x)
                    cut.push_back(whole[std::size_t(y * glyphWidth + x)]);
            pixels.push_back(cut);
            records.push_back({std::uint8_t('0' + digit), 0, 0, 0, width, glyphHeight, nullptr});
        }
        for (std::size_t i = 0; i < 10; ++i) {
            records[i].data = pixels[i].data();
            sources.appendForOverwrite(1)[0] = records[i];
        }
    }
};

CKestImage drawn(const std::vector<std::string>& lines, int inkLevel = ink, int paperLevel = paper)
{
    CKestImage image(20 * int(lines[0].size()) + 10, 30 * int(lines.size()) + 10);
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            image.SetPixel(x, y, paperLevel);
    for (std::size_t row = 0; row < lines.size(); ++row)
        for (std::size_t column = 0; column < lines[row].size(); ++column) {
            const auto pixels = glyph(lines[row][column] - '0', 0);
            for (int y = 0; y < glyphHeight; ++y)
                for (int x = 0; x < glyphWidth; ++x)
                    if (pixels[std::size_t(y * glyphWidth + x)] == 0)
                        image.SetPixel(5 + 20 * int(column) + x, 5 + 30 * int(row) + y, inkLevel);
        }
    return image;
}

void addNoise(CKestImage& image, double sigma)
{
    std::mt19937 engine(1);
    // Twelve uniform numbers: the same normal noise on every machine.
    const auto normal = [&] {
        double sum = -6;
        for (int i = 0; i < 12; ++i)
            sum += engine() / 4294967296.0;
        return sum;
    };
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            image.SetPixel(x, y,
                           std::clamp(int(std::lround(image.GetPixel(x, y) + sigma * normal())), 0, 255));
}

std::string textOf(const std::vector<CCharacterReading>& readings)
{
    std::string text;
    for (std::size_t i = 0; i < readings.size(); ++i) {
        if (i > 0 && readings[i].line != readings[i - 1].line)
            text += '\n';
        text += readings[i].rejected ? '?' : char(readings[i].key);
    }
    return text;
}

std::string read(const CKestImage& image, CReadingSettings settings, CMatchSrcArray& sources)
{
    std::vector<CCharacterReading> readings;
    const int count = image.ReadCharacters(settings, sources, readings);
    EXPECT_EQ(count, int(readings.size()));
    return textOf(readings);
}

const std::vector<std::string> lines{"7035916248", "0987654321", "1122334455"};
const std::string text = "7035916248\n0987654321\n1122334455";

} // namespace

TEST(TolerantReading, ReadsThroughLightNoiseAndCutBoxes)
{
    Digits digits;
    CReadingSettings settings;
    for (const int light : {-40, 0, 40}) {
        settings.threshold = 125; // not in the middle
        EXPECT_EQ(read(drawn(lines, ink + light, paper + light), settings, digits.sources), text) << light;
    }
    for (const double sigma : {6.0, 15.0}) {
        CKestImage image = drawn(lines);
        addNoise(image, sigma);
        EXPECT_EQ(read(image, settings, digits.sources), text) << sigma;
    }
    // A column of every character is lost, in the picture or from its box only.
    const CKestImage clean = drawn(lines);
    CKestImage cut(clean);
    for (int column = 0; column < 10; ++column)
        for (int y = 0; y < cut.GetHeight(); ++y)
            cut.SetPixel(5 + 20 * column, y, paper);
    EXPECT_EQ(read(cut, settings, digits.sources), text);
    CBlobRectArray boxes;
    for (int column = 0; column < 10; ++column)
        boxes.Add(6 + 20 * column, 5, 4 + 20 * column + glyphWidth, 4 + glyphHeight, 1);
    boxes.Add(-1, 0, 5, 5, 1);
    std::vector<CCharacterReading> readings;
    EXPECT_EQ(clean.ReadCharacters(boxes, settings, digits.sources, readings), 10);
    EXPECT_EQ(textOf(readings), lines[0]);
}

TEST(TolerantReading, JoinsBrokenCharactersAndReadsBrightOnes)
{
    Digits dark, bright(255);
    CReadingSettings settings;
    CKestImage broken = drawn(lines);
    for (int row = 0; row < 3; ++row) // a scratch through every line
        for (int x = 0; x < broken.GetWidth(); ++x)
            broken.SetPixel(x, 5 + 30 * row + 13, paper);
    EXPECT_EQ(read(broken, settings, dark.sources), text);
    settings.object = 255;
    EXPECT_EQ(read(drawn(lines, 200, 50), settings, bright.sources), text);
    EXPECT_EQ(read(drawn(lines, 200, 50), {}, bright.sources).find(lines[0]), std::string::npos);
}

TEST(TolerantReading, RejectsWhatIsUncertainAndCountsSourcesOfOneKeyOnce)
{
    Digits digits;
    CReadingSettings settings;
    std::vector<CCharacterReading> readings;
    const CKestImage image = drawn({"8"});
    ASSERT_EQ(image.ReadCharacters(settings, digits.sources, readings), 1);
    const CCharacterReading eight = readings[0];
    EXPECT_DOUBLE_EQ(eight.best_yield, 1.0);
    EXPECT_GT(eight.margin, 0.1);
    EXPECT_EQ(eight.right - eight.left + 1, glyphWidth);

    digits.sources.appendForOverwrite(1)[0] = digits.records[8]; // a second source of 8 is no other character
    ASSERT_EQ(image.ReadCharacters(settings, digits.sources, readings), 1);
    EXPECT_EQ(readings[0].margin, eight.margin);
    EXPECT_EQ(readings[0].second, eight.second);
    _stMatchSource twin = digits.records[8];
    twin.key = 'B';
    digits.sources.appendForOverwrite(1)[0] = twin;
    ASSERT_EQ(image.ReadCharacters(settings, digits.sources, readings), 1);
    EXPECT_TRUE(readings[0].rejected);
    EXPECT_EQ(readings[0].second, 'B');
    EXPECT_EQ(readings[0].margin, 0.0);

    CMatchSrcArray seven;
    seven.appendForOverwrite(1)[0] = digits.records[7];
    ASSERT_EQ(image.ReadCharacters(settings, seven, readings), 1);
    EXPECT_TRUE(readings[0].rejected);
    EXPECT_EQ(readings[0].second, -1);
    CMatchSrcArray none;
    EXPECT_EQ(image.ReadCharacters(settings, none, readings), 0);
}

TEST(TolerantReading, KernelsFindTheMostInkOfAllPlaces)
{
    constexpr int stride = 96, reach = 16;
    const std::vector<std::uint8_t> pixels = randomBytes(std::size_t(stride) * 80, 5);
    for (const int width : {1, 15, 16, 17, 40})
        for (const int shift : {0, 1, 3, reach}) {
            const int rows = width + 2;
            const std::size_t maskStride = std::size_t(width + 15) / 16 * 16;
            std::vector<std::uint8_t> mask(maskStride * std::size_t(rows));
            const std::vector<std::uint8_t> bits = randomBytes(mask.size(), unsigned(width));
            for (int y = 0; y < rows; ++y)
                for (int x = 0; x < width; ++x)
                    mask[std::size_t(y) * maskStride + std::size_t(x)] =
                        bits[std::size_t(y) * maskStride + std::size_t(x)] & 1 ? 255 : 0;
            std::uint64_t expected = 0;
            for (int dy = -shift; dy <= shift; ++dy)
                for (int dx = -shift; dx <= shift; ++dx) {
                    std::uint64_t sum = 0;
                    for (int y = 0; y < rows; ++y)
                        for (int x = 0; x < width; ++x)
                            if (mask[std::size_t(y) * maskStride + std::size_t(x)])
                                sum += pixels[std::size_t(stride * (reach + y + dy) + reach + x + dx)];
                    expected = std::max(expected, sum);
                }
            forEachKernelTarget([&](ormalux::KernelTarget target) {
                EXPECT_EQ(ormalux::kernels::mostInkUnder(pixels.data() + stride * reach + reach, stride,
                                                         {mask.data(), maskStride, std::size_t(rows)}, shift),
                          expected)
                    << int(target) << ", " << width << ", " << shift;
            });
        }
}
