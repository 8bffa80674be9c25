#include "image/VisionImage.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

CKestImage imageOf(int width, int height, std::vector<std::uint8_t> pixels)
{
    return CKestImage(width, height, pixels.data());
}

CKestImage squareImage()
{
    CKestImage image(10, 8);
    for (int y = 2; y <= 4; ++y)
        for (int x = 4; x <= 6; ++x)
            image.SetPixel(x, y, 200);
    return image;
}

void expectBlob(const _stBlobRect& blob, std::vector<int> expected)
{
    EXPECT_EQ((std::vector<int>{blob.left, blob.top, blob.right, blob.bottom, blob.pixel_count}), expected);
}

const int ends[] = {INT_MIN, -1, 0, 3, 9, 10, 11, INT_MAX};

} // namespace

TEST(GetBlobList, GivesEveryFurtherPixelOfABlobWhenOnePixelIsAdmitted)
{
    const CKestImage image = squareImage();
    CBlobRectArray blobs;
    EXPECT_EQ(image.GetBlobList(200, 2, 10, 2, 10, blobs), 1);
    expectBlob(blobs[0], {4, 2, 6, 4, 9});
    EXPECT_EQ(image.GetBlobList(200, 1, 10, 1, 10, blobs), 10);
    expectBlob(blobs[1], {4, 2, 6, 4, 9});
    expectBlob(blobs[2], {5, 2, 5, 2, 1});
    expectBlob(blobs[9], {6, 4, 6, 4, 1});
    blobs.RemoveAll();
    EXPECT_EQ(image.GetBlobList(200, 1, 2, 1, 2, blobs), 8); // the square itself is too large
}

TEST(GetBlobList, KeepsDiagonalPixelsApart)
{
    CBlobRectArray blobs;
    EXPECT_EQ(imageOf(2, 2, {9, 0, 0, 9}).GetBlobList(9, 1, 9, 1, 9, blobs), 2);
    EXPECT_EQ(imageOf(2, 2, {9, 0, 0, 9}).GetBlobList(9, 2, 9, 1, 9, blobs), 2);
}

TEST(GetBlobList, CountsButDoesNotEnterPixelsLeftOfAndAboveTheRegion)
{
    const CKestImage image = squareImage();
    CBlobRectArray blobs;
    EXPECT_EQ(image.GetBlobList(5, 3, -1, -1, 200, 2, 9, 2, 9, blobs), 1);
    expectBlob(blobs[0], {5, 3, 6, 4, 4 + 2 + 2});
    CPointArrayArray lists;
    EXPECT_EQ(image.GetBlobList(5, 3, -1, -1, 200, 2, 9, 2, 9, lists), 1);
    const POINT walk[] = {{5, 3}, {4, 3}, {6, 3}, {6, 2}, {6, 4}, {5, 4}, {4, 4}, {5, 2}};
    ASSERT_EQ(lists[0].GetCount(), 8);
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(lists[0][i], walk[i]) << i;
}

TEST(GetBlobList, SplitsLevelsAtTheThreshold)
{
    const CKestImage image = imageOf(4, 1, {129, 0, 128, 200});
    CBlobRectArray blobs;
    EXPECT_EQ(image.GetBlobList(128, 255, 1, 1, 1, 1, blobs), 2);
    expectBlob(blobs[0], {0, 0, 0, 0, 1});
    blobs.RemoveAll();
    EXPECT_EQ(image.GetBlobList(128, 0, 2, 2, 1, 1, blobs), 1);
    expectBlob(blobs[0], {1, 0, 2, 0, 2});
    EXPECT_EQ(image.GetBlobList(128, 254, 1, 9, 1, 9, blobs), 1);
    EXPECT_EQ(image.GetBlobList(1, 0, 0, -1, 128, 255, 1, 9, 1, 9, blobs), 1); // reversed: nothing
    EXPECT_EQ(image.GetGrayRangeBlobList(128, 129, 1, 9, 1, 9, blobs), 3);
    EXPECT_EQ(image.GetGrayRangeBlobList(129, 128, 1, 9, 1, 9, blobs), 3);
}

TEST(GetBlobList, SurvivesAnyRegionAndSize)
{
    const CKestImage image(10, 10, testing_support::randomBytes(100, 1).data());
    const CKestImage none;
    for (int left : ends)
        for (int top : ends)
            for (int right : ends)
                for (int bottom : ends) {
                    CBlobRectArray blobs;
                    image.GetBlobList(left, top, right, bottom, 128, 255, LONG_MIN, LONG_MAX, LONG_MIN,
                                      LONG_MAX, blobs);
                    for (const _stBlobRect& b : blobs.records())
                        ASSERT_TRUE(b.left >= std::max(left, 0) && b.top >= std::max(top, 0) &&
                                    b.right <= 9 && b.bottom <= 9);
                    CPointArrayArray lists;
                    EXPECT_EQ(image.GetBlobList(left, top, right, bottom, 7, LONG_MAX, LONG_MIN, 1, 9, lists),
                              0);
                    EXPECT_EQ(none.GetBlobList(left, top, right, bottom, 128, 255, 1, 9, 1, 9, blobs), 0);
                }
}
