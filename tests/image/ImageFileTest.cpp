#include "image/BmpFile.h"
#include "image/VisionImage.h"
#include "platform/File.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <filesystem>

using namespace testing_support;
using Bytes = std::vector<std::uint8_t>;

namespace {

class ImageFile : public ::testing::Test
{
protected:
    void SetUp() override { std::filesystem::create_directories(m_folder); }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    void put(const Bytes& bytes) const { ASSERT_TRUE(ormalux::writeFile(path.c_str(), bytes)); }
    Bytes get() const { return ormalux::readFile(path.c_str()).value_or(Bytes()); }

    std::filesystem::path m_folder =
        std::filesystem::temp_directory_path() /
        (std::string("ormalux-image-") + ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::string path = (m_folder / "picture.bmp").string();
};

Bytes pixelsOf(const CKestImage& image)
{
    const auto view = image.view();
    return view.empty() ? Bytes() : Bytes(view.pixels, view.pixels + image.GetImageLen());
}

Bytes bmp(int width, int height, const Bytes& rows)
{
    const ormalux::BmpHeaderBytes header(width, height, 8);
    Bytes file(header.bytes().begin(), header.bytes().end());
    file.insert(file.end(), rows.begin(), rows.end());
    return file;
}

void set32(Bytes& bytes, std::size_t at, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        bytes[at + i] = std::uint8_t(value >> (8 * i));
}

// A loader as plain as can be, for files whose header is good and whose pixels are there.
Bytes plainLoad(const Bytes& rows, int width, int height)
{
    const std::size_t length = std::size_t(width) * height,
                      stride = (std::size_t(width) + 3) & ~std::size_t(3);
    Bytes pixels(rows.begin(), rows.begin() + std::ptrdiff_t(length));
    Bytes flipped = pixels;
    for (int y = 0; y < height; ++y)
        for (std::size_t i = 0; i < stride; ++i)
            if (stride * y + i < length && stride * (height - 1 - y) + i < length)
                flipped[stride * (height - 1 - y) + i] = pixels[stride * y + i];
    return flipped;
}

} // namespace

TEST_F(ImageFile, SavedBytesAreHeadersPaletteAndPaddedRowsFromTheBottom)
{
    const Bytes pixels{1, 2, 3, 4, 5, 6};
    ASSERT_EQ(CKestImage(3, 2, const_cast<std::uint8_t*>(pixels.data())).SaveImage(path.c_str()), 1);
    Bytes expected(1078, 0);
    expected[0] = 'B', expected[1] = 'M';
    for (auto [at, value] : {std::pair{2, 14}, {10, 1078}, {14, 40}, {18, 3}, {22, 2}, {34, 8}, {46, 256}})
        set32(expected, std::size_t(at), std::uint32_t(value));
    expected[26] = 1, expected[28] = 8;
    for (std::size_t i = 0; i < 256; ++i)
        expected[54 + 4 * i] = expected[55 + 4 * i] = expected[56 + 4 * i] = std::uint8_t(i);
    expected.insert(expected.end(), {4, 5, 6, 0, 1, 2, 3, 0});
    EXPECT_EQ(get(), expected);
    EXPECT_EQ(CKestImage().SaveImage(path.c_str()), 1);
    EXPECT_EQ(get().size(), 1078u);
}

TEST_F(ImageFile, AColourHeaderHasNoPaletteAndItsOwnStride)
{
    const ormalux::BmpHeaderBytes header(3, 2, 24);
    Bytes expected(54, 0);
    expected[0] = 'B', expected[1] = 'M';
    for (auto [at, value] : {std::pair{2, 14}, {10, 54}, {14, 40}, {18, 3}, {22, 2}, {34, 24}})
        set32(expected, std::size_t(at), std::uint32_t(value));
    expected[26] = 1, expected[28] = 24;
    EXPECT_EQ(Bytes(header.bytes().begin(), header.bytes().end()), expected);
}

TEST_F(ImageFile, WhatIsSavedLoadsAgainForWidthsThatAreAMultipleOf4)
{
    for (auto [width, height] : {std::pair{4, 1}, {4, 3}, {640, 481}, {200000, 3}, {8, 40000}}) {
        Bytes pixels = randomBytes(std::size_t(width) * height, 1);
        const CKestImage saved(width, height, pixels.data());
        ASSERT_EQ(saved.SaveImage(path.c_str()), 1);
        CKestImage loaded;
        for (int again = 0; again < 2; ++again) {
            ASSERT_EQ(loaded.LoadImage(path.c_str()), 1);
            EXPECT_EQ(loaded.GetHeight(), height);
            EXPECT_EQ(pixelsOf(loaded), pixels) << width << "x" << height;
        }
    }
}

TEST_F(ImageFile, OtherWidthsLoadTheFilesBytesAsUnpaddedRows)
{
    for (int width : oddSizes)
        for (int height : {1, 2, 3, 7}) {
            const Bytes rows = randomBytes(((std::size_t(width) + 3) & ~std::size_t(3)) * height, 2);
            put(bmp(width, height, rows));
            CKestImage image;
            ASSERT_EQ(image.LoadImage(path.c_str()), 1);
            EXPECT_EQ(pixelsOf(image), plainLoad(rows, width, height)) << width << "x" << height;
        }
}

TEST_F(ImageFile, ThePixelOffsetIsFollowedAnd0MeansBehindThePalette)
{
    Bytes file = bmp(4, 1, {1, 2, 3, 4, 5, 6, 7, 8});
    for (auto [offset, first] : {std::pair{0u, 1}, {1078u, 1}, {1082u, 5}, {0xFFFFFFFFu, -1}, {1083u, -1}}) {
        set32(file, 10, offset);
        put(file);
        CKestImage image;
        EXPECT_EQ(image.LoadImage(path.c_str()), first >= 0 ? 1 : 0) << offset;
        EXPECT_EQ(image.GetPixel(0, 0), first >= 0 ? first : 0) << offset;
    }
}

TEST_F(ImageFile, ARefusedHeaderLeavesTheImageAndShortPixelsEmptyIt)
{
    const Bytes good = bmp(4, 2, Bytes(8, 9));
    const auto load = [&](const Bytes& file) {
        put(file);
        CKestImage image(2, 2);
        image.SetPixel(1, 1, 50);
        EXPECT_EQ(image.LoadImage(path.c_str()), 0);
        return image;
    };
    const auto changed = [&](std::size_t at, std::uint32_t value) {
        Bytes file = good;
        set32(file, at, value);
        return file;
    };
    for (const Bytes& file :
         {Bytes(), Bytes(good.begin(), good.begin() + 1077), changed(0, 0), changed(28, 24), changed(18, 0),
          changed(18, 0x80000000u), changed(22, 0), changed(22, 0xFFFFFFFEu)})
        EXPECT_EQ(load(file).GetPixel(1, 1), 50);
    const CKestImage cut = load(Bytes(good.begin(), good.end() - 1));
    EXPECT_TRUE(cut.IsEmpty());
    EXPECT_EQ(cut.GetWidth(), 4);
    EXPECT_EQ(cut.GetHeight(), 2);
    const CKestImage huge = load(changed(18, INT_MAX));
    EXPECT_TRUE(huge.IsEmpty());
    EXPECT_EQ(huge.GetWidth(), INT_MAX);
}

TEST_F(ImageFile, LoadingIntoALinkedImageLeavesTheCallersBufferAlone)
{
    put(bmp(4, 2, Bytes(8, 9)));
    Bytes callers(8, 1);
    CKestImage image;
    image.SetImagePtrLink(4, 2, callers.data());
    EXPECT_EQ(image.LoadImage(path.c_str()), 1);
    EXPECT_EQ(callers, Bytes(8, 1));
    EXPECT_EQ(pixelsOf(image), Bytes(8, 9));
}

TEST_F(ImageFile, PathsThatAreNoFilesFail)
{
    CKestImage image(4, 4);
    EXPECT_EQ(image.LoadImage(nullptr), 0);
    EXPECT_EQ(image.LoadImage(m_folder.string().c_str()), 0);
    EXPECT_EQ(image.LoadImage((path + ".missing").c_str()), 0);
    EXPECT_EQ(image.SaveImage(nullptr), 0);
    EXPECT_EQ(image.SaveImage(m_folder.string().c_str()), 0);
    EXPECT_EQ(image.SaveImage((path + "/below.bmp").c_str()), 0);
    EXPECT_EQ(image.GetWidth(), 4);
    CKestImage unfilled;
    unfilled.SetImagePtr(5, 5, 16, nullptr, nullptr);
    EXPECT_EQ(unfilled.SaveImage(path.c_str()), 0) << "a size without pixels";
}

TEST_F(ImageFile, ARefusedSizeIsNotSaved)
{
    Bytes file = bmp(4, 2, Bytes(8, 9));
    set32(file, 18, 2147483647);
    put(file);
    CKestImage image(4, 4);
    ASSERT_EQ(image.LoadImage(path.c_str()), 0);
    ASSERT_EQ(image.GetWidth(), 2147483647);
    EXPECT_EQ(image.SaveImage((path + ".saved").c_str()), 0);
    EXPECT_FALSE(std::filesystem::exists(path + ".saved"));
}
