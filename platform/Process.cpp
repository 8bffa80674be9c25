#include "platform/Process.h"

#include <filesystem>
#include <thread>

// The platform's own headers stay in this file: they know other types by the interface's names.
#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#include <link.h>
#include <sched.h>
#endif

namespace ormalux {

int processorsAllowed()
{
#if defined(_WIN32)
    DWORD_PTR allowed = 0, present = 0;
    if (GetProcessAffinityMask(GetCurrentProcess(), &allowed, &present) && allowed)
        return __builtin_popcountll(allowed);
#else
    cpu_set_t set;
    CPU_ZERO(&set);
    if (sched_getaffinity(0, sizeof set, &set) == 0 && CPU_COUNT(&set) > 0)
        return CPU_COUNT(&set);
#endif
    const unsigned n = std::thread::hardware_concurrency();
    return n > 0 ? int(n) : 1;
}

#if !defined(_WIN32)
namespace {

// A program goes by what it was called as, which one found along PATH is not a path at all.
bool isProgram(const void* address)
{
    Dl_info info{};
    link_map* module = nullptr;
    return dladdr1(address, &info, reinterpret_cast<void**>(&module), RTLD_DL_LINKMAP) && module &&
           module->l_name && !*module->l_name;
}

} // namespace
#endif

std::string moduleFolder(const void* address)
{
    try {
#if defined(_WIN32)
        HMODULE module = nullptr;
        wchar_t name[4096];
        const DWORD how =
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
        if (!GetModuleHandleExW(how, static_cast<LPCWSTR>(address), &module))
            return {};
        const DWORD length = GetModuleFileNameW(module, name, DWORD(std::size(name)));
        if (length == 0 || length == std::size(name))
            return {};
        const std::u8string folder = std::filesystem::path(name).parent_path().u8string();
        return std::string(folder.begin(), folder.end());
#else
        Dl_info info{};
        if (!dladdr(address, &info) || !info.dli_fname)
            return {};
        std::error_code error;
        const std::filesystem::path path = isProgram(address)
                                               ? std::filesystem::read_symlink("/proc/self/exe", error)
                                               : std::filesystem::absolute(info.dli_fname, error);
        return error ? std::string() : path.parent_path().string();
#endif
    } catch (...) {
        return {};
    }
}

} // namespace ormalux
