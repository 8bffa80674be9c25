#include "platform/Stdlib.h"

#include <gtest/gtest.h>

#if !defined(_WIN32)
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

// A program that was found along PATH knows its own name only. The child is this very test.
TEST(ModuleFolder, OfAProgramIsWhereItLiesWhateverItWasCalledAs)
{
    if (const char* folder = std::getenv("ORMALUX_TEST_FOLDER")) {
        EXPECT_EQ(CStdlib::GetInstancePath(nullptr), folder);
        return;
    }
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    const pid_t child = fork();
    if (child == 0) {
        setenv("ORMALUX_TEST_FOLDER", program.parent_path().c_str(), 1);
        if (chdir("/") == 0)
            execl(program.c_str(), program.filename().c_str(), "--gtest_filter=ModuleFolder.*", nullptr);
        _exit(2);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}
#endif
