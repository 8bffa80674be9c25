#include "platform/FileTarget.h"

#if defined(_WIN32)

#include <algorithm>
#include <string>
#include <vector>

// The platform's own header stays in this file: it knows other types by the interface's names.
#include <windows.h>

namespace ormalux {

namespace fs = std::filesystem;

namespace {

std::error_code lastError()
{
    return {int(GetLastError()), std::system_category()};
}

class Handle
{
public:
    explicit Handle(HANDLE handle) : m_handle(handle) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { close(); }

    explicit operator bool() const { return m_handle != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return m_handle; }
    void close()
    {
        if (m_handle != INVALID_HANDLE_VALUE)
            CloseHandle(m_handle);
        m_handle = INVALID_HANDLE_VALUE;
    }

private:
    HANDLE m_handle;
};

std::error_code writeAll(HANDLE file, const PartSource& nextPart)
{
    constexpr std::size_t most = 1 << 30;
    for (auto part = nextPart(); !part.empty(); part = nextPart())
        while (!part.empty()) {
            DWORD written = 0;
            if (!WriteFile(file, part.data(), DWORD(std::min(part.size(), most)), &written, nullptr))
                return lastError();
            part = part.subspan(written);
        }
    return {};
}

std::uint64_t ticks(const FILETIME& time)
{
    return std::uint64_t(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

/// Removes a file that an ended writer left. A living one keeps its file to itself; the minute covers the
/// moment between closing and renaming. Whether there was a file of that name.
bool removeLeftover(const fs::path& path)
{
    constexpr std::uint64_t minute = 60 * 10'000'000ull;
    WIN32_FILE_ATTRIBUTE_DATA found{};
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &found))
        return false;
    if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) &&
        ticks(now) > ticks(found.ftLastWriteTime) + minute)
        DeleteFileW(path.c_str());
    return true;
}

/// The first free file beside the target, for this writer alone.
HANDLE createBeside(const fs::path& target, fs::path& created)
{
    constexpr unsigned looked = 8, most = 1u << 20;
    HANDLE file = INVALID_HANDLE_VALUE;
    bool present = true;
    for (unsigned slot = 0; slot < most && (file == INVALID_HANDLE_VALUE || present || slot < looked);
         ++slot) {
        const fs::path path = target.parent_path() / besideName(target.filename(), slot);
        present = removeLeftover(path);
        if (file != INVALID_HANDLE_VALUE)
            continue;
        file =
            CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        created = path;
        if (file == INVALID_HANDLE_VALUE && GetLastError() != ERROR_FILE_EXISTS)
            return file;
    }
    return file;
}

/// Gives the new file the rights and attributes of the old one, as far as the file system has any.
/// Deliberate: ReplaceFile would do so, but renames the old file away first, and a crash between leaves none
/// of the name.
void takeOver(const fs::path& created, const fs::path& target, DWORD attributes)
{
    DWORD size = 0;
    GetFileSecurityW(target.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::uint8_t> rights(size);
    if (size && GetFileSecurityW(target.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size))
        SetFileSecurityW(created.c_str(), DACL_SECURITY_INFORMATION, rights.data());
    SetFileAttributesW(created.c_str(), attributes);
}

} // namespace

std::error_code replaceFile(const fs::path& target, const PartSource& nextPart)
{
    const DWORD old = GetFileAttributesW(target.c_str());
    if (old != INVALID_FILE_ATTRIBUTES && (old & FILE_ATTRIBUTE_READONLY))
        return {ERROR_ACCESS_DENIED, std::system_category()};
    fs::path created;
    Handle file(createBeside(target, created));
    if (!file)
        return lastError();
    std::error_code error = writeAll(file.get(), nextPart);
    if (!error && !FlushFileBuffers(file.get()))
        error = lastError();
    file.close();
    if (!error && old != INVALID_FILE_ATTRIBUTES)
        takeOver(created, target, old);
    if (!error &&
        !MoveFileExW(created.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        error = lastError();
    if (error)
        DeleteFileW(created.c_str());
    return error;
}

bool isWrittenInto(const fs::path& target)
{
    std::error_code error;
    return fs::exists(target, error) && !fs::is_regular_file(target, error);
}

std::error_code writeInto(const fs::path& target, const PartSource& nextPart)
{
    const Handle file(CreateFileW(target.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file ? writeAll(file.get(), nextPart) : lastError();
}

} // namespace ormalux

#endif
