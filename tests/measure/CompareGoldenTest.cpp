#include "image/VisionImage.h"
#include "measure/Alignment.h"
#include "measure/BlobFeature.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace testing_support;

namespace {

using Pixels = std::vector<std::uint8_t>;

struct Picture
{
    int width, height;
    Pixels pixels;

    Picture(int w, int h, unsigned seed) : width(w), height(h), pixels(randomBytes(std::size_t(w) * h, seed))
    {}
    int at(int x, int y) const { return pixels[std::size_t(y) * width + x]; }
    CKestImage image() const
    {
        CKestImage made;
        made.SetImagePtr(width, height, const_cast<std::uint8_t*>(pixels.data()));
        return made;
    }
};

// The aligned golden level in doubles, at a place rounded to 256ths; -1 outside.
int goldenAt(const Picture& golden, const CAlignment& a, int px, int py)
{
    const double x = std::floor((a.xx * px + a.xy * py + a.x) * 256 + 0.5) / 256;
    const double y = std::floor((a.yx * px + a.yy * py + a.y) * 256 + 0.5) / 256;
    if (x < 0 || y < 0 || x > golden.width - 1 || y > golden.height - 1)
        return -1;
    const int x0 = int(x), y0 = int(y), x1 = std::min(x0 + 1, golden.width - 1),
              y1 = std::min(y0 + 1, golden.height - 1);
    const double fx = x - x0, fy = y - y0;
    const double level = (golden.at(x0, y0) * (1 - fx) + golden.at(x1, y0) * fx) * (1 - fy) +
                         (golden.at(x0, y1) * (1 - fx) + golden.at(x1, y1) * fx) * fy;
    return int(std::floor(level + 0.5));
}

Pixels plainMarks(const Picture& picture, const Picture& golden, const CAlignment& a, int threshold, int grow,
                  int& compared)
{
    Pixels marks(picture.pixels.size(), 0);
    compared = 0;
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            if (goldenAt(golden, a, x, y) < 0)
                continue;
            ++compared;
            int low = 255, high = 0;
            for (int ny = std::max(0, y - grow); ny <= std::min(picture.height - 1, y + grow); ++ny)
                for (int nx = std::max(0, x - grow); nx <= std::min(picture.width - 1, x + grow); ++nx)
                    if (const int level = goldenAt(golden, a, nx, ny); level >= 0) {
                        low = std::min(low, level);
                        high = std::max(high, level);
                    }
            const int p = picture.at(x, y);
            marks[std::size_t(y) * picture.width + x] =
                std::abs(p - std::clamp(p, low, high)) > threshold ? 255 : 0;
        }
    return marks;
}

CAlignment turned(double degrees, double x, double y)
{
    const double c = std::cos(degrees * 0.017453292519943295), s = std::sin(degrees * 0.017453292519943295);
    return {c, -s, s, c, x, y};
}

// A board drawn on a grid of half pixels: fields of 12 x 12 pixels, the outermost ones at least 4 wide.
std::vector<int> drawnBoard(int width, int height, std::mt19937& engine)
{
    const int offset = 8 + int(engine() % 9);
    std::vector<int> levels(64 * 64);
    for (int& level : levels)
        level = 50 + int(engine() % 150);
    std::vector<int> fine(std::size_t(2 * width + 2) * (2 * height + 2));
    for (int y = 0; y < 2 * height + 2; ++y)
        for (int x = 0; x < 2 * width + 2; ++x)
            fine[std::size_t(y) * (2 * width + 2) + x] =
                levels[std::size_t((y + offset) / 24 * 64 + (x + offset) / 24)] +
                int(4 * std::sin(0.1 * (x + y)));
    return fine;
}

// What a sensor sees of it, moved by half pixels, with noise of up to 3 levels.
Picture seen(const std::vector<int>& fine, int width, int height, int dx, int dy, std::mt19937& engine)
{
    Picture picture(width, height, 1);
    const int stride = 2 * width + 2;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int* at = &fine[std::size_t(2 * y + dy) * stride + 2 * x + dx];
            picture.pixels[std::size_t(y) * width + x] =
                std::uint8_t((at[0] + at[1] + at[stride] + at[stride + 1]) / 4 + int(engine() % 7) - 3);
        }
    return picture;
}

} // namespace

TEST(CompareGolden, MarksWhatTheDefinitionMarks)
{
    const CAlignment alignments[] = {{},
                                     {1, 0, 0, 1, 3, -2},
                                     {1, 0, 0, 1, -0.5, 0.5},
                                     {1, 0, 0, 1, 2.3, 0},
                                     turned(10, 4, -1),
                                     turned(180, 30, 20),
                                     {1, 0, 0, 1, 1e6, 0}};
    forEachKernelTarget([&](auto) {
        for (const auto& [width, height] : {std::pair{1, 1}, {5, 4}, {17, 3}, {67, 30}, {3, 64}, {641, 5}}) {
            const Picture picture(width, height, 1), golden(width + width % 3, height + 2, 2);
            for (const CAlignment& alignment : alignments)
                for (int grow : {0, 1, 3}) {
                    int compared = 0;
                    const Pixels plain = plainMarks(picture, golden, alignment, 15, grow, compared);
                    CKestImage marks;
                    ASSERT_EQ(picture.image().Compare(golden.image(), alignment, 15, grow, marks), compared);
                    ASSERT_EQ(marks.IsEmpty(), compared == 0);
                    const auto view = std::as_const(marks).view();
                    ASSERT_TRUE(compared == 0 || std::equal(plain.begin(), plain.end(), view.pixels))
                        << width << " x " << height << ", grow " << grow << ", shift " << alignment.x << " "
                        << alignment.y;
                }
        }
    });
}

// Noise of 3 levels on both sides, threshold 20, no structure thinner than 2 pixels and no edge along the
// border (whose neighbours outside are not known): then half a pixel's shift never alarms, told to the
// comparison or not, and a defect of 3 x 3 pixels and 40 levels always does.
TEST(CompareGolden, HalfPixelsAreForgivenAndDefectsAreNot)
{
    constexpr int width = 144, height = 108, threshold = 20;
    std::mt19937 engine(3);
    for (int pair = 0; pair < 200; ++pair) {
        const std::vector<int> fine = drawnBoard(width, height, engine);
        const int dx = int(engine() % 2), dy = int(engine() % 2);
        const CKestImage golden = seen(fine, width, height, 0, 0, engine).image();
        CKestImage sample = seen(fine, width, height, dx, dy, engine).image();
        const CAlignment told{1, 0, 0, 1, dx / 2.0, dy / 2.0}, untold;
        CKestImage marks;
        for (const CAlignment& alignment : {told, untold}) {
            ASSERT_GT(sample.Compare(golden, alignment, threshold, 1, marks), 0);
            ASSERT_EQ(marks.GetGrayLevelCount(255), 0) << "pair " << pair;
        }
        const int x = 2 + int(engine() % (width - 6)), y = 2 + int(engine() % (height - 6));
        const int change = engine() % 2 ? 40 : -40;
        for (int row = y; row < y + 3; ++row)
            for (int column = x; column < x + 3; ++column)
                sample.SetPixel(column, row, std::uint8_t(sample.GetPixel(column, row) + change));
        for (const CAlignment& alignment : {told, untold}) {
            sample.Compare(golden, alignment, threshold, 1, marks);
            std::vector<CBlobFeature> found;
            ASSERT_GE(marks.GetBlobFeatures(128, 255, 8, found), 1) << "pair " << pair;
            ASSERT_TRUE(found[0].left >= x && found[0].top >= y && found[0].right < x + 3 &&
                        found[0].bottom < y + 3);
        }
    }
}

TEST(CompareGolden, RefusesWhatItCannotDo)
{
    const CKestImage image(5, 5), golden(5, 5);
    CKestImage marks(2, 2);
    EXPECT_EQ(image.Compare(golden, {}, -1, 1, marks), 0);
    EXPECT_TRUE(marks.IsEmpty());
    EXPECT_EQ(image.Compare(golden, {}, 256, 1, marks), 0);
    EXPECT_EQ(image.Compare(golden, {}, 10, 101, marks), 0);
    EXPECT_EQ(image.Compare(golden, {1, 0, 0, 1, std::nan(""), 0}, 10, 1, marks), 0);
    EXPECT_EQ(image.Compare(golden, {1e300, 0, 0, 1, 0, 0}, 10, 1, marks), 0);
    EXPECT_EQ(image.Compare(CKestImage(), {}, 10, 1, marks), 0);
    CKestImage own(3, 3);
    EXPECT_EQ(own.Compare(golden, {}, 10, 1, own), 0);
    EXPECT_FALSE(own.IsEmpty());
}
