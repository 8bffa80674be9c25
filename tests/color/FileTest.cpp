#include "platform/File.h"
#include "tests/color/Buffers.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using namespace testing_support;

namespace {

class ColorFile : public testing::Test
{
protected:
    void SetUp() override { std::filesystem::create_directories(m_folder); }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    Bytes saved(const CKestImage24& image)
    {
        EXPECT_EQ(image.SaveImage(m_path.c_str()), 1);
        return ormalux::readFile(m_path.c_str()).value_or(Bytes());
    }
    int loaded(const Bytes& file, CKestImage24& image)
    {
        EXPECT_TRUE(ormalux::writeFile(m_path.c_str(), file));
        return image.LoadImage(m_path.c_str());
    }

    std::filesystem::path m_folder =
        std::filesystem::temp_directory_path() /
        (std::string("ormalux-color-") + testing::UnitTest::GetInstance()->current_test_info()->name());
    std::string m_path = (m_folder / "picture.bmp").string();
};

void put32(Bytes& bytes, std::size_t at, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        bytes[at + std::size_t(i)] = std::uint8_t(value >> (8 * i));
}

/// A 24-bit file with the given size and pixel bytes behind its headers.
Bytes fileOf(int width, int height, const Bytes& pixels, std::uint32_t offset = 54)
{
    Bytes file(54);
    file[0] = 'B', file[1] = 'M';
    put32(file, 2, 14);
    put32(file, 10, offset);
    put32(file, 14, 40);
    put32(file, 18, std::uint32_t(width));
    put32(file, 22, std::uint32_t(height));
    file[26] = 1, file[28] = 24;
    put32(file, 34, std::uint32_t(ormalux::paddedStride(width) * height));
    file.insert(file.end(), pixels.begin(), pixels.end());
    return file;
}

} // namespace

TEST_F(ColorFile, HoldsUnpaddedRowsThenTheReversedBuffer)
{
    // The last one takes more than one block.
    const int sizes[][2] = {{1, 1}, {2, 3}, {3, 5}, {4, 2}, {7, 70}, {411, 500}};
    for (const auto& [width, height] : sizes) {
        auto bytes = paddedBytes(width, height, 41);
        const std::size_t stride = std::size_t(ormalux::paddedStride(width));
        Bytes body;
        for (int y = height - 1; y >= 0; --y) {
            const auto row = bytes.begin() + long(3 * width * y);
            body.insert(body.end(), row, row + 3 * width);
            body.insert(body.end(), stride - std::size_t(width), 0);
        }
        for (int y = height - 1; y >= 0; --y)
            body.insert(body.end(), bytes.begin() + long(stride) * y, bytes.begin() + long(stride) * (y + 1));
        ASSERT_EQ(saved(CKestImage24(width, height, bytes.data())), fileOf(width, height, body)) << width;
    }
    std::uint8_t pixel[4] = {1, 2, 3, 4};
    EXPECT_EQ(saved(CKestImage24(1, 1, pixel)).size(), 14u + 40 + (3 + 3) + 4);
    EXPECT_EQ(saved(CKestImage24()), fileOf(0, 0, {}));
    EXPECT_EQ(CKestImage24(-1, 2, pixel).SaveImage(m_path.c_str()), 0);
    EXPECT_EQ(CKestImage24(1, 1, pixel).SaveImage((m_folder / "none" / "a.bmp").string().c_str()), 0);
}

TEST_F(ColorFile, LoadsPaddedRowsTopRowFirst)
{
    const int sizes[][2] = {{1, 1}, {3, 5}, {4, 2}, {411, 500}};
    for (const auto& [width, height] : sizes) {
        const Bytes bytes = paddedBytes(width, height, 42);
        const std::size_t stride = std::size_t(ormalux::paddedStride(width));
        Bytes expected;
        for (int y = height - 1; y >= 0; --y)
            expected.insert(expected.end(), bytes.begin() + long(stride) * y,
                            bytes.begin() + long(stride) * (y + 1));
        Bytes gap(9, 77);
        gap.insert(gap.end(), bytes.begin(), bytes.end());
        CKestImage24 image;
        for (const Bytes& file : {fileOf(width, height, bytes), fileOf(width, height, bytes, 0),
                                  fileOf(width, height, gap, 63)}) {
            ASSERT_EQ(loaded(file, image), 1);
            ASSERT_EQ(image.GetWidth(), width);
            ASSERT_EQ(bufferOf(image), expected);
        }
    }
}

TEST_F(ColorFile, LeavesTheImageAloneWhenTheFileIsRefused)
{
    const Bytes pixels = paddedBytes(3, 2, 43);
    auto bytes = paddedBytes(5, 5, 44);
    CKestImage24 image;
    image.SetImagePtrLink(5, 5, bytes.data());
    std::vector<Bytes> refused = {{},
                                  Bytes(14),
                                  fileOf(3, 2, Bytes(pixels.begin(), pixels.end() - 1)),
                                  fileOf(3, 2, pixels, 55),
                                  fileOf(3, 2, pixels, 0xFFFFFFFF),
                                  fileOf(0, 2, pixels),
                                  fileOf(3, -2, pixels),
                                  fileOf(INT_MAX, INT_MAX, pixels),
                                  fileOf(60000, 60000, pixels)};
    refused.push_back(fileOf(3, 2, pixels));
    refused.back()[28] = 8;
    refused.push_back(fileOf(3, 2, pixels));
    refused.back()[0] = 'P';
    for (const Bytes& file : refused) {
        EXPECT_EQ(loaded(file, image), 0);
        EXPECT_EQ(image.view().pixels, bytes.data());
    }
    EXPECT_EQ(image.LoadImage(m_folder.string().c_str()), 0);
    EXPECT_EQ(image.LoadImage(nullptr), 0);

    const auto before = bytes;
    EXPECT_EQ(loaded(fileOf(3, 2, pixels), image), 1);
    EXPECT_NE(image.view().pixels, bytes.data());
    EXPECT_EQ(bytes, before);
}
