#include "tools/SourceFile.h"

#include "array/MatchSourceFile.h"
#include "image/VisionImage.h"
#include "platform/File.h"
#include "tools/Program.h"

#include <map>
#include <mutex>
#include <new>

namespace ormalux {

namespace {

/// The sources of a process never give their pixels back: a file is loaded again only when its bytes are
/// others.
class SourceCache
{
public:
    std::optional<_stMatchSource> load(const std::string& path)
    {
        const auto bytes = readFile(path.c_str());
        if (!bytes)
            return std::nullopt;
        const std::lock_guard guard(m_lock);
        const auto known = m_entries.find(path);
        if (known != m_entries.end() && known->second.bytes == *bytes)
            return known->second.source;
        CMatchSrcArray one(1);
        one.Add(path.c_str());
        if (one.GetCount() == 0)
            return std::nullopt;
        m_entries[path] = {*bytes, one.GetAt(0)};
        return one.GetAt(0);
    }

private:
    struct Entry
    {
        std::vector<std::uint8_t> bytes;
        _stMatchSource source;
    };
    std::mutex m_lock;
    std::map<std::string, Entry> m_entries;
};

SourceCache& cache()
{
    static SourceCache sources;
    return sources;
}

} // namespace

bool writeSource(const std::string& path, const CKestImage& region, int level, std::uint8_t key)
{
    CKestImage image(region);
    image.Threshold(level);
    _stMatchSource source;
    source.key = key;
    source.threshold = level;
    source.black_count = LONG(image.GetGrayLevelCount(0));
    source.white_count = LONG(image.GetGrayLevelCount(255));
    source.width = image.GetWidth();
    source.height = image.GetHeight();
    source.data = image.view().pixels;
    return !image.IsEmpty() && writeMatchSource(path.c_str(), source);
}

std::optional<_stMatchSource> loadSource(const std::string& path)
try {
    return cache().load(path);
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

LoadedSources loadSources(const std::vector<std::string>& paths)
{
    LoadedSources loaded;
    for (const std::string& path : paths) {
        const auto source = loadSource(path);
        const auto slot = source ? loaded.sources.appendForOverwrite(1) : std::span<_stMatchSource>{};
        if (slot.empty())
            loaded.refused.push_back(path);
        else
            slot[0] = *source;
    }
    return loaded;
}

CString scriptSourceLines(const std::vector<std::string>& paths)
{
    CString lines;
    for (const std::string& path : paths)
        lines += "arMatchSrc.Add(\"" + path + "\");\n"; // the path as it is: the operator's own text
    return lines;
}

CString programSourceLines(const std::vector<std::string>& paths)
{
    CString lines = "    CMatchSrcArray sources;\n";
    for (const std::string& path : paths)
        lines += "    sources.Add(" + literal(path) + ");\n";
    return lines;
}

} // namespace ormalux
