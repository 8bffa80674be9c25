#include "platform/File.h"

#include "platform/Path.h"

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

namespace ormalux {

namespace fs = std::filesystem;

namespace {

struct Closer
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using Stream = std::unique_ptr<std::FILE, Closer>;

Stream open(const fs::path& path, bool write)
{
#if defined(_WIN32)
    return Stream(_wfopen(path.c_str(), write ? L"wbx" : L"rb"));
#else
    return Stream(std::fopen(path.c_str(), write ? "wbxe" : "rbe"));
#endif
}

/// A name beside the target that no other writer of this process takes; exclusive creation settles the rest.
fs::path besideName(const fs::path& target, int attempt)
{
    static std::atomic<unsigned> serial{0};
    fs::path name = target;
    name += ".new" + std::to_string(serial.fetch_add(1)) + "-" + std::to_string(attempt);
    return name;
}

Stream createBeside(const fs::path& target, fs::path& created)
{
    for (int attempt = 0; attempt < 100; ++attempt) {
        created = besideName(target, attempt);
        if (Stream stream = open(created, true))
            return stream;
        std::error_code error;
        if (!fs::exists(created, error))
            break; // not a clash of names: the folder cannot be written
    }
    return nullptr;
}

using PartSource = std::function<std::span<const std::uint8_t>()>;

bool writeAll(std::FILE* stream, const PartSource& nextPart)
{
    // Parts are large; the stream's own buffer would only copy them once more.
    std::setvbuf(stream, nullptr, _IONBF, 0);
    for (auto part = nextPart(); !part.empty(); part = nextPart())
        if (std::fwrite(part.data(), 1, part.size(), stream) != part.size())
            return false;
    return true;
}

/// Devices and pipes cannot be replaced; they are written as they stand.
bool writeThrough(const fs::path& target, const PartSource& nextPart)
{
#if defined(_WIN32)
    Stream stream(_wfopen(target.c_str(), L"wb"));
#else
    Stream stream(std::fopen(target.c_str(), "wbe"));
#endif
    return stream && writeAll(stream.get(), nextPart) && std::fflush(stream.get()) == 0;
}

} // namespace

fs::path nativePath(const char* path)
{
    if (!path)
        return {};
    try {
#if defined(_WIN32)
        return fs::path(reinterpret_cast<const char8_t*>(path));
#else
        return fs::path(path);
#endif
    } catch (...) {
        return {};
    }
}

std::optional<std::uint64_t> fileLength(const char* path)
{
    const fs::path native = nativePath(path);
    std::error_code error;
    if (native.empty() || !fs::is_regular_file(native, error))
        return std::nullopt;
    const std::uint64_t length = fs::file_size(native, error);
    if (error)
        return std::nullopt;
    return length;
}

std::optional<std::vector<std::uint8_t>> readFile(const char* path, std::uint64_t limit)
{
    const auto length = fileLength(path);
    if (!length)
        return std::nullopt;
    const Stream stream = open(nativePath(path), false);
    if (!stream)
        return std::nullopt;
    try {
        std::vector<std::uint8_t> bytes(std::size_t(std::min<std::uint64_t>(*length, limit)));
        std::setvbuf(stream.get(), nullptr, _IONBF, 0);
        const std::size_t got = bytes.empty() ? 0 : std::fread(bytes.data(), 1, bytes.size(), stream.get());
        if (std::ferror(stream.get()))
            return std::nullopt;
        bytes.resize(got);
        return bytes;
    } catch (...) {
        return std::nullopt;
    }
}

FileReader::FileReader(const char* path)
{
    const auto length = fileLength(path);
    if (!length)
        return;
    m_stream.reset(open(nativePath(path), false).release());
    m_length = *length;
    if (m_stream)
        std::setvbuf(m_stream.get(), nullptr, _IONBF, 0);
}

bool FileReader::read(std::uint64_t position, std::span<std::uint8_t> bytes)
{
    if (!m_stream || position > m_length || bytes.size() > m_length - position)
        return false;
#if defined(_WIN32)
    if (position != m_position && _fseeki64(m_stream.get(), std::int64_t(position), SEEK_SET) != 0)
        return false;
#else
    if (position != m_position && fseeko(m_stream.get(), off_t(position), SEEK_SET) != 0)
        return false;
#endif
    const std::size_t got = std::fread(bytes.data(), 1, bytes.size(), m_stream.get());
    m_position = position + got;
    return got == bytes.size();
}

bool writeFileInParts(const char* path, const PartSource& nextPart)
{
    try {
        fs::path target = nativePath(path);
        std::error_code error;
        if (target.empty() || fs::is_directory(target, error))
            return false;
        if (fs::exists(target, error) && !fs::is_regular_file(target, error))
            return writeThrough(target, nextPart);
        if (fs::is_symlink(target, error)) // the file that is pointed at is replaced, not the link
            target = fs::canonical(target, error);
        fs::path created;
        Stream stream = createBeside(target, created);
        if (!stream)
            return false;
        bool whole = writeAll(stream.get(), nextPart);
        whole = std::fclose(stream.release()) == 0 && whole;
        if (whole) {
            const auto old = fs::status(target, error);
            if (!error && fs::exists(old))
                fs::permissions(created, old.permissions(), error);
            fs::rename(created, target, error);
            if (!error)
                return true;
        }
        fs::remove(created, error);
        return false;
    } catch (...) {
        return false;
    }
}

bool writeFile(const char* path, std::span<const std::span<const std::uint8_t>> parts)
{
    return writeFileInParts(path, [&]() -> std::span<const std::uint8_t> {
        while (!parts.empty() && parts.front().empty())
            parts = parts.subspan(1);
        if (parts.empty())
            return {};
        const auto part = parts.front();
        parts = parts.subspan(1);
        return part;
    });
}

bool writeFile(const char* path, std::span<const std::uint8_t> bytes)
{
    const std::span<const std::uint8_t> parts[] = {bytes};
    return writeFile(path, parts);
}

} // namespace ormalux
