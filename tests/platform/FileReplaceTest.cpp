#include "platform/File.h"
#include "platform/FileTarget.h"
#include "platform/Path.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <utility>

#if !defined(_WIN32)
#include <csignal>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

namespace {

class FileReplaceTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }

    std::string at(const std::string& name) const { return (folder / name).string(); }
    static bool write(const std::string& path, const Bytes& bytes, std::error_code* why = nullptr)
    {
        return ormalux::writeFile(path.c_str(), bytes, why);
    }
    static Bytes read(const std::string& path) { return ormalux::readFile(path.c_str()).value_or(Bytes()); }
    std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(folder))
            found.push_back(entry.path().filename().string());
        return found;
    }

    const fs::path folder =
        fs::temp_directory_path() /
        (std::string("ormalux-replace-") + ::testing::UnitTest::GetInstance()->current_test_info()->name());
};

/// What writers that ended leave: long ago where only age tells.
void leaveBehind(const fs::path& path)
{
    std::ofstream(path) << "half";
    fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(1));
}

} // namespace

TEST_F(FileReplaceTest, RemovesTwoHundredLeftoversAndSaves)
{
    for (unsigned slot = 0; slot < 200; ++slot)
        leaveBehind(folder / ormalux::besideName("a.bin", slot));
    leaveBehind(folder / ormalux::besideName("other.bin", 0));
    ASSERT_TRUE(write(at("a.bin"), {1, 2, 3}));
    EXPECT_EQ(read(at("a.bin")), (Bytes{1, 2, 3}));
    EXPECT_THAT(names(), ::testing::UnorderedElementsAre("a.bin", ormalux::besideName("other.bin", 0)));
}

TEST_F(FileReplaceTest, WritersAtTheSameTimeLeaveOneWholeFile)
{
    std::vector<std::thread> writers;
    for (int i = 0; i < 4; ++i)
        writers.emplace_back([this, i] {
            for (int turn = 0; turn < 50; ++turn)
                write(at("a.bin"), Bytes(50'000, std::uint8_t(i)));
        });
    for (std::thread& writer : writers)
        writer.join();
    const Bytes bytes = read(at("a.bin"));
    ASSERT_EQ(bytes.size(), 50'000u);
    EXPECT_EQ(bytes, Bytes(50'000, bytes[0]));
    EXPECT_THAT(names(), ::testing::ElementsAre("a.bin"));
}

#if !defined(_WIN32)

namespace {

mode_t modeOf(const std::string& path)
{
    struct stat found
    {
    };
    return ::stat(path.c_str(), &found) == 0 ? found.st_mode & 07777 : 0;
}

/// Runs the body in a process of its own; its exit code, or minus the signal that ended it.
template <class Body>
int inChild(Body body)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(body());
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

} // namespace

TEST_F(FileReplaceTest, WritesANameAsLongAsNamesMayBe)
{
    const std::string path = at(std::string(255, 'n'));
    ASSERT_TRUE(write(path, {1}));
    ASSERT_TRUE(write(path, {2}));
    EXPECT_EQ(read(path), Bytes{2});
    std::error_code why;
    EXPECT_FALSE(write(at(std::string(256, 'n')), {1}, &why));
    EXPECT_STREQ(ormalux::writeFailure(why), "its name is too long");
    EXPECT_EQ(names().size(), 1u);
}

TEST_F(FileReplaceTest, KilledWritersLeaveAWholeFileAndTheNextSaveCleansUp)
{
    const std::string path = at("a.bin");
    ASSERT_TRUE(write(path, Bytes(300'000, 0)));
    bool left = false;
    for (int round = 0; round < 120; ++round) {
        const pid_t child = ::fork();
        if (child == 0)
            for (std::uint8_t value = 0;; ++value)
                write(path, Bytes(300'000, value));
        std::this_thread::sleep_for(std::chrono::microseconds(500 + 37 * round));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const Bytes bytes = read(path);
        ASSERT_EQ(bytes.size(), 300'000u);
        ASSERT_EQ(bytes, Bytes(300'000, bytes[0]));
        left = left || names().size() > 1;
        EXPECT_LE(names().size(), 2u) << "every writer cleans up behind the one before";
    }
    EXPECT_TRUE(left) << "no writer was caught at work";
    ASSERT_TRUE(write(path, {1}));
    EXPECT_THAT(names(), ::testing::ElementsAre("a.bin"));
}

TEST_F(FileReplaceTest, LeavesAWriterAtWorkAlone)
{
    const std::string path = at("a.bin");
    int part = 0;
    const Bytes slow(1000, 1), fast(10, 2);
    ASSERT_TRUE(ormalux::writeFileInParts(path.c_str(), [&]() -> std::span<const std::uint8_t> {
        if (part == 1) {
            EXPECT_TRUE(write(path, fast));
            EXPECT_EQ(read(path), fast);
        }
        return part++ < 2 ? std::span<const std::uint8_t>(slow) : std::span<const std::uint8_t>();
    }));
    EXPECT_EQ(read(path), Bytes(2000, 1));
    EXPECT_EQ(names().size(), 1u);
}

TEST_F(FileReplaceTest, ASecretFileStaysSecretWhileItIsReplaced)
{
    const std::string path = at("a.bin");
    const mode_t before = ::umask(022);
    ASSERT_TRUE(write(path, {1}));
    EXPECT_EQ(modeOf(path), 0644u);
    for (const mode_t mode : {mode_t(0600), mode_t(0640), mode_t(0755)}) {
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        bool asked = false;
        const Bytes bytes{2};
        ASSERT_TRUE(ormalux::writeFileInParts(path.c_str(), [&]() -> std::span<const std::uint8_t> {
            EXPECT_EQ(modeOf(at(ormalux::besideName("a.bin", 0))), 0600u);
            return std::exchange(asked, true) ? std::span<const std::uint8_t>() : bytes;
        }));
        EXPECT_EQ(modeOf(path), mode);
    }
    ::umask(before);
}

TEST_F(FileReplaceTest, LinksStayAndTheirTargetIsReplaced)
{
    fs::create_directory(folder / "sub");
    ASSERT_TRUE(write(at("sub/t.bin"), {1}));
    fs::create_symlink("t.bin", folder / "sub/l1.bin");
    fs::create_symlink("sub/l1.bin", folder / "l2.bin");
    fs::create_symlink("sub/new.bin", folder / "dangling.bin");
    fs::create_symlink("ring.bin", folder / "ring.bin");
    fs::create_hard_link(folder / "sub/t.bin", folder / "hard.bin");
    ASSERT_TRUE(write(at("l2.bin"), {2}));
    ASSERT_TRUE(write(at("dangling.bin"), {3}));
    EXPECT_FALSE(write(at("ring.bin"), {4}));
    EXPECT_TRUE(fs::is_symlink(folder / "l2.bin") && fs::is_symlink(folder / "sub/l1.bin"));
    EXPECT_EQ(read(at("sub/t.bin")), Bytes{2});
    EXPECT_EQ(read(at("hard.bin")), Bytes{1}) << "another name keeps the old bytes";
    EXPECT_EQ(read(at("sub/new.bin")), Bytes{3});
}

TEST_F(FileReplaceTest, AFullDiskLeavesTheOldFileAndNothingElse)
{
    const std::string path = at("a.bin");
    ASSERT_TRUE(write(path, Bytes(100, 7)));
    EXPECT_EQ(inChild([&] {
                  const rlimit limit{4096, 4096};
                  ::setrlimit(RLIMIT_FSIZE, &limit);
                  std::error_code why;
                  const bool failed = !write(path, Bytes(100'000, 8), &why);
                  return failed && why == std::errc::file_too_large && write(path, Bytes(200, 9)) ? 0 : 1;
              }),
              0)
        << "neither a signal nor a half file";
    EXPECT_EQ(read(path), Bytes(200, 9));
    EXPECT_EQ(names().size(), 1u);

    std::error_code why;
    EXPECT_FALSE(write("/dev/full", {1}, &why));
    EXPECT_STREQ(ormalux::writeFailure(why), "the disk is full");
    EXPECT_TRUE(write("/dev/null", {1}));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(FileReplaceTest, PipesAreWrittenIntoAndAReaderThatGoesIsAFailure)
{
    const std::string path = at("pipe");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    Bytes got(5);
    std::thread reader([&] {
        std::ifstream pipe(path, std::ios::binary);
        pipe.read(reinterpret_cast<char*>(got.data()), 5);
    });
    EXPECT_TRUE(write(path, {1, 2, 3, 4, 5}));
    reader.join();
    EXPECT_EQ(got, (Bytes{1, 2, 3, 4, 5}));
    EXPECT_TRUE(fs::is_fifo(path));

    std::thread leaver([&] { ::close(::open(path.c_str(), O_RDONLY)); });
    std::error_code why;
    EXPECT_FALSE(write(path, Bytes(1 << 20, 1), &why));
    EXPECT_EQ(why, std::errc::broken_pipe);
    leaver.join();
}

TEST_F(FileReplaceTest, StandardOutputGoesOnWhereItStands)
{
    EXPECT_EQ(inChild([&] {
                  const int out = ::open(at("out").c_str(), O_RDWR | O_CREAT, 0644);
                  ::dup2(out, STDOUT_FILENO);
                  const bool first = ::write(STDOUT_FILENO, "ab", 2) == 2 && write("/dev/stdout", {'c'});
                  return first && ::write(STDOUT_FILENO, "d", 1) == 1 ? 0 : 1;
              }),
              0);
    EXPECT_EQ(read(at("out")), (Bytes{'a', 'b', 'c', 'd'}));
}

TEST_F(FileReplaceTest, RefusesAFileOrFolderThatMayNotBeWritten)
{
    ASSERT_TRUE(write(at("a.bin"), {1}));
    const auto failsAsAnybody = [&] {
        return inChild([&] { // the administrator may write everything
            if (::geteuid() == 0 && ::setuid(65534) != 0)
                return 1;
            std::error_code why;
            return !write(at("a.bin"), {2}, &why) && why == std::errc::permission_denied ? 0 : 2;
        });
    };
    fs::permissions(folder, fs::perms::all);
    ASSERT_EQ(::chmod(at("a.bin").c_str(), 0444), 0);
    EXPECT_EQ(failsAsAnybody(), 0) << "a file that may not be written is not replaced";
    ASSERT_EQ(::chmod(at("a.bin").c_str(), 0666), 0);
    ASSERT_EQ(::chmod(folder.c_str(), 0555), 0);
    EXPECT_EQ(failsAsAnybody(), 0) << "nothing is written in place, where it could break off";
    ASSERT_EQ(::chmod(folder.c_str(), 0755), 0);
    EXPECT_EQ(read(at("a.bin")), Bytes{1});
}

#endif
