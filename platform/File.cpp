#include "platform/File.h"

#include "platform/FileTarget.h"
#include "platform/Path.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace ormalux {

namespace fs = std::filesystem;

namespace {

struct Closer
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using Stream = std::unique_ptr<std::FILE, Closer>;

Stream openToRead(const fs::path& path)
{
#if defined(_WIN32)
    return Stream(_wfopen(path.c_str(), L"rb"));
#else
    return Stream(std::fopen(path.c_str(), "rbe"));
#endif
}

bool mayRead(const fs::path& path)
{
#if defined(_WIN32)
    return _waccess(path.c_str(), 4) == 0;
#else
    return access(path.c_str(), R_OK) == 0;
#endif
}

std::error_code writeTo(const fs::path& target, const PartSource& nextPart)
{
    if (target.empty())
        return std::make_error_code(std::errc::no_such_file_or_directory);
    std::error_code error;
    if (fs::is_directory(target, error))
        return std::make_error_code(std::errc::is_a_directory);
    return isWrittenInto(target) ? writeInto(target, nextPart) : replaceFile(target, nextPart);
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

const char* readFailure(const char* path)
{
    const fs::path native = nativePath(path);
    std::error_code error;
    const fs::file_status status = fs::status(native, error);
    if (native.empty() || !fs::status_known(status) || !fs::exists(status))
        return "no such file";
    if (fs::is_directory(status))
        return "it is a directory";
    if (!mayRead(native))
        return "permission denied";
    return fs::is_regular_file(status) ? "it cannot be read" : "it is not a regular file";
}

std::optional<std::vector<std::uint8_t>> readFile(const char* path, std::uint64_t limit)
{
    const auto length = fileLength(path);
    if (!length)
        return std::nullopt;
    const Stream stream = openToRead(nativePath(path));
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
    m_stream.reset(openToRead(nativePath(path)).release());
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

std::string besideName(const fs::path& target, unsigned slot)
{
    std::uint64_t hash = 0xcbf29ce484222325; // FNV-1a
    for (const auto c : target.native())
        hash = (hash ^ std::uint64_t(c)) * 0x100000001b3;
    char name[64];
    std::snprintf(name, sizeof name, ".ormalux-%016llx-%u.new", static_cast<unsigned long long>(hash), slot);
    return name;
}

bool writeFileInParts(const char* path, const PartSource& nextPart, std::error_code* why)
{
    std::error_code error;
    try {
        error = writeTo(nativePath(path), nextPart);
    } catch (...) {
        error = std::make_error_code(std::errc::not_enough_memory);
    }
    if (why)
        *why = error;
    return !error;
}

bool writeFile(const char* path, std::span<const std::span<const std::uint8_t>> parts, std::error_code* why)
{
    const auto next = [&]() -> std::span<const std::uint8_t> {
        while (!parts.empty() && parts.front().empty())
            parts = parts.subspan(1);
        if (parts.empty())
            return {};
        const auto part = parts.front();
        parts = parts.subspan(1);
        return part;
    };
    return writeFileInParts(path, next, why);
}

bool writeFile(const char* path, std::span<const std::uint8_t> bytes, std::error_code* why)
{
    const std::span<const std::uint8_t> parts[] = {bytes};
    return writeFile(path, parts, why);
}

const char* writeFailure(std::error_code why)
{
    struct Reason
    {
        std::errc error;
        const char* text;
    };
    static constexpr Reason reasons[] = {
        {std::errc::no_space_on_device, "the disk is full"},
        {std::errc::file_too_large, "it would be larger than files may be here"},
        {std::errc::permission_denied, "it or its folder may not be written"},
        {std::errc::operation_not_permitted, "it or its folder may not be written"},
        {std::errc::read_only_file_system, "its disk may only be read"},
        {std::errc::no_such_file_or_directory, "there is no such folder"},
        {std::errc::not_a_directory, "there is no such folder"},
        {std::errc::is_a_directory, "it is a folder"},
        {std::errc::filename_too_long, "its name is too long"},
        {std::errc::too_many_symbolic_link_levels, "its links lead nowhere"},
        {std::errc::broken_pipe, "its reader has gone"},
        {std::errc::io_error, "its disk fails"},
        {std::errc::not_enough_memory, "memory is short"},
    };
    for (const Reason& reason : reasons)
        if (why == reason.error)
            return reason.text;
    return "it cannot be created";
}

} // namespace ormalux
