#include "image/VisionImage.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace testing_support;

namespace {

using Pixels = std::vector<std::uint8_t>;

// The elements as drawn: a row a text.
struct Drawing
{
    int shape;
    std::vector<std::string> rows;
    int width() const { return int(rows[0].size()); }
    int height() const { return int(rows.size()); }
};

// The tables that getStructuringElement of OpenCV 4.6 gives.
const Drawing drawings[] = {
    {MORPHOLOGY_RECT, {"##", "##", "##"}},
    {MORPHOLOGY_RECT, {"#########"}},
    {MORPHOLOGY_CROSS, {"..#.", "..#.", "####", "..#.", "..#."}},
    {MORPHOLOGY_ELLIPSE, {"#"}},
    {MORPHOLOGY_ELLIPSE, {"..#.."}},
    {MORPHOLOGY_ELLIPSE, {"..#..", "#####", "#####", "#####", "..#.."}},
    {MORPHOLOGY_ELLIPSE, {"...#..", ".#####", "######", "######", "######", ".#####"}},
    {MORPHOLOGY_ELLIPSE, {"...#...", "#######", "...#..."}},
    {MORPHOLOGY_ELLIPSE,
     {"....#....", ".#######.", ".#######.", "#########", "#########", "#########", ".#######.", ".#######.",
      "....#...."}},
};

Drawing rectangle(int width, int height)
{
    return {MORPHOLOGY_RECT,
            std::vector<std::string>(std::size_t(height), std::string(std::size_t(width), '#'))};
}

Pixels plainExtreme(const Pixels& in, int width, int height, const Drawing& element, bool least)
{
    Pixels out(in.size());
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            int best = least ? 255 : 0;
            for (int row = 0; row < element.height(); ++row)
                for (int column = 0; column < element.width(); ++column) {
                    const int nx = x + column - element.width() / 2, ny = y + row - element.height() / 2;
                    if (element.rows[row][column] != '#' || nx < 0 || ny < 0 || nx >= width || ny >= height)
                        continue;
                    const int p = in[std::size_t(ny) * width + nx];
                    best = least ? std::min(best, p) : std::max(best, p);
                }
            out[std::size_t(y) * width + x] = std::uint8_t(best);
        }
    return out;
}

Pixels minus(const Pixels& from, const Pixels& less)
{
    Pixels out(from.size());
    for (std::size_t i = 0; i < out.size(); ++i)
        out[i] = std::uint8_t(std::max(0, from[i] - less[i]));
    return out;
}

Pixels plainMorphology(const Pixels& in, int width, int height, const Drawing& element, int operation)
{
    const auto eroded = [&](const Pixels& p) { return plainExtreme(p, width, height, element, true); };
    const auto dilated = [&](const Pixels& p) { return plainExtreme(p, width, height, element, false); };
    switch (operation) {
    case MORPHOLOGY_ERODE:
        return eroded(in);
    case MORPHOLOGY_DILATE:
        return dilated(in);
    case MORPHOLOGY_OPEN:
        return dilated(eroded(in));
    case MORPHOLOGY_CLOSE:
        return eroded(dilated(in));
    case MORPHOLOGY_TOPHAT:
        return minus(in, dilated(eroded(in)));
    default:
        return minus(dilated(in), eroded(in));
    }
}

void expectRight(int width, int height, const Drawing& element, int operation)
{
    const Pixels in = randomBytes(std::size_t(width) * height, unsigned(width * 7 + height));
    Pixels work = in;
    CKestImage image;
    image.SetImagePtrLink(width, height, work.data());
    ASSERT_EQ(image.Morphology(operation, element.shape, element.width(), element.height()), 1);
    ASSERT_EQ(work, plainMorphology(in, width, height, element, operation))
        << width << " x " << height << ", operation " << operation << " shape " << element.shape << " "
        << element.width() << " x " << element.height();
}

} // namespace

TEST(ShapeMorphology, EveryShapeAndOperationEqualsTheDefinition)
{
    forEachKernelTarget([](auto) {
        for (const Drawing& element : drawings)
            for (int operation = MORPHOLOGY_ERODE; operation <= MORPHOLOGY_GRADIENT; ++operation)
                for (const auto& [width, height] :
                     {std::pair{1, 1}, {1, 17}, {5, 3}, {17, 4}, {65, 7}, {300, 9}})
                    expectRight(width, height, element, operation);
    });
}

TEST(ShapeMorphology, RectanglesOfEverySizeEqualTheDefinition)
{
    forEachKernelTarget([](auto) {
        for (int size = 1; size <= 40; ++size) {
            expectRight(71, 5, rectangle(size, 1), MORPHOLOGY_ERODE);
            expectRight(9, 61, rectangle(1, size), MORPHOLOGY_DILATE);
        }
        expectRight(641, 4, rectangle(255, 101), MORPHOLOGY_OPEN);
        expectRight(5, 641, rectangle(101, 255), MORPHOLOGY_ERODE);
    });
}

TEST(ShapeMorphology, RefusesWhatItCannotDo)
{
    CKestImage image(3, 3);
    image.SetPixel(1, 1, 9);
    EXPECT_EQ(image.Morphology(MORPHOLOGY_ERODE, MORPHOLOGY_RECT, 0, 3), 0);
    EXPECT_EQ(image.Morphology(MORPHOLOGY_ERODE, MORPHOLOGY_RECT, 3, 256), 0);
    EXPECT_EQ(image.Morphology(6, MORPHOLOGY_RECT, 3, 3), 0);
    EXPECT_EQ(image.Morphology(MORPHOLOGY_ERODE, -1, 3, 3), 0);
    EXPECT_EQ(image.GetPixel(1, 1), 9);
    EXPECT_EQ(CKestImage().Morphology(MORPHOLOGY_ERODE, MORPHOLOGY_RECT, 3, 3), 0);
}
