// Loads and unloads the processing module as a host with plug-ins does: a thousand times, on machines with
// many processors, and with memory that is short.

#include "tests/support/FailingMemory.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <sched.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

int pretendedProcessors = 0;

} // namespace

/// What the module asks for the number of processors.
extern "C" int sched_getaffinity(pid_t process, std::size_t size, cpu_set_t* set) noexcept
{
    if (pretendedProcessors == 0)
        return syscall(SYS_sched_getaffinity, process, size, set) < 0 ? -1 : 0;
    CPU_ZERO_S(size, set);
    for (int i = 0; i < pretendedProcessors; ++i)
        CPU_SET_S(i, size, set);
    return 0;
}

namespace {

long field(const char* name)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind(name, 0) == 0)
            return std::stol(line.substr(line.find(':') + 1));
    return -1;
}

long openHandles()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

void cycle(int times)
{
    for (int i = 0; i < times; ++i) {
        void* module = dlopen(ORMALUX_MODULE, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(module, nullptr) << dlerror();
        ASSERT_EQ(dlclose(module), 0);
        ASSERT_EQ(dlopen(ORMALUX_MODULE, RTLD_NOW | RTLD_NOLOAD), nullptr) << "the module stayed";
    }
}

template <class Member>
Member memberOf(void* module, const char* name)
{
    return reinterpret_cast<Member>(dlsym(module, name));
}

/// Thresholds a square picture with the module's gray image; whether every pixel came out right.
bool thresholdsRight(void* module, int side)
{
    const auto make = memberOf<void (*)(void*)>(module, "_ZN10CKestImageC1Ev");
    const auto link =
        memberOf<void (*)(void*, int, int, unsigned char*)>(module, "_ZN10CKestImage15SetImagePtrLinkEiiPh");
    const auto threshold = memberOf<void (*)(void*, int)>(module, "_ZN10CKestImage9ThresholdEi");
    const auto end = memberOf<void (*)(void*)>(module, "_ZN10CKestImageD1Ev");
    if (!make || !link || !threshold || !end)
        return false;
    std::vector<unsigned char> pixels(std::size_t(side) * std::size_t(side));
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<unsigned char>(i * 31);
    alignas(16) unsigned char image[256];
    make(image);
    link(image, side, side, pixels.data());
    threshold(image, 128);
    end(image);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        if (pixels[i] != (static_cast<unsigned char>(i * 31) > 128 ? 255 : 0))
            return false;
    return true;
}

/// Whether a child process does it within ten seconds: body() is true there.
template <class Body>
bool childDoes(Body body)
{
    const pid_t child = fork();
    if (child == 0) {
        alarm(10);
        _exit(body() ? 0 : 1);
    }
    int status = -1;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

TEST(Module, StartsThreadsForAJobAndUnloadsEndThem)
{
    for (const int processors : {64, 192}) {
        pretendedProcessors = processors;
        const long before = field("Threads");
        void* module = dlopen(ORMALUX_MODULE, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(module, nullptr) << dlerror();
        EXPECT_EQ(field("Threads"), before) << "no job, no thread";
        EXPECT_TRUE(thresholdsRight(module, 4096));
        EXPECT_GT(field("Threads"), before);
        EXPECT_LT(field("Threads"), before + 64) << "as many as the job is worth";
        dlclose(module);
        EXPECT_EQ(field("Threads"), before);
    }
    pretendedProcessors = 0;
}

TEST(Module, LoadsOrIsRefusedWhicheverAllocationFails)
{
    using namespace testing_support;
    for (const Fails how : {Fails::Once, Fails::FromThenOn}) {
        int loaded = 0;
        long number = 0;
        for (bool more = true; more; ++number) {
            int ends[2];
            ASSERT_EQ(pipe(ends), 0);
            ASSERT_TRUE(childDoes([&] {
                char outcome[2];
                void* module;
                {
                    const FailingMemory failing(number, how);
                    module = dlopen(ORMALUX_MODULE, RTLD_NOW | RTLD_LOCAL);
                    outcome[0] = failing.hasFailed();
                }
                outcome[1] = module != nullptr;
                return write(ends[1], outcome, 2) == 2 &&
                       (!module || (thresholdsRight(module, 256) && dlclose(module) == 0));
            })) << "allocation "
                << number;
            char outcome[2] = {};
            ASSERT_EQ(read(ends[0], outcome, 2), 2);
            close(ends[0]);
            close(ends[1]);
            more = outcome[0] != 0;
            loaded += outcome[0] && outcome[1];
        }
        EXPECT_GT(number, 10);
        if (how == Fails::Once)
            EXPECT_GT(loaded, 0) << "some failure is the module's own";
    }
}

TEST(Module, OpensTheColourTableBesideItUnlessThatIsNoFile)
{
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / ("ormalux-module-" + std::to_string(getpid()));
    const fs::path table = folder / "gs9.06/lib/gsenv.bin", module = folder / "module.so";
    fs::create_directories(table.parent_path());
    fs::copy_file(ORMALUX_MODULE, module);
    const auto loadOpens = [&](long handles) {
        return childDoes([&] {
            const long before = openHandles();
            return dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL) && openHandles() == before + handles;
        });
    };
    EXPECT_TRUE(loadOpens(0));
    std::ofstream(table) << "records";
    EXPECT_TRUE(loadOpens(1));
    fs::remove(table);
    ASSERT_EQ(mkfifo(table.c_str(), 0600), 0);
    EXPECT_TRUE(loadOpens(0)) << "waited for a pipe's other end";
    fs::remove_all(folder);
}

TEST(Module, AThousandLoadsLeaveNothingBehind)
{
    cycle(100);
    const long threads = field("Threads"), handles = openHandles(), memory = field("VmRSS");
    cycle(1000);
    EXPECT_EQ(field("Threads"), threads);
    EXPECT_EQ(openHandles(), handles);
    EXPECT_LT(field("VmRSS") - memory, 1024) << "kB";
}
