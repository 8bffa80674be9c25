#include "platform/File.h"

#include "platform/Path.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

class FileTest : public ::testing::Test
{
protected:
    void SetUp() override { fs::create_directories(ormalux::nativePath(folder.c_str())); }
    void TearDown() override { fs::remove_all(ormalux::nativePath(folder.c_str())); }

    std::size_t entries() const
    {
        return std::size_t(std::distance(fs::directory_iterator(ormalux::nativePath(folder.c_str())), {}));
    }

    // A folder of Korean name: paths are UTF-8 everywhere.
    std::string folder = [] {
        const std::u8string base = (fs::temp_directory_path() / "ormalux-file").u8string();
        return std::string(base.begin(), base.end()) + "-검사-" +
               ::testing::UnitTest::GetInstance()->current_test_info()->name();
    }();
    const std::vector<std::uint8_t> text{'h', 'e', 'l', 'l', 'o'};
};

} // namespace

TEST_F(FileTest, WritesAndReadsBackUnderAKoreanName)
{
    const std::string path = folder + "/부품.bin";
    ASSERT_TRUE(ormalux::writeFile(path.c_str(), text));
    EXPECT_EQ(ormalux::fileLength(path.c_str()), 5u);
    EXPECT_EQ(ormalux::readFile(path.c_str()), text);
    EXPECT_EQ(ormalux::readFile(path.c_str(), 2), (std::vector<std::uint8_t>{'h', 'e'}));
    EXPECT_EQ(entries(), 1u) << "a helper file was left behind";
}

TEST_F(FileTest, ReplacesAsAWholeAndLeavesNothingWhenItFails)
{
    const std::string path = folder + "/a.bin";
    ASSERT_TRUE(ormalux::writeFile(path.c_str(), std::vector<std::uint8_t>(1000, 7)));
    ASSERT_TRUE(ormalux::writeFile(path.c_str(), text));
    EXPECT_EQ(ormalux::readFile(path.c_str()), text);

    fs::create_directory(ormalux::nativePath((folder + "/d").c_str()));
    EXPECT_FALSE(ormalux::writeFile((folder + "/d").c_str(), text));
    EXPECT_FALSE(ormalux::writeFile((folder + "/missing/a.bin").c_str(), text));
    EXPECT_FALSE(ormalux::writeFile("", text));
    EXPECT_FALSE(ormalux::writeFile(nullptr, text));
    EXPECT_EQ(entries(), 2u);
}

TEST_F(FileTest, RefusesWhatIsNotARegularFile)
{
    EXPECT_FALSE(ormalux::readFile(folder.c_str()));
    EXPECT_FALSE(ormalux::readFile((folder + "/none").c_str()));
    EXPECT_FALSE(ormalux::readFile(nullptr));
#if !defined(_WIN32)
    EXPECT_FALSE(ormalux::readFile("/dev/zero")) << "would never end";
    const std::vector<std::uint8_t> big(1 << 20, 1);
    EXPECT_FALSE(ormalux::writeFile("/dev/full", big));
#endif
}
