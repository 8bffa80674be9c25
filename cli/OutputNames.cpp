#include "cli/OutputNames.h"

#include "cli/Input.h"
#include "platform/Path.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace ormalux::cli {

namespace {

namespace fs = std::filesystem;

/// Tells files apart by where they really lie. Folders are resolved once each: there may be a hundred
/// thousand pictures in one.
class Places
{
public:
    /// The same text for every way to write a file's path.
    std::u8string of(const std::string& name)
    {
        const fs::path path = nativePath(name.c_str());
        std::error_code error;
        fs::path place;
        if (fs::is_symlink(path, error))
            place = fs::weakly_canonical(path, error);
        if (place.empty())
            place = folder(path.parent_path()) / path.filename();
        std::u8string text = place.lexically_normal().generic_u8string();
#if defined(_WIN32)
        std::transform(text.begin(), text.end(), text.begin(),
                       [](char8_t c) { return c >= 'A' && c <= 'Z' ? char8_t(c + 32) : c; });
#endif
        return text;
    }

private:
    const fs::path& folder(const fs::path& path)
    {
        const auto [entry, isNew] = m_folders.try_emplace(path);
        if (isNew) {
            std::error_code error;
            entry->second = fs::weakly_canonical(path.empty() ? fs::path(".") : path, error);
            if (error || entry->second.empty())
                entry->second = path;
        }
        return entry->second;
    }

    std::map<fs::path, fs::path> m_folders;
};

/// Devices and pipes are written as they stand.
bool isWrittenThrough(const std::string& name)
{
    std::error_code error;
    const fs::file_status status = fs::status(nativePath(name.c_str()), error);
    return fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

} // namespace

void checkOutputNames(const std::vector<std::string>& pictures, const std::vector<std::string>& patterns,
                      const std::vector<std::string>& otherInputs)
{
    Places places;
    std::map<std::u8string, std::string> inputs, outputs;
    if (std::all_of(patterns.begin(), patterns.end(), [](const auto& pattern) { return pattern.empty(); }))
        return;
    for (const std::vector<std::string>* names : {&pictures, &otherInputs})
        for (const std::string& name : *names)
            inputs.emplace(places.of(name), name);
    for (const std::string& picture : pictures)
        for (const std::string& pattern : patterns) {
            if (pattern.empty())
                continue;
            const std::string name = outputName(pattern, picture, pictures.size() > 1);
            if (isWrittenThrough(name))
                continue;
            const std::u8string place = places.of(name);
            if (const auto input = inputs.find(place); input != inputs.end())
                throw InputError(name + ": the output would replace the input " + input->second);
            const auto [earlier, isNew] = outputs.emplace(place, picture + " as " + name);
            if (!isNew)
                throw InputError(picture + " as " + name + ": the same output as for " + earlier->second);
        }
}

} // namespace ormalux::cli
