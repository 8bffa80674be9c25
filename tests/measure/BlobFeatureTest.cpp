#include "measure/BlobFeature.h"

#include "image/VisionImage.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>

using namespace testing_support;

namespace {

using Pixels = std::vector<std::uint8_t>;
using Features = std::vector<CBlobFeature>;

/// A picture of 0 and 1, of which parts are filled from a seed.
struct Mask
{
    int width, height;
    std::vector<int> cells;

    Mask(int w, int h) : width(w), height(h), cells(std::size_t(w) * h) {}
    int at(int x, int y) const
    {
        return x >= 0 && y >= 0 && x < width && y < height ? cells[std::size_t(y) * width + x] : -1;
    }
    int& cell(int x, int y) { return cells[std::size_t(y) * width + x]; }

    /// Turns the connected cells of the seed's value into another and lists them.
    std::vector<std::pair<int, int>> fill(int seedX, int seedY, int value, bool corners)
    {
        const int from = at(seedX, seedY);
        std::vector<std::pair<int, int>> found{{seedX, seedY}};
        cell(seedX, seedY) = value;
        for (std::size_t i = 0; i < found.size(); ++i)
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx) {
                    const int x = found[i].first + dx, y = found[i].second + dy;
                    if ((corners || dx == 0 || dy == 0) && at(x, y) == from) {
                        cell(x, y) = value;
                        found.emplace_back(x, y);
                    }
                }
        return found;
    }
};

// The weights by the sum of 1 for the pixel, 2 for each contour pixel beside it and 10 for each diagonal one.
double plainPerimeter(const Mask& blob)
{
    const auto contour = [&](int x, int y) {
        return blob.at(x, y) == 1 && (blob.at(x - 1, y) != 1 || blob.at(x + 1, y) != 1 ||
                                      blob.at(x, y - 1) != 1 || blob.at(x, y + 1) != 1);
    };
    double length = 0;
    for (int y = 0; y < blob.height; ++y)
        for (int x = 0; x < blob.width; ++x) {
            if (!contour(x, y))
                continue;
            const int beside = contour(x - 1, y) + contour(x + 1, y) + contour(x, y - 1) + contour(x, y + 1);
            const int corners =
                contour(x - 1, y - 1) + contour(x + 1, y - 1) + contour(x - 1, y + 1) + contour(x + 1, y + 1);
            switch (1 + 2 * beside + 10 * corners) {
            case 5:
            case 7:
            case 15:
            case 17:
            case 25:
            case 27:
                length += 1;
                break;
            case 21:
            case 33:
                length += std::sqrt(2.0);
                break;
            case 13:
            case 23:
                length += (1 + std::sqrt(2.0)) / 2;
                break;
            }
        }
    return length;
}

// The parts of the background around and in the blob, less the one around.
int plainHoles(const Mask& blob, bool corners)
{
    Mask framed(blob.width + 2, blob.height + 2);
    for (int y = 0; y < blob.height; ++y)
        for (int x = 0; x < blob.width; ++x)
            framed.cell(x + 1, y + 1) = blob.at(x, y);
    int parts = 0;
    for (int y = 0; y < framed.height; ++y)
        for (int x = 0; x < framed.width; ++x)
            if (framed.at(x, y) == 0) {
                framed.fill(x, y, 2, corners);
                ++parts;
            }
    return parts - 1;
}

CBlobFeature plainFeature(const Mask& region, const std::vector<std::pair<int, int>>& cells,
                          const Pixels& pixels, bool corners)
{
    CBlobFeature f{};
    f.left = f.top = INT_MAX;
    Mask blob(region.width, region.height);
    const double n = double(cells.size());
    for (const auto& [x, y] : cells) {
        blob.cell(x, y) = 1;
        f.left = std::min(f.left, x);
        f.top = std::min(f.top, y);
        f.right = std::max(f.right, x);
        f.bottom = std::max(f.bottom, y);
        f.centroid_x += x / n;
        f.centroid_y += y / n;
        f.mean += pixels[std::size_t(y) * region.width + x] / n;
    }
    double xx = 1.0 / 12, yy = 1.0 / 12, xy = 0;
    for (const auto& [x, y] : cells) {
        xx += (x - f.centroid_x) * (x - f.centroid_x) / n;
        yy += (y - f.centroid_y) * (y - f.centroid_y) / n;
        xy += (x - f.centroid_x) * (y - f.centroid_y) / n;
    }
    f.area = (long long)cells.size();
    f.perimeter = plainPerimeter(blob);
    f.holes = plainHoles(blob, !corners);
    // The eigenvalues as the roots of the characteristic polynomial.
    const double root = std::sqrt(std::max(0.0, (xx + yy) * (xx + yy) / 4 - (xx * yy - xy * xy)));
    f.major = 4 * std::sqrt((xx + yy) / 2 + root);
    f.minor = 4 * std::sqrt((xx + yy) / 2 - root);
    return f;
}

Features plainFeatures(const Pixels& pixels, int width, int height, int threshold, bool corners)
{
    Mask region(width, height);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        region.cells[i] = pixels[i] > threshold;
    Features found;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            if (region.at(x, y) == 1)
                found.push_back(plainFeature(region, region.fill(x, y, 2, corners), pixels, corners));
    return found;
}

void expectEqual(const CBlobFeature& a, const CBlobFeature& b)
{
    EXPECT_EQ(a.area, b.area);
    EXPECT_EQ(std::make_tuple(a.left, a.top, a.right, a.bottom),
              std::make_tuple(b.left, b.top, b.right, b.bottom));
    EXPECT_NEAR(a.centroid_x, b.centroid_x, 1e-9);
    EXPECT_NEAR(a.centroid_y, b.centroid_y, 1e-9);
    EXPECT_NEAR(a.perimeter, b.perimeter, 1e-9);
    EXPECT_NEAR(a.major, b.major, 1e-5);
    EXPECT_NEAR(a.minor, b.minor, 1e-5);
    EXPECT_EQ(a.holes, b.holes);
    EXPECT_NEAR(a.mean, b.mean, 1e-9);
}

Pixels drawn(std::initializer_list<const char*> rows)
{
    Pixels pixels;
    for (const char* row : rows)
        for (; *row; ++row)
            pixels.push_back(*row == '#' ? 200 : 10);
    return pixels;
}

Features featuresOf(Pixels pixels, int width, int connectivity)
{
    Features found;
    CKestImage(width, int(pixels.size()) / width, pixels.data())
        .GetBlobFeatures(100, 255, connectivity, found);
    return found;
}

} // namespace

TEST(BlobFeatures, EqualAPlainWalkOfEveryBlob)
{
    forEachKernelTarget([](auto) {
        for (const auto& [width, height] :
             {std::pair{1, 1}, {1, 17}, {4, 5}, {17, 3}, {64, 9}, {67, 31}, {641, 3}})
            for (int connectivity : {4, 8})
                for (int threshold : {60, 128, 200}) {
                    Pixels pixels = randomBytes(std::size_t(width) * height, unsigned(width + threshold));
                    Features found;
                    const CKestImage image(width, height, pixels.data());
                    image.GetBlobFeatures(threshold, 255, connectivity, found);
                    const Features plain = plainFeatures(pixels, width, height, threshold, connectivity == 8);
                    ASSERT_EQ(found.size(), plain.size());
                    for (std::size_t i = 0; i < plain.size(); ++i)
                        expectEqual(found[i], plain[i]);
                    ASSERT_FALSE(HasFailure()) << width << " x " << height << ", " << connectivity;
                }
    });
}

TEST(BlobFeatures, OrientationIsCounterClockwiseWithYUp)
{
    EXPECT_DOUBLE_EQ(featuresOf(drawn({"#####"}), 5, 4)[0].orientation, 0);
    EXPECT_DOUBLE_EQ(featuresOf(drawn({"#", "#", "#"}), 1, 4)[0].orientation, 90);
    EXPECT_DOUBLE_EQ(featuresOf(drawn({"..#", ".#.", "#.."}), 3, 8)[0].orientation, 45);
    EXPECT_DOUBLE_EQ(featuresOf(drawn({"#..", ".#.", "..#"}), 3, 8)[0].orientation, -45);
    EXPECT_DOUBLE_EQ(featuresOf(drawn({"##", "##"}), 2, 4)[0].orientation, 0);
    // Variances 60 / 9 and 6 / 9, covariance 18 / 9: half the angle whose tangent is 4 / 6.
    EXPECT_NEAR(featuresOf(drawn({"......###", "...###...", "###......"}), 9, 8)[0].orientation, 16.845034,
                1e-6);
}

TEST(BlobFeatures, AxesOfARectangleCountPixelsAsSquares)
{
    // A rectangle of n pixels has the second moment n^2 / 12.
    const Features found = featuresOf(Pixels(7 * 4, 255), 7, 4);
    EXPECT_NEAR(found[0].major, 4 * 7 / std::sqrt(12.0), 1e-12);
    EXPECT_NEAR(found[0].minor, 4 * 4 / std::sqrt(12.0), 1e-12);
    EXPECT_DOUBLE_EQ(found[0].perimeter, 18);
    EXPECT_NEAR(found[0].circularity, 4 * 3.14159265358979 * 28 / (18 * 18), 1e-12);
}

TEST(BlobFeatures, HolesTouchTheOtherWay)
{
    const Pixels ring = drawn({".#.", "#.#", ".#."});
    EXPECT_EQ(featuresOf(ring, 3, 4).size(), 4u);
    ASSERT_EQ(featuresOf(ring, 3, 8).size(), 1u);
    EXPECT_EQ(featuresOf(ring, 3, 8)[0].holes, 1);
    const Pixels two = drawn({"####", "#.##", "##.#", "####"});
    EXPECT_EQ(featuresOf(two, 4, 4)[0].holes, 1);
    EXPECT_EQ(featuresOf(two, 4, 8)[0].holes, 2);
}

TEST(BlobFeatures, TheRegionCutsBlobsAndItsBorderDropsThem)
{
    Pixels pixels = drawn({"##....", "##.##.", "...##.", ".#....", "......"});
    const CKestImage image(6, 5, pixels.data());
    Features found;
    EXPECT_EQ(image.GetBlobFeatures(5, 4, 1, 0, 100, 255, 4, 0, 0, LLONG_MAX, found),
              3); // corners in any order
    EXPECT_EQ(found[0].area, 2);
    EXPECT_EQ(found[0].left, 1);
    EXPECT_DOUBLE_EQ(found[1].centroid_x, 3.5);
    EXPECT_EQ(image.GetBlobFeatures(1, 0, 5, 4, 100, 255, 4, 1, 0, LLONG_MAX, found), 1);
    EXPECT_EQ(found[0].area, 4);
    EXPECT_EQ(image.GetBlobFeatures(-9, -9, 99, 99, 100, 255, 4, 0, 2, 4, found), 2);
    EXPECT_EQ(image.GetBlobFeatures(-9, -9, 99, 99, 100, 0, 4, 0, 0, LLONG_MAX, found), 1);
    EXPECT_EQ(found[0].area, 21);
}

TEST(BlobFeatures, MomentsOfWidePicturesDoNotOverflow)
{
    Pixels pixels(3'000'000, 255);
    const Features found = featuresOf(pixels, 3'000'000, 4);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_DOUBLE_EQ(found[0].centroid_x, 1'499'999.5);
    EXPECT_NEAR(found[0].major / (4 * 3e6 / std::sqrt(12.0)), 1, 1e-12);
    EXPECT_NEAR(found[0].minor, 4 / std::sqrt(12.0), 1e-3);
}

TEST(BlobFeatures, RefuseWhatTheyCannotDo)
{
    Pixels pixels(9, 255);
    const CKestImage image(3, 3, pixels.data());
    Features found(5);
    EXPECT_EQ(image.GetBlobFeatures(100, 255, 6, found), 0);
    EXPECT_TRUE(found.empty());
    EXPECT_EQ(image.GetBlobFeatures(100, 7, 4, found), 0);
    EXPECT_EQ(image.GetBlobFeatures(255, 255, 4, found), 0);
    EXPECT_EQ(image.GetBlobFeatures(5, 5, 9, 9, 100, 255, 4, 0, 0, 9, found), 0);
    EXPECT_EQ(CKestImage().GetBlobFeatures(100, 255, 4, found), 0);
}
