#include "image/kernels/PointKernels.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

using namespace testing_support;

TEST(PointKernels, InvertEqualsPlainCodeForEverySet)
{
    forEachKernelTarget([](auto target) {
        for (std::size_t n : {0u, 1u, 15u, 64u, 65u, 1000u}) {
            auto pixels = randomBytes(n, 7);
            auto expected = pixels;
            for (auto& p : expected)
                p = std::uint8_t(255 - p);
            ormalux::kernels::invert(pixels.data(), n);
            ASSERT_EQ(pixels, expected) << int(target) << " " << n;
        }
    });
}
