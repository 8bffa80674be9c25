#include "image/ImagePainter.h"
#include "image/VisionImage.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>

using namespace testing_support;
using Bytes = std::vector<std::uint8_t>;

namespace {

Bytes pixelsOf(const CKestImage& image)
{
    const auto view = image.view();
    return view.empty() ? Bytes() : Bytes(view.pixels, view.pixels + image.GetImageLen());
}

CKestImage imageOf(int width, int height, Bytes bytes)
{
    return CKestImage(width, height, bytes.data());
}

Bytes counting(std::size_t count)
{
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = std::uint8_t(i);
    return bytes;
}

} // namespace

TEST(Image, SizesWithoutPixelsKeepTheSizeAndHoldNoBuffer)
{
    CKestImage image(0, 0);
    EXPECT_TRUE(image.IsEmpty());
    for (auto [width, height] : {std::pair{-3, 5}, {5, -3}, {INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}}) {
        image.SetImagePtr(width, height);
        EXPECT_TRUE(image.IsEmpty());
        EXPECT_EQ(image.GetWidth(), width);
        EXPECT_EQ(image.GetPixel(0, 0), 0);
        image.SetPixel(0, 0, 1);
        image.SetImagePtr(width, height, nullptr);
        image.SetImagePtr(width, height, 24, nullptr, nullptr);
        image.SetImagePtrLink(width, height, nullptr);
        EXPECT_EQ(image.GetImagePtr(0, 0, 0, 0), nullptr);
        EXPECT_EQ(image.GetGrayLevelCount(0), 0);
    }
    image.SetImagePtr(0, 7);
    EXPECT_FALSE(image.IsEmpty());
    EXPECT_EQ(image.GetImageLen(), 0);
    std::uint8_t pixels[12] = {};
    image.SetImagePtr(2, 3, 16, pixels, "R");
    EXPECT_TRUE(image.IsEmpty());
    EXPECT_EQ(image.GetWidth(), 2);
    EXPECT_EQ(image.GetImageLen(), 6);
}

TEST(Image, CopiesAreDeepAndNeverLinked)
{
    Bytes pixels = counting(20);
    CKestImage linked;
    linked.SetImagePtrLink(5, 4, pixels.data());
    CKestImage copy(linked), assigned;
    assigned = linked;
    assigned = *&assigned;
    linked.SetPixel(1, 1, 99);
    EXPECT_EQ(pixels[6], 99);
    EXPECT_EQ(copy.GetPixel(1, 1), 6);
    EXPECT_EQ(assigned.GetPixel(1, 1), 6);
    // Copies into an image of the same length, from its own pixels too.
    copy.SetImagePtr(4, 5, copy.view().pixels);
    EXPECT_EQ(copy.GetPixel(0, 1), 4);
    copy.SetImagePtr(3, 2, copy.view().pixels + 1);
    EXPECT_EQ(pixelsOf(copy), Bytes({1, 2, 3, 4, 5, 6}));
    copy.SetImagePtr(2, 3);
    EXPECT_EQ(pixelsOf(copy), Bytes(6));
}

TEST(Image, PixelsOutsideTheBufferReadAs0)
{
    CKestImage image = imageOf(3, 2, counting(6));
    EXPECT_EQ(image.GetPixel(3, 0), 3) << "the next row's first pixel";
    for (auto [x, y] : {std::pair{0, 2}, {-1, 0}, {INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}, {5, INT_MIN}}) {
        image.SetPixel(x, y, 77);
        EXPECT_EQ(image.GetPixel(x, y), 0);
    }
    EXPECT_EQ(image.GetGrayLevelCount(77), 0);
}

TEST(Image, RectanglesAreCopiedInEitherCornerOrderAndRefusedOutside)
{
    const CKestImage image = imageOf(8, 7, counting(56));
    const std::unique_ptr<unsigned char[]> forward(image.GetImagePtr(2, 2, 5, 5)),
        backward(image.GetImagePtr(5, 5, 2, 2));
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(forward[i], (2 + i / 4) * 8 + 2 + i % 4);
        EXPECT_EQ(backward[i], forward[i]);
    }
    EXPECT_EQ(image.GetImagePtr(0, 0, 8, 0), nullptr);
    EXPECT_EQ(image.GetImagePtr(0, 7, 0, 0), nullptr);
    EXPECT_EQ(image.GetImagePtr(-1, 0, 3, 3), nullptr);
    EXPECT_EQ(image.GetImagePtr(INT_MIN, INT_MIN, INT_MAX, INT_MAX), nullptr);
    const std::unique_ptr<CKestImage> part(image.GetImage(0, 0, 3, 3));
    EXPECT_TRUE(part->IsEmpty());
}

TEST(Image, CroppingLeavesACallersBufferAloneAndTakesReversedSizesAsGiven)
{
    Bytes pixels = counting(64);
    CKestImage image;
    image.SetImagePtrLink(8, 8, pixels.data());
    image.SetROIPlacement(2, 3, 9, 9);
    EXPECT_EQ(image.GetWidth(), 8) << "a rectangle outside changes nothing";
    image.SetROIPlacement(RECT{2, 1, 5, 7});
    EXPECT_EQ(image.GetWidth(), 4);
    EXPECT_EQ(image.GetHeight(), 7);
    EXPECT_EQ(image.GetPixel(0, 0), 10);
    image.SetPixel(0, 0, 255);
    EXPECT_EQ(pixels, counting(64));
    image.SetROIPlacement(3, 6, 0, 0);
    EXPECT_EQ(image.GetWidth(), -2);
    EXPECT_EQ(image.GetHeight(), -5);
    EXPECT_EQ(image.GetImageLen(), 10);
    EXPECT_FALSE(image.IsEmpty());
    image.Offset(1, 1);
    image.Marking(0, 0, 1, 1, 9);
    image.SetROIPlacement(0, 0, 0, 0);
    CKestImage copy(image);
    EXPECT_EQ(copy.GetWidth(), -2);
}

TEST(Image, ConvertsColourBytesByTheNamedFormula)
{
    const Bytes pixels = randomBytes(3 * 641 * 3, 4);
    struct Case
    {
        const char* channels;
        int (*gray)(int b, int g, int r);
    };
    const Case cases[] = {{"R", [](int, int, int r) { return r; }},
                          {"G", [](int, int g, int) { return g; }},
                          {"B", [](int b, int, int) { return b; }},
                          {"RGB", [](int b, int g, int r) { return (b + g + r) / 3; }},
                          {"RG", [](int, int g, int r) { return (r + g) >> 1; }},
                          {"RB", [](int b, int, int r) { return (b + r) >> 1; }},
                          {"GB", [](int b, int g, int) { return (b + g) >> 1; }},
                          {"rgb", [](int, int, int) { return 0; }},
                          {nullptr, [](int, int, int) { return 0; }}};
    forEachKernelTarget([&](auto) {
        for (const Case& c : cases)
            for (int width : oddSizes) {
                const CKestImage image(width, 3, 24, const_cast<std::uint8_t*>(pixels.data()), c.channels);
                for (int i = 0; i < 3 * width; ++i)
                    ASSERT_EQ(image.GetPixel(i, 0),
                              c.gray(pixels[3 * i], pixels[3 * i + 1], pixels[3 * i + 2]));
            }
    });
    std::uint8_t one[] = {10, 20, 31};
    EXPECT_EQ(CKestImage(1, 1, 24, one, "RGB").GetPixel(0, 0), 20);
    EXPECT_EQ(imageOf(1, 1, {7}).GetPixel(0, 0), CKestImage(1, 1, 8, one, "R").GetPixel(0, 0) - 3);
}

TEST(Image, Converts32BitPixelsOnlyIntoTheFirstQuarter)
{
    for (int width : oddSizes)
        for (int height : {1, 2, 5}) {
            const Bytes s = randomBytes(std::size_t(width) * height * 4, 6);
            Bytes expected(std::size_t(width) * height, 0);
            for (int y = 0; y <= height; ++y)
                for (int x = 0; x <= width; x += 4)
                    expected[(y * width + x) / 4] =
                        std::uint8_t((s[y * width + x] + s[y * width + x + 1] + s[y * width + x + 2]) / 3.0);
            const CKestImage image(width, height, 32, const_cast<std::uint8_t*>(s.data()), "R");
            EXPECT_EQ(pixelsOf(image), expected) << width << "x" << height;
        }
}

TEST(Edit, MarkingRunsOnePixelPastTheRowButNotPastTheBuffer)
{
    CKestImage image(4, 3);
    image.Marking(4, 1, 3, 0, 9);
    EXPECT_EQ(pixelsOf(image), Bytes({0, 0, 0, 9, 9, 0, 0, 9, 9, 0, 0, 0}));
    image.SetImagePtr(4, 3);
    image.Marking(2, 2, 4, 3, 5);
    EXPECT_EQ(pixelsOf(image), Bytes({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 5, 5}));
    for (auto [x1, y1, x2, y2] :
         {std::array{-1, 0, 2, 2}, {0, 0, 5, 1}, {0, 4, 1, 1}, {INT_MIN, 0, INT_MAX, 1}}) {
        image.SetImagePtr(4, 3);
        image.Marking(x1, y1, x2, y2, 5);
        EXPECT_EQ(pixelsOf(image), Bytes(12));
    }
}

TEST(Edit, LevelsRangesAndDifferencesEqualPlainCode)
{
    for (int width : oddSizes) {
        const Bytes a = randomBytes(std::size_t(width) * 3, 1), b = randomBytes(std::size_t(width) * 3, 2);
        forEachKernelTarget([&](auto) {
            for (int step = 0; step < 40; ++step) {
                const std::uint8_t low = a[step % a.size()], high = b[step % b.size()];
                const int tolerance = std::array{-5, 0, 3, 128, 254, 255, 300, INT_MIN, INT_MAX}[step % 9];
                const std::uint8_t value = std::array<std::uint8_t, 3>{0, 255, 17}[step % 3];
                CKestImage range = imageOf(width, 3, a), differ = range;
                range.Marking(low, high, value);
                differ.MarkingDiffer(imageOf(3, width, b), value, tolerance);
                Bytes marked = a, differences = a;
                for (std::size_t i = 0; i < a.size(); ++i) {
                    if (a[i] >= low && a[i] <= high)
                        marked[i] = value;
                    const bool far = a[i] != b[i] && std::abs(a[i] - b[i]) > tolerance;
                    differences[i] = far ? value : value != 0 ? 0 : 255;
                }
                ASSERT_EQ(pixelsOf(range), marked);
                ASSERT_EQ(pixelsOf(differ), differences);
                ASSERT_EQ(range.GetGrayLevelCount(value), std::count(marked.begin(), marked.end(), value));
            }
        });
    }
}

TEST(Edit, SumsWrapAndDifferencesStopAt0)
{
    for (int width : oddSizes) {
        const Bytes a = randomBytes(std::size_t(width) * 2, 1), b = randomBytes(std::size_t(width) * 2, 2);
        Bytes sum = a, difference = a;
        for (std::size_t i = 0; i < a.size(); ++i) {
            sum[i] = std::uint8_t(a[i] + b[i]);
            difference[i] = std::uint8_t(std::max(a[i] - b[i], 0));
        }
        forEachKernelTarget([&](auto) {
            CKestImage added = imageOf(width, 2, a), taken = added;
            const CKestImage other = imageOf(width, 2, b);
            EXPECT_EQ(&(added + other), &added);
            taken - other;
            ASSERT_EQ(pixelsOf(added), sum);
            ASSERT_EQ(pixelsOf(taken), difference);
            if (width != 2) {
                added + imageOf(2, width, b);
                added - CKestImage();
                ASSERT_EQ(pixelsOf(added), sum) << "images of another shape";
            }
        });
    }
}

TEST(Edit, OffsetShiftsOneRunOfBytes)
{
    CKestImage image = imageOf(4, 2, counting(8));
    image.Offset(1, 0);
    EXPECT_EQ(pixelsOf(image), Bytes({1, 2, 3, 4, 5, 6, 7, 0}));
    for (int dx : {INT_MIN, -9, -8, -3, 0, 1, 7, 8, 9, INT_MAX})
        for (int dy : {INT_MIN, -2, -1, 0, 1, 2, INT_MAX}) {
            const std::int64_t d = std::int64_t(4) * dy + dx;
            Bytes expected(8, 0);
            for (std::int64_t i = 0; i < 8; ++i)
                if (i + d >= 0 && i + d < 8)
                    expected[std::size_t(i)] = std::uint8_t(i + d);
            Bytes pixels = counting(8);
            CKestImage owned = imageOf(4, 2, pixels), linked;
            linked.SetImagePtrLink(4, 2, pixels.data());
            owned.Offset(dx, dy);
            linked.Offset(dx, dy);
            EXPECT_EQ(pixelsOf(owned), expected) << dx << " " << dy;
            EXPECT_EQ(pixelsOf(linked), expected) << dx << " " << dy;
            EXPECT_EQ(pixels, counting(8)) << "the caller's buffer";
        }
}

TEST(Image, PaintsThroughTheDisplayModuleOnlyWhenThereIsOne)
{
    static int painted;
    painted = 0;
    CKestImage image(3, 2);
    CDC* const dc = reinterpret_cast<CDC*>(&painted);
    image.PaintImage(dc, CRect(0, 0, 3, 2));
    ormalux::setImagePainters(
        [](CDC*, const CRect& rect, const ormalux::ConstGrayView& view) {
            painted += rect.Width() * view.height;
        },
        nullptr);
    image.PaintImage(dc, CRect(0, 0, 5, 2));
    CKestImage().PaintImage(dc, CRect(0, 0, 5, 2));
    ormalux::setImagePainters(nullptr, nullptr);
    EXPECT_EQ(painted, 10);
}
