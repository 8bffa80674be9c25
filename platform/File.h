#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <system_error>
#include <vector>

namespace ormalux {

/// Opens, for reading or writing, by a path in UTF-8 on every platform. Nothing throws.

/// The length of a regular file in bytes; nothing when the path is not a readable regular file.
std::optional<std::uint64_t> fileLength(const char* path);

/// The end of a sentence on a file that gave no bytes: "no such file".
const char* readFailure(const char* path);

/// The whole of a regular file, at most limit bytes of it from its beginning. Nothing when it cannot be read,
/// memory is short, or the path names something else (a directory, a device).
std::optional<std::vector<std::uint8_t>> readFile(const char* path, std::uint64_t limit = UINT64_MAX);

/// A regular file opened for reading piece by piece.
class FileReader
{
public:
    explicit FileReader(const char* path);

    bool isOpen() const { return m_stream != nullptr; }
    std::uint64_t length() const { return m_length; }
    /// Reads the bytes from the position on; false unless it gets them all.
    bool read(std::uint64_t position, std::span<std::uint8_t> bytes);

private:
    struct Closer
    {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Closer> m_stream;
    std::uint64_t m_length = 0;
    std::uint64_t m_position = 0;
};

/// Writes the parts one after the other, whole or not at all: into a new file beside the target, which then
/// takes its place (platform/FileTarget.h); devices and pipes are written as they stand. False when that
/// fails; the old file is then as it was, and why, when given, holds the reason.
bool writeFile(const char* path, std::span<const std::span<const std::uint8_t>> parts,
               std::error_code* why = nullptr);
bool writeFile(const char* path, std::span<const std::uint8_t> bytes, std::error_code* why = nullptr);
/// The same for parts that are made as they are written; an empty one is the end. A part need only last until
/// the next is asked for.
bool writeFileInParts(const char* path, const std::function<std::span<const std::uint8_t>()>& nextPart,
                      std::error_code* why = nullptr);

/// The end of a sentence on a file that could not be written: "the disk is full".
const char* writeFailure(std::error_code why);

} // namespace ormalux
