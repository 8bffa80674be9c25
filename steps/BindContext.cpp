#include "steps/BindContext.h"

#include "platform/File.h"
#include "platform/Path.h"
#include "steps/PictureLoader.h"

#include <algorithm>
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

std::optional<_stMatchSource> cachedSource(const std::string& path)
try {
    return cache().load(path);
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

std::string BindContext::path(const std::string& name) const
{
    const std::filesystem::path path = nativePath(name.c_str());
    if (m_folder.empty() || path.is_absolute())
        return name;
    const std::u8string joined = (nativePath(m_folder.c_str()) / path).u8string();
    return std::string(joined.begin(), joined.end());
}

std::vector<std::string> BindContext::sourceFiles(const std::vector<std::string>& names, const char* ending)
{
    std::vector<std::string> files;
    for (const std::string& name : names) {
        const std::string file = path(name);
        std::error_code error;
        if (!std::filesystem::is_directory(nativePath(file.c_str()), error)) {
            files.push_back(file);
            continue;
        }
        std::vector<std::string> inside;
        for (const auto& entry : std::filesystem::directory_iterator(nativePath(file.c_str()), error))
            if (entry.path().extension() == ending) {
                const std::u8string found = entry.path().u8string();
                inside.emplace_back(found.begin(), found.end());
            }
        if (inside.empty())
            fault("source", file + ": the folder holds no " + ending + " files");
        std::sort(inside.begin(), inside.end());
        files.insert(files.end(), inside.begin(), inside.end());
    }
    return files;
}

std::shared_ptr<const CKestImage> BindContext::picture(const char* field, const std::string& name)
{
    std::string why;
    auto image = loadRecipePicture(path(name), why);
    if (!image)
        fault(field, path(name) + ": " + why);
    return image;
}

CMatchSrcArray BindContext::sources(const std::vector<std::string>& names, const char* ending)
{
    CMatchSrcArray sources;
    for (const std::string& file : sourceFiles(names, ending)) {
        const auto source = cachedSource(file);
        const auto slot = source ? sources.appendForOverwrite(1) : std::span<_stMatchSource>{};
        if (slot.empty())
            fault("source", file + ": not a match source, shorter than it declares, or not to be read");
        else
            slot[0] = *source;
    }
    return sources;
}

} // namespace ormalux
