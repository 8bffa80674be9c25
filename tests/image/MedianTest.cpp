#include "image/MedianFilter.h"
#include "image/VisionImage.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace ormalux;
using namespace testing_support;

namespace {

using Pixels = std::vector<std::uint8_t>;

Pixels plainMedian(const Pixels& in, int width, int height, int reach)
{
    Pixels out(in.size()), seen;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            seen.clear();
            for (int dy = -reach; dy <= reach; ++dy)
                for (int dx = -reach; dx <= reach; ++dx)
                    seen.push_back(in[std::size_t(std::clamp(y + dy, 0, height - 1)) * width +
                                      std::clamp(x + dx, 0, width - 1)]);
            std::nth_element(seen.begin(), seen.begin() + seen.size() / 2, seen.end());
            out[std::size_t(y) * width + x] = seen[seen.size() / 2];
        }
    return out;
}

void expectMedians(const Pixels& in, int width, int height)
{
    for (int reach : {1, 2}) {
        Pixels work = in;
        CKestImage image;
        image.SetImagePtrLink(width, height, work.data());
        reach == 1 ? image.Median3x3() : image.Median5x5();
        ASSERT_EQ(work, plainMedian(in, width, height, reach))
            << width << " x " << height << ", reach " << reach;
    }
}

} // namespace

TEST(MedianFilter, EqualsTheSortedNeighbourhoodAtEverySize)
{
    forEachKernelTarget([](auto) {
        for (int width : oddSizes)
            for (int height : {1, 2, 5, 17, 41})
                expectMedians(randomBytes(std::size_t(width) * height, unsigned(width + height)), width,
                              height);
        expectMedians(randomBytes(2100 * 6, 1), 2100, 6);
        // Two levels alone: a network that orders every such neighbourhood orders all.
        Pixels two = randomBytes(641 * 130, 4);
        for (std::uint8_t& p : two)
            p = p > 127 ? 255 : 0;
        expectMedians(two, 641, 130);
    });
}

TEST(MedianFilter, RefusesOtherSizes)
{
    Pixels pixels(9, 4);
    EXPECT_FALSE(medianFilter({pixels.data(), 3, 3, 3}, 4));
    EXPECT_FALSE(medianFilter({pixels.data(), 3, 3, 3}, 7));
    EXPECT_FALSE(medianFilter({}, 3));
}
