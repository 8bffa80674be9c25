#include "color/ColorConversion.h"
#include "color/VisionImage24.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>

using namespace testing_support;

namespace {

using Member = CKestImage* (CKestImage24::*)() const;

/// The plane's value for a picture of one pixel.
int planeOf(Member member, std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
    std::uint8_t bytes[4] = {blue, green, red, 0};
    CKestImage24 image(1, 1, bytes);
    return std::unique_ptr<CKestImage>((image.*member)())->GetPixel(0, 0);
}

} // namespace

TEST(Plane, KnownColorsHaveTheirKnownValues)
{
    const auto expect = [](int red, int green, int blue, std::vector<int> values) {
        const Member members[] = {
            &CKestImage24::GetYSpace,       &CKestImage24::GetUSpace,       &CKestImage24::GetVSpace,
            &CKestImage24::GetISpaceOfHSI,  &CKestImage24::GetCSpaceOfCMYK, &CKestImage24::GetMSpaceOfCMYK,
            &CKestImage24::GetYSpaceOfCMYK, &CKestImage24::GetKSpaceOfCMYK, &CKestImage24::GetHSpaceOfHSV};
        std::vector<int> found;
        for (Member member : members)
            found.push_back(planeOf(member, std::uint8_t(red), std::uint8_t(green), std::uint8_t(blue)));
        EXPECT_EQ(found, values);
    };
    expect(255, 0, 0, {81, 90, 239, 85, 0, 255, 255, 0, 0});
    expect(255, 255, 255, {235, 128, 128, 255, 0, 0, 0, 0, 0});
    expect(0, 0, 0, {16, 128, 128, 0, 0, 0, 0, 255, 0});
    EXPECT_EQ(planeOf(&CKestImage24::GetHSpaceOfHSI, 0, 255, 0), 84);
    EXPECT_EQ(planeOf(&CKestImage24::GetHSpaceOfHSI, 0, 0, 255), 170);
}

// Every vector length has an end of its own, and rows are read without their padding.
TEST(Plane, OddSizesReadUnpaddedRows)
{
    forEachKernelTarget([](auto target) {
        for (int width : oddSizes) {
            const int height = 5;
            auto bytes = randomBytes(std::size_t(ormalux::paddedStride(width)) * height, 3);
            CKestImage24 image(width, height, bytes.data());
            for (char letter : {'R', 'G', 'B', 'A'}) {
                CKestImage gray;
                ASSERT_EQ(image.GetImageWithFilter(letter, gray), 1);
                for (int i = 0; i < width * height; ++i) {
                    const std::uint8_t* p = &bytes[std::size_t(3) * i];
                    const int expected = letter == 'R'   ? p[2]
                                         : letter == 'G' ? p[1]
                                         : letter == 'B' ? p[0]
                                                         : (p[0] + p[1] + p[2]) / 3;
                    ASSERT_EQ(gray.GetPixel(i % width, i / width), expected)
                        << letter << " " << width << " " << i << " set " << int(target);
                }
            }
            std::unique_ptr<CKestImage> luma(image.GetYSpace());
            for (int i = 0; i < width * height; ++i) {
                const std::uint8_t* p = &bytes[std::size_t(3) * i];
                ASSERT_EQ(luma->view().pixels[i], int(0.257 * p[2] + 0.504 * p[1] + 0.098 * p[0] + 16.0));
            }
        }
    });
}

TEST(Plane, ExtractionKeepsATargetsSizeAndLeavesItAloneForOtherLetters)
{
    auto bytes = randomBytes(8 * 12, 5);
    CKestImage24 image(4, 8, bytes.data());
    CKestImage empty;
    EXPECT_EQ(image.GetImageWithFilter('O', empty), 1);
    EXPECT_EQ(empty.GetWidth(), 4);
    EXPECT_EQ(empty.GetHeight(), 8);
    EXPECT_EQ(std::count(empty.view().pixels, empty.view().pixels + 32, 0), 32);

    CKestImage small(3, 2);
    EXPECT_EQ(image.GetImageWithFilter('G', small), 1);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(small.GetPixel(i % 3, i / 3), bytes[std::size_t(3) * i + 1]);

    CKestImage24 nothing;
    CKestImage target;
    EXPECT_EQ(nothing.GetImageWithFilter('R', target), 0);
    EXPECT_EQ(nothing.GetImageWithFilter('R', small), 1);
    std::unique_ptr<CKestImage> plane(nothing.GetHSpaceOfHSI());
    EXPECT_TRUE(plane && plane->IsEmpty());
}

TEST(ColorConversion, ClampsAndWrapsWhatNoColorGives)
{
    using namespace ormalux::color;
    std::uint8_t r, g, b;
    HSIToRGB(-240, 1, 1.0 / 3, &r, &g, &b); // the green of 120 degrees
    EXPECT_TRUE(r == 0 && g == 255 && b == 0);
    HSIToRGB(720, 5, 9, &r, &g, &b);
    EXPECT_TRUE(r == 255 && b == 0);
    for (double bad : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        HSIToRGB(bad, 1, 1, &r, &g, &b);
        EXPECT_TRUE(r == 0 && g == 0 && b == 0);
    }
    HSIToRGB(1e308, 1e308, 1e308, &r, &g, &b);
    CMYKToRGB(200, 10, 0, 100, &r, &g, &b);
    EXPECT_TRUE(r == 0 && g == 145 && b == 155);
    EXPECT_EQ(RGBToGray(31, 20, 10), 20);
    GrayToRGB(7, &r, &g, &b);
    EXPECT_TRUE(r == 7 && g == 7 && b == 7);
}
