#include "image/Mirror.h"
#include "image/Rotate.h"
#include "image/VisionImage.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

using namespace testing_support;
using Bytes = std::vector<std::uint8_t>;

namespace {

struct Shape
{
    int width;
    int height;
    int bytesPerPixel;
    int stride;
    std::size_t at(int x, int y) const { return std::size_t(y) * stride + std::size_t(x) * bytesPerPixel; }
    std::size_t length() const { return std::size_t(height) * stride; }
};

ormalux::PixelBlock blockOf(Bytes& bytes, const Shape& shape)
{
    return {bytes.data(), bytes.size(),        shape.width,
            shape.height, shape.bytesPerPixel, std::size_t(shape.stride)};
}

void move(const Bytes& from, std::size_t source, Bytes& to, std::size_t target, const Shape& shape)
{
    for (int c = 0; c < shape.bytesPerPixel; ++c)
        to[target + c] = from[source + c];
}

template <class TargetX, class TargetY>
Bytes plainMoves(const Bytes& bytes, const Shape& shape, TargetX tx, TargetY ty)
{
    Bytes moved = bytes;
    for (int y = 0; y < shape.height; ++y)
        for (int x = 0; x < shape.width; ++x)
            move(bytes, shape.at(x, y), moved, shape.at(tx(x), ty(y)), shape);
    return moved;
}

Bytes plainTopBottom(const Bytes& bytes, int height, std::size_t stride)
{
    Bytes moved = bytes;
    for (int y = 0; y < height; ++y)
        for (std::size_t i = 0; i < stride; ++i) {
            const std::size_t source = stride * y + i, target = stride * (height - 1 - y) + i;
            if (source < bytes.size() && target < bytes.size())
                moved[target] = bytes[source];
        }
    return moved;
}

Bytes plainRotate(const Bytes& bytes, const Shape& shape, int cx, int cy, double angle)
{
    const double r = angle * 0.017453292519943295, ca = std::cos(r), sa = std::sin(r);
    Bytes image(bytes.size(), 0);
    std::vector<bool> mask(std::size_t(shape.width) * shape.height);
    for (int y = 0; y < shape.height; ++y)
        for (int x = 0; x < shape.width; ++x) {
            const float dx = float(std::int64_t(x) - cx), dy = float(std::int64_t(y) - cy);
            const double tx = std::trunc(dx * ca - dy * sa + cx), ty = std::trunc(dx * sa + dy * ca + cy);
            if (!(tx >= 0 && tx < shape.width && ty >= 0 && ty < shape.height))
                continue;
            move(bytes, shape.at(x, y), image, shape.at(int(tx), int(ty)), shape);
            mask[std::size_t(ty) * shape.width + std::size_t(tx)] = true;
        }
    const auto place = [&](int i) { return shape.at(i % shape.width, i / shape.width); };
    const int count = shape.width * shape.height;
    for (int i = 0; i < count; ++i)
        for (int c = 0; !mask[std::size_t(i)] && c < shape.bytesPerPixel; ++c) {
            const int left = i > 0 ? image[place(i - 1) + c] : 0;
            const int right = i + 1 < count ? image[place(i + 1) + c] : 0;
            image[place(i) + c] = std::uint8_t((left + right) >> 1);
        }
    return image;
}

std::vector<Shape> shapes()
{
    std::vector<Shape> list;
    for (int width : oddSizes)
        for (int height : {1, 2, 3, 8, 33}) {
            list.push_back({width, height, 1, width});
            list.push_back({width, height, 3, (3 * width + 3) & ~3});
        }
    return list;
}

void expectRotation(const Shape& shape, int cx, int cy, double angle, unsigned seed)
{
    const Bytes before = randomBytes(shape.length(), seed);
    const Bytes expected = plainRotate(before, shape, cx, cy, angle);
    Bytes bytes = before;
    ormalux::rotate(blockOf(bytes, shape), cx, cy, angle);
    ASSERT_EQ(bytes, expected) << shape.width << "x" << shape.height << " " << shape.bytesPerPixel
                               << " centre " << cx << "," << cy << " angle " << angle;
}

} // namespace

TEST(Mirror, EqualsPlainMovesForEverySetAndBandCount)
{
    for (const Shape& shape : shapes()) {
        const Bytes before = randomBytes(shape.length(), 3);
        const auto left = [&](int x) { return shape.width - 1 - x; };
        const auto top = [&](int y) { return shape.height - 1 - y; };
        const auto same = [](int i) { return i; };
        const Bytes turned = plainMoves(before, shape, left, top),
                    mirrored = plainMoves(before, shape, left, same);
        forEachKernelTarget([&](auto target) {
            forEachBandCount([&](int) {
                Bytes bytes = before;
                ormalux::halfTurn(blockOf(bytes, shape));
                ASSERT_EQ(bytes, turned) << shape.width << "x" << shape.height << " " << int(target);
                bytes = before;
                ormalux::mirrorLeftRight(blockOf(bytes, shape));
                ASSERT_EQ(bytes, mirrored) << shape.width << "x" << shape.height << " " << int(target);
            });
        });
    }
}

TEST(Mirror, TopBottomMovesWhatLiesInTheBufferWhenTheStrideExceedsTheRow)
{
    for (int width : oddSizes)
        for (int height : {1, 2, 3, 4, 5, 9, 40}) {
            const Bytes before = randomBytes(std::size_t(width) * height, 5);
            const std::size_t stride = (std::size_t(width) + 3) & ~std::size_t(3);
            const Bytes expected = plainTopBottom(before, height, stride);
            forEachBandCount([&](int) {
                CKestImage image(width, height, const_cast<std::uint8_t*>(before.data()));
                image.RotateVertFlip();
                ASSERT_EQ(Bytes(image.view().pixels, image.view().pixels + before.size()), expected)
                    << width << "x" << height;
            });
        }
}

TEST(Rotate, EqualsPlainCodeForEveryAngleAndCentre)
{
    std::mt19937 engine(11);
    for (int round = 0; round < 600; ++round) {
        const int width = 1 + int(engine() % 90), height = 1 + int(engine() % 70);
        const bool color = engine() % 4 == 0;
        const Shape shape{width, height, color ? 3 : 1, color ? (3 * width + 3) & ~3 : width};
        const double angles[] = {0.0,  -0.0, 90.0, -90.0, 180.0, 270.0, 360.0, 45.0, 1e-7,  1e-3, 0.3,
                                 -0.3, 2.0,  7.3,  -7.3,  19.0,  -20.0, 173.0, 1e6,  -1e18, 1e300};
        const double angle =
            round % 3 ? angles[engine() % std::size(angles)] : double(engine() % 72000) / 100 - 360;
        const int cx = int(engine() % 200) - 60, cy = int(engine() % 200) - 60;
        if (angle == -180.0)
            continue;
        expectRotation(shape, cx, cy, angle, unsigned(round));
    }
}

TEST(Rotate, OfALargePictureDoesNotDependOnBandsOrKernels)
{
    const Shape shape{641, 700, 1, 641};
    forEachKernelTarget([&](auto) {
        forEachBandCount([&](int) {
            for (double angle : {7.3, -7.3, 0.5, 45.0, 90.0, 181.0})
                expectRotation(shape, 320, 350, angle, 1);
        });
    });
}

TEST(Rotate, SurvivesWildCentresAndAngles)
{
    const Shape shape{40, 30, 1, 40};
    for (int cx : {INT_MIN, -20000000, -16777217, 16777240, 100000001, INT_MAX})
        for (int cy : {INT_MIN, 0, 16777300, INT_MAX})
            for (double angle : {0.0, 1e-9, 7.3, 90.0, 180.0, 360.0})
                expectRotation(shape, cx, cy, angle, 2);
    const double infinity = std::numeric_limits<double>::infinity();
    for (double angle : {infinity, -infinity, std::nan("")}) {
        CKestImage image(4, 4);
        image.SetPixel(1, 2, 9);
        image.Rotate(2, 2, angle, 0);
        EXPECT_EQ(image.GetPixel(1, 2), 9) << angle;
    }
}

TEST(Rotate, OnlyMinus180IsTheHalfTurn)
{
    Bytes pixels = randomBytes(35, 8);
    CKestImage half(7, 5, pixels.data()), minus(7, 5, pixels.data()), plus(7, 5, pixels.data());
    half.Rotate180();
    minus.Rotate(1, 1, -180.0, 0);
    plus.Rotate(3, 2, 180.0, 0);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 7; ++x)
            EXPECT_EQ(minus.GetPixel(x, y), half.GetPixel(x, y));
    const Bytes formula = plainRotate(pixels, {7, 5, 1, 7}, 3, 2, 180.0);
    EXPECT_EQ(Bytes(plus.view().pixels, plus.view().pixels + 35), formula);
}

TEST(Rotate, AQuarterTurnToTheRightTakesThePixelRightOfTheCentreBelowIt)
{
    CKestImage image(9, 9);
    image.SetPixel(5, 4, 200);
    image.Rotate90R();
    EXPECT_EQ(image.GetPixel(4, 5), 200);
    image.Rotate90L();
    EXPECT_EQ(image.GetWidth(), 9);
}

TEST(Transforms, OfAnImageWithoutPixelsDoNothing)
{
    CKestImage image;
    image.SetImagePtr(-3, INT_MAX);
    image.Rotate(0, 0, 10, 0);
    image.Rotate90L();
    image.Rotate90R();
    image.Rotate180();
    image.RotateHorzFlip();
    image.RotateVertFlip();
    EXPECT_TRUE(image.IsEmpty());
}
