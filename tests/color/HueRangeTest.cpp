#include "color/ColorRange.h"
#include "color/VisionImage24.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace ormalux;
using namespace testing_support;

namespace {

using Pixels = std::vector<std::uint8_t>;

// The formulas in doubles: hues of whole channels lie much further from ends in 256ths than they round.
bool plainInRange(int b, int g, int r, const HueRange& range)
{
    const int max = std::max({b, g, r}), d = max - std::min({b, g, r});
    const double saturation = max == 0 ? 0 : std::floor(255.0 * d / max + 0.5);
    double hue = 0;
    if (d > 0)
        hue = max == r ? 60.0 * (g - b) / d : max == g ? 120 + 60.0 * (b - r) / d : 240 + 60.0 * (r - g) / d;
    hue = hue < 0 ? hue + 360 : hue;
    const bool above = hue >= range.lowHue - 1e-9, below = hue <= range.highHue + 1e-9;
    return (range.lowHue <= range.highHue ? above && below : above || below) &&
           saturation >= range.lowSaturation && saturation <= range.highSaturation && max >= range.lowValue &&
           max <= range.highValue;
}

} // namespace

TEST(HueRange, SelectsWhatTheFormulasSelect)
{
    const HueRange ranges[] = {{340, 20, 0, 255, 0, 255},    {0, 360, 0, 255, 0, 255},
                               {60, 180, 100, 200, 50, 220}, {59.5, 60, 0, 255, 0, 255},
                               {0, 0, 0, 255, 0, 255},       {240, 240, 255, 255, 1, 255},
                               {360, 0, 0, 0, 0, 255},       {119.25, 300.75, 1, 254, 3, 3}};
    forEachKernelTarget([&](auto) {
        for (int count : {1, 3, 5, 17, 641, 20000}) {
            Pixels bgr = randomBytes(std::size_t(count) * 3, unsigned(count));
            // Grays, full and few colours among them.
            for (std::size_t i = 0; i < bgr.size(); ++i)
                bgr[i] = i / 3 % 4 == 0   ? bgr[i / 3 * 3]
                         : i / 3 % 4 == 1 ? std::uint8_t(bgr[i] / 64 * 85)
                                          : bgr[i];
            const ConstColorView view(bgr.data(), count, 1, std::int64_t(bgr.size()));
            for (const HueRange& range : ranges) {
                Pixels marks(std::size_t(count), 7);
                ASSERT_TRUE(selectHues(view, range, marks));
                for (int i = 0; i < count; ++i)
                    ASSERT_EQ(marks[i],
                              plainInRange(bgr[3 * i], bgr[3 * i + 1], bgr[3 * i + 2], range) ? 255 : 0)
                        << int(bgr[3 * i + 2]) << " " << int(bgr[3 * i + 1]) << " " << int(bgr[3 * i])
                        << ", hue " << range.lowHue << " to " << range.highHue;
            }
        }
    });
}

TEST(HueRange, FindsRedPartsThroughZero)
{
    // Blue, green, red: a red part of two pixels, one of orange at hue 19.76, green; the row is padded.
    Pixels bgr = {20, 0, 255, 20, 0, 255, 0, 0, 0, 0, 84, 255, 0, 84, 255, 0, 255, 0, 0, 0};
    const CKestImage24 image(6, 1, bgr.data());
    CBlobRectArray found;
    EXPECT_EQ(image.GetHueRangeBlobList(340, 19, 50, 255, 50, 255, 2, 9, 1, 9, found), 1);
    EXPECT_EQ(found[0].left, 0);
    found.RemoveAll();
    EXPECT_EQ(image.GetHueRangeBlobList(340, 20, 50, 255, 50, 255, 2, 9, 1, 9, found), 2);
    found.RemoveAll();
    EXPECT_EQ(image.GetHueRangeBlobList(3, 0, 6, 1, 340, 20, 50, 255, 50, 255, 2, 9, 1, 9, found), 1);
    for (const HueRange& wrong : {HueRange{-1, 20, 0, 255, 0, 255}, HueRange{0, 361, 0, 255, 0, 255},
                                  HueRange{std::nan(""), 20, 0, 255, 0, 255}, HueRange{0, 20, 9, 8, 0, 255},
                                  HueRange{0, 20, 0, 255, 0, 256}}) {
        CKestImage marks(1, 1);
        EXPECT_EQ(image.GetHueRangeImage(wrong.lowHue, wrong.highHue, wrong.lowSaturation,
                                         wrong.highSaturation, wrong.lowValue, wrong.highValue, marks),
                  0);
        EXPECT_TRUE(marks.IsEmpty());
    }
}
