// Loads and unloads the processing module a thousand times, as a host with plug-ins does.

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <filesystem>
#include <fstream>
#include <string>

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

} // namespace

TEST(Module, LoadsMakeTheWorkersAndUnloadsEndThem)
{
    const long before = field("Threads");
    void* module = dlopen(ORMALUX_MODULE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << dlerror();
    EXPECT_GE(field("Threads"), before + 20) << "twenty kinds, a worker a processor each";
    dlclose(module);
    EXPECT_EQ(field("Threads"), before);
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
