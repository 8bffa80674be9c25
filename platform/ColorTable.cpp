#include "platform/Path.h"
#include "platform/Process.h"

#include <cstdio>

#if !defined(_WIN32)
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace ormalux {

namespace {

/// Null unless the path names a regular file: to open anything else may wait for ever.
std::FILE* openRegular(const char* path)
{
#if defined(_WIN32)
    return _wfopen(nativePath(path).c_str(), L"rb");
#else
    const int file = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0)
        return nullptr;
    struct stat status;
    std::FILE* stream = fstat(file, &status) == 0 && S_ISREG(status.st_mode) ? fdopen(file, "rb") : nullptr;
    if (!stream)
        close(file);
    return stream;
#endif
}

/// The colour table beside the module: opened when the module loads and kept open until it unloads, so that
/// an installation's table is neither replaced nor removed while it is in use. Nothing reads its records
/// yet: converted colours come from full black generation.
class ColorTable
{
public:
    ColorTable()
    {
        static const char here = 0;
        try {
            const std::string folder = moduleFolder(&here);
            if (!folder.empty())
                m_file = openRegular((folder + "/gs9.06/lib/gsenv.bin").c_str());
        } catch (...) { // too little memory for the path: no table
        }
    }
    ~ColorTable()
    {
        if (m_file)
            std::fclose(m_file);
    }

private:
    std::FILE* m_file = nullptr;
};

const ColorTable colorTable;

} // namespace

} // namespace ormalux
