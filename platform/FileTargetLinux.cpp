#include "platform/FileTarget.h"

#if !defined(_WIN32)

#include "platform/QuietSignals.h"

#include <algorithm>
#include <cerrno>
#include <string>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ormalux {

namespace fs = std::filesystem;

namespace {

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

class Descriptor
{
public:
    explicit Descriptor(int number = -1) : m_number(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    explicit operator bool() const { return m_number >= 0; }
    int get() const { return m_number; }
    void take(int number)
    {
        close();
        m_number = number;
    }

private:
    void close()
    {
        if (m_number >= 0)
            ::close(m_number);
        m_number = -1;
    }
    int m_number;
};

std::error_code writeAll(int file, const PartSource& nextPart)
{
    constexpr std::size_t most = 1 << 30;
    const QuietSignals quiet;
    for (auto part = nextPart(); !part.empty(); part = nextPart())
        while (!part.empty()) {
            const ssize_t n = ::write(file, part.data(), std::min(part.size(), most));
            if (n < 0 && errno != EINTR)
                return lastError();
            part = part.subspan(std::size_t(std::max<ssize_t>(n, 0)));
        }
    return {};
}

/// Folders and files of some file systems cannot be synced; that is no failure of writing.
bool synced(int file)
{
    return ::fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS;
}

bool isSameFile(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// A file in the making beside its target. It is locked as long as its writer lives: one that can be locked
/// has been left behind.
class NewFile
{
public:
    NewFile(int folder, const fs::path& name) : m_folder(folder), m_target(name) {}
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile()
    {
        if (m_file)
            ::unlinkat(m_folder, m_name.c_str(), 0);
    }

    int file() const { return m_file.get(); }

    std::error_code create(mode_t mode)
    {
        // Slots that were in use at once are few; behind a free one there may still be some left behind.
        constexpr unsigned looked = 8, most = 1u << 20;
        std::error_code error;
        bool present = true;
        for (unsigned slot = 0; slot < most && (!m_file || present || slot < looked); ++slot) {
            const std::string name = besideName(m_target, slot);
            present = removeLeftover(name);
            if (!m_file && (error = createNamed(name, mode)) && error != std::errc::file_exists)
                return error;
        }
        return m_file ? std::error_code() : error;
    }

    /// The bytes on the disk, under the target's name.
    std::error_code commit()
    {
        if (!synced(m_file.get()))
            return lastError();
        if (::renameat(m_folder, m_name.c_str(), m_folder, m_target.c_str()) != 0)
            return lastError();
        m_file.take(-1);
        const Descriptor folder(::openat(m_folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (folder)
            ::fsync(folder.get()); // the file stands whole under either name, whatever this says
        return {};
    }

private:
    std::error_code createNamed(const std::string& name, mode_t mode)
    {
        m_file.take(
            ::openat(m_folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode));
        if (!m_file)
            return lastError();
        m_name = name;
        const bool locked = ::flock(m_file.get(), LOCK_EX | LOCK_NB) == 0;
        struct stat made
        {
        };
        // Between creating and locking, another writer may have taken the file for left behind.
        if ((!locked && errno == EWOULDBLOCK) || ::fstat(m_file.get(), &made) != 0 || made.st_nlink == 0) {
            m_file.take(-1);
            return std::make_error_code(std::errc::file_exists);
        }
        return {};
    }

    /// Whether there was a file of that name.
    bool removeLeftover(const std::string& name) const
    {
        const Descriptor left(
            ::openat(m_folder, name.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
        struct stat opened
        {
        }, named{};
        if (!left)
            return errno != ENOENT;
        if (::fstat(left.get(), &opened) != 0 || !S_ISREG(opened.st_mode) ||
            ::flock(left.get(), LOCK_EX | LOCK_NB) != 0)
            return true;
        // What is locked may have become the target meanwhile, and its name another writer's.
        if (::fstatat(m_folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 && isSameFile(opened, named))
            ::unlinkat(m_folder, name.c_str(), 0);
        return true;
    }

    int m_folder;
    fs::path m_target;
    std::string m_name;
    Descriptor m_file;
};

/// Gives the file the mode, owner and group of the old one. Deliberate: who may not give the group away would
/// open the file to another group; that one gets no more than everyone.
std::error_code takeOver(int file, const struct stat& old)
{
    mode_t mode = old.st_mode & 07777;
    struct stat made
    {
    };
    if (::fstat(file, &made) != 0)
        return lastError();
    if (made.st_gid != old.st_gid && ::fchown(file, uid_t(-1), old.st_gid) != 0)
        mode = (mode & ~mode_t(S_IRWXG | S_ISGID)) | (mode & S_IRWXO) << 3;
    if (made.st_uid != old.st_uid && ::fchown(file, old.st_uid, gid_t(-1)) != 0)
        mode &= ~mode_t(S_ISUID);
    return ::fchmod(file, mode) == 0 ? std::error_code() : lastError();
}

fs::path folderOf(const fs::path& path)
{
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

/// The path behind the last of the symbolic links, which may name nothing yet; stops at the names of open
/// files, which are links to look at but lead to where the file was opened.
fs::path behindLinks(fs::path path, int& openFile)
{
    openFile = -1;
    for (int links = 0; links < 40; ++links) {
        const fs::path folder = path.parent_path();
        const std::string name = path.filename().string();
        const bool number =
            !name.empty() && name.size() < 7 &&
            std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
        if (number && (folder == "/dev/fd" || folder == "/proc/self/fd")) {
            openFile = std::stoi(name);
            return path;
        }
        std::error_code error;
        if (!fs::is_symlink(path, error))
            return path;
        const fs::path next = fs::read_symlink(path, error);
        if (error)
            break;
        path = folder / next; // an absolute one stands alone
    }
    return {}; // links in a ring
}

} // namespace

std::error_code replaceFile(const fs::path& linked, const PartSource& nextPart)
{
    int openFile = -1;
    const fs::path target = behindLinks(linked, openFile);
    if (target.empty())
        return std::make_error_code(std::errc::too_many_symbolic_link_levels);
    if (!target.has_filename())
        return std::make_error_code(std::errc::is_a_directory);
    // By path alone: a folder that may not be listed can be written all the same.
    const Descriptor folder(::open(folderOf(target).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!folder)
        return lastError();
    const fs::path name = target.filename();
    struct stat old
    {
    };
    const bool exists = ::fstatat(folder.get(), name.c_str(), &old, 0) == 0;
    if (!exists && errno != ENOENT)
        return lastError();
    if (exists && ::faccessat(folder.get(), name.c_str(), W_OK, AT_EACCESS) != 0)
        return lastError();

    NewFile made(folder.get(), name);
    std::error_code error = made.create(exists ? 0600 : 0666);
    if (!error)
        error = writeAll(made.file(), nextPart);
    if (!error && exists)
        error = takeOver(made.file(), old);
    return error ? error : made.commit();
}

bool isWrittenInto(const fs::path& target)
{
    int openFile = -1;
    behindLinks(target, openFile);
    std::error_code error;
    return openFile >= 0 || (fs::exists(target, error) && !fs::is_regular_file(target, error));
}

std::error_code writeInto(const fs::path& target, const PartSource& nextPart)
{
    int openFile = -1;
    behindLinks(target, openFile);
    // An open file is written where it stands: opening it anew would begin at its start.
    const Descriptor file(openFile >= 0 ? ::fcntl(openFile, F_DUPFD_CLOEXEC, 0)
                                        : ::open(target.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
    return file ? writeAll(file.get(), nextPart) : lastError();
}

} // namespace ormalux

#endif
