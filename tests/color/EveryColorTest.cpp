#include "color/ColorConversion.h"
#include "color/VisionImage24.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

using namespace testing_support;

namespace {

constexpr int side = 4096;

/// A picture with every colour once: red slowest, blue fastest.
class EveryColor : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        auto& bytes = pixels();
        bytes.resize(std::size_t(3) * side * side);
        for (std::uint32_t i = 0; i < side * side; ++i) {
            bytes[3 * i] = std::uint8_t(i);
            bytes[3 * i + 1] = std::uint8_t(i >> 8);
            bytes[3 * i + 2] = std::uint8_t(i >> 16);
        }
    }
    static void TearDownTestSuite() { pixels() = {}; }
    static std::vector<std::uint8_t>& pixels()
    {
        static std::vector<std::uint8_t> bytes;
        return bytes;
    }

    using Member = CKestImage* (CKestImage24::*)() const;

    /// The plane equals formula(r, g, b) for every colour and kernel set.
    template <class Formula>
    void expectPlane(Member member, Formula formula)
    {
        CKestImage24 image;
        image.SetImagePtrLink(side, side, pixels().data());
        std::vector<std::uint8_t> expected(std::size_t(side) * side);
        for (std::uint32_t i = 0; i < side * side; ++i)
            expected[i] = std::uint8_t(formula(int(i >> 16), int(i >> 8 & 255), int(i & 255)));
        forEachKernelTarget([&](auto target) {
            std::unique_ptr<CKestImage> plane((image.*member)());
            ASSERT_TRUE(plane);
            const auto wrong = std::mismatch(expected.begin(), expected.end(), plane->view().pixels);
            EXPECT_EQ(wrong.first - expected.begin(), side * side) << "colour index, set " << int(target);
        });
    }
};

int black(int r, int g, int b)
{
    return std::min({255 - r, 255 - g, 255 - b});
}

// As the formula reads, with the arc cosine for every single colour.
int hue(int red, int green, int blue)
{
    const double R = red, G = green, B = blue;
    const double d = std::sqrt((R - G) * (R - G) + (R - B) * (G - B));
    if (d == 0)
        return 0;
    double angle = std::acos(0.5 * ((R - G) + (R - B)) / d) * 57.29577951;
    if (B > G)
        angle = 360 - angle;
    return int(angle / 360 * 255);
}

} // namespace

TEST_F(EveryColor, ChannelPlanesHoldTheirChannel)
{
    expectPlane(&CKestImage24::GetRedSpace, [](int r, int, int) { return r; });
    expectPlane(&CKestImage24::GetGreenSpace, [](int, int g, int) { return g; });
    expectPlane(&CKestImage24::GetBlueSpace, [](int, int, int b) { return b; });
}

TEST_F(EveryColor, LumaAndDifferencesAreTheTruncatedDoubles)
{
    expectPlane(&CKestImage24::GetYSpace,
                [](int R, int G, int B) { return int(0.257 * R + 0.504 * G + 0.098 * B + 16.0); });
    expectPlane(&CKestImage24::GetUSpace,
                [](int R, int G, int B) { return int(0.439 * B - (0.291 * G + 0.148 * R) + 128.0); });
    expectPlane(&CKestImage24::GetVSpace,
                [](int R, int G, int B) { return int(0.439 * R - 0.368 * G - 0.071 * B + 128.0); });
}

TEST_F(EveryColor, InkPlanesTakeTheBlackOut)
{
    expectPlane(&CKestImage24::GetCSpaceOfCMYK, [](int r, int g, int b) { return 255 - r - black(r, g, b); });
    expectPlane(&CKestImage24::GetMSpaceOfCMYK, [](int r, int g, int b) { return 255 - g - black(r, g, b); });
    expectPlane(&CKestImage24::GetYSpaceOfCMYK, [](int r, int g, int b) { return 255 - b - black(r, g, b); });
    expectPlane(&CKestImage24::GetKSpaceOfCMYK, black);
}

TEST_F(EveryColor, HueSaturationIntensityAndValueFollowTheirFormulas)
{
    const auto saturation = [](int r, int g, int b) {
        const int sum = r + g + b;
        return sum == 0 ? 0 : 255 * (sum - 3 * std::min({r, g, b})) / sum;
    };
    expectPlane(&CKestImage24::GetHSpaceOfHSI, hue);
    expectPlane(&CKestImage24::GetSSpaceOfHSI, saturation);
    expectPlane(&CKestImage24::GetSSpaceOfHSV, saturation);
    expectPlane(&CKestImage24::GetISpaceOfHSI, [](int r, int g, int b) {
        const int sum = r + g + b;
        return sum == 0 ? 0 : int(sum / 3.0 + 0.5);
    });
    expectPlane(&CKestImage24::GetVSpaceOfHSV, [](int r, int g, int b) {
        return (std::max({r, g, b}) + std::min({r, g, b})) / 2;
    });
}

TEST_F(EveryColor, SurvivesHsiAndBack)
{
    long lost = 0;
    for (std::uint32_t i = 0; i < side * side; ++i) {
        const std::uint8_t red = std::uint8_t(i >> 16), green = std::uint8_t(i >> 8), blue = std::uint8_t(i);
        double h, s, intensity;
        std::uint8_t r, g, b;
        ormalux::color::RGBToHSI(red, green, blue, &h, &s, &intensity);
        ormalux::color::HSIToRGB(h, s, intensity, &r, &g, &b);
        lost += r != red || g != green || b != blue || h < 0 || h >= 360 || s < 0 || s > 1;
    }
    EXPECT_EQ(lost, 0);
}

TEST_F(EveryColor, SurvivesCmykAndBack)
{
    long lost = 0;
    for (std::uint32_t i = 0; i < side * side; ++i) {
        const std::uint8_t red = std::uint8_t(i >> 16), green = std::uint8_t(i >> 8), blue = std::uint8_t(i);
        std::uint8_t c, m, y, k, r, g, b;
        ormalux::color::RGBToCMYK(red, green, blue, &c, &m, &y, &k);
        ormalux::color::CMYKToRGB(c, m, y, k, &r, &g, &b);
        lost += r != red || g != green || b != blue || k != black(red, green, blue);
    }
    EXPECT_EQ(lost, 0);
}
