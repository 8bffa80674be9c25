#include "cli/SharedModule.h"

// The platform's own headers stay in this file: they know other types by the interface's names.
#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace ormalux::cli {

#if defined(_WIN32)

void* openModule(const std::filesystem::path& file, std::string& why)
{
    void* const module =
        reinterpret_cast<void*>(LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
    if (!module)
        why = "system error " + std::to_string(GetLastError());
    return module;
}

void* moduleFunction(void* module, const char* name)
{
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

#else

void* openModule(const std::filesystem::path& file, std::string& why)
{
    void* const module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module)
        why = dlerror();
    return module;
}

void* moduleFunction(void* module, const char* name)
{
    return dlsym(module, name);
}

#endif

} // namespace ormalux::cli
