#include "platform/Path.h"
#include "platform/Process.h"

#include <cstdio>
#include <memory>

namespace ormalux {

namespace {

/// The colour table beside the module: opened when the module loads and kept open until it unloads, so that
/// an installation's table is neither replaced nor removed while stations use it. Nothing reads its records
/// yet: converted colours come from full black generation.
class ColorTable
{
public:
    ColorTable()
    {
        static const char here = 0;
        const std::string folder = moduleFolder(&here);
        if (folder.empty())
            return;
        const std::string path = folder + "/gs9.06/lib/gsenv.bin";
#if defined(_WIN32)
        m_file = _wfopen(nativePath(path.c_str()).c_str(), L"rb");
#else
        m_file = std::fopen(path.c_str(), "rbe");
#endif
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
