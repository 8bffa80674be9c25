#include "array/Array.h"
#include "array/MatchSourceFile.h"
#include "platform/File.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

namespace {

class MatchSourceFiles : public testing::Test
{
protected:
    MatchSourceFiles() { std::filesystem::create_directories(m_folder); }
    ~MatchSourceFiles() override { std::filesystem::remove_all(m_folder); }

    std::string write(const std::vector<std::uint8_t>& bytes)
    {
        const std::filesystem::path path = m_folder / "source.mcs";
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
        return path.string();
    }

    std::filesystem::path m_folder =
        std::filesystem::temp_directory_path() /
        ("ormalux_sources_" + std::to_string(reinterpret_cast<std::uintptr_t>(this)));
};

// key 255, 2 black, 4 white, threshold -2, 3 x 2 pixels
const std::vector<std::uint8_t> wellFormed = {255, 2, 0, 0, 0, 4, 0, 0,   0, 0xFE, 0xFF, 0xFF, 0xFF, 3,
                                              0,   0, 0, 2, 0, 0, 0, 255, 0, 255,  255,  0,    255};

std::vector<std::uint8_t> withSize(LONG width, LONG height)
{
    std::vector<std::uint8_t> bytes = wellFormed;
    for (int i = 0; i < 4; ++i) {
        bytes[std::size_t(13 + i)] = std::uint8_t(DWORD(width) >> (8 * i));
        bytes[std::size_t(17 + i)] = std::uint8_t(DWORD(height) >> (8 * i));
    }
    return bytes;
}

} // namespace

TEST_F(MatchSourceFiles, EveryFieldIsReadFromItsPlaceAndPixelsOutliveTheArrays)
{
    std::uint8_t* pixels = nullptr;
    {
        CMatchSrcArray sources;
        sources.Add(write(wellFormed).c_str());
        sources.Add(write(wellFormed).c_str());
        ASSERT_EQ(sources.GetCount(), 2);
        const _stMatchSource& s = sources.GetAt(0);
        EXPECT_EQ(int(s.key), 255);
        EXPECT_EQ(s.black_count, 2);
        EXPECT_EQ(s.white_count, 4);
        EXPECT_EQ(s.threshold, -2);
        EXPECT_EQ(s.width, 3);
        EXPECT_EQ(s.height, 2);
        EXPECT_NE(s.data, sources[1].data);
        const CMatchSrcArray copy = sources;
        EXPECT_EQ(copy.records()[0].data, s.data);
        pixels = s.data;
        sources.Remove(0);
    }
    EXPECT_TRUE(std::equal(wellFormed.begin() + 21, wellFormed.end(), pixels));
}

TEST_F(MatchSourceFiles, ShortAndHostileFilesAppendNothing)
{
    CMatchSrcArray sources;
    for (std::size_t n = 0; n < wellFormed.size(); ++n)
        sources.Add(write({wellFormed.begin(), wellFormed.begin() + std::ptrdiff_t(n)}).c_str());
    for (const auto& [width, height] : std::initializer_list<std::pair<LONG, LONG>>{
             {-1, 2}, {3, -2}, {-3, -2}, {INT32_MAX, INT32_MAX}, {65536, 65536}, {INT32_MIN, 0}, {7, 1}})
        sources.Add(write(withSize(width, height)).c_str());
    sources.Add("/nowhere/at/all.mcs");
    sources.Add(m_folder.string().c_str());
    sources.Add(nullptr);
    EXPECT_EQ(sources.GetCount(), 0);
    for (const auto& [width, height] : std::initializer_list<std::pair<LONG, LONG>>{{0, 5}, {INT32_MAX, 0}}) {
        sources.Add(write(withSize(width, height)).c_str());
        const _stMatchSource& last = sources[sources.GetCount() - 1];
        EXPECT_EQ(last.width, width);
        EXPECT_EQ(last.data, nullptr);
    }
    EXPECT_EQ(sources.GetCount(), 2);
    sources.Add(write(withSize(5, 1)).c_str()); // a byte follows the pixels
    EXPECT_EQ(sources.GetCount(), 3);
}

TEST_F(MatchSourceFiles, TheWriterMakesTheLayoutThatTheReaderTakes)
{
    const std::string path = (m_folder / "written.ocs").string();
    std::vector<std::uint8_t> pixels(wellFormed.begin() + 21, wellFormed.end());
    _stMatchSource source{255, -2, 2, 4, 3, 2, pixels.data()};
    ASSERT_TRUE(ormalux::writeMatchSource(path.c_str(), source));
    EXPECT_EQ(ormalux::readFile(path.c_str()), wellFormed);
    source.width = 0;
    source.data = nullptr;
    EXPECT_TRUE(ormalux::writeMatchSource(path.c_str(), source));
    EXPECT_EQ(ormalux::fileLength(path.c_str()), 21u);
    source.width = 3; // pixels that are not there
    EXPECT_FALSE(ormalux::writeMatchSource(path.c_str(), source));
    source.height = -1;
    EXPECT_FALSE(ormalux::writeMatchSource(path.c_str(), source));
    EXPECT_FALSE(ormalux::writeMatchSource(nullptr, source));
    EXPECT_EQ(ormalux::fileLength(path.c_str()), 21u);
}

TEST(MatchResultArray, TheEightValueAddLeavesTheSlotsThreshold)
{
    CMatchResultArray results;
    results.Add(1, 2, 3, 4, 5, 6, 0.5f, 0.25f);
    EXPECT_EQ(results[0].threshold, 0);
    results.Add(1, 2, 3, 4, 5, 6, 0.5f, 0.25f, 77);
    results.RemoveAll();
    results.Add(9, 9, 9, 9, 9, 9, 0.f, 0.f);
    results.Add(9, 9, 9, 9, 9, 9, 0.f, 0.f);
    EXPECT_EQ(results[0].threshold, 0);
    EXPECT_EQ(results[1].threshold, 77);
    EXPECT_EQ(results[1].left, 9);
    results + results;
    EXPECT_EQ(results.GetCount(), 4);
    EXPECT_EQ(results[3].threshold, 77);
    results[4].left = 5; // the room is exactly the count
    EXPECT_EQ(results[4].left, 0);
}
