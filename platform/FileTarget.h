#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <system_error>

namespace ormalux {

/// The parts of a file one after the other; an empty one is the end.
using PartSource = std::function<std::span<const std::uint8_t>()>;

/// Writes a new file beside the target, brings its bytes to the disk and puts it in the target's place:
/// whoever opens the target finds all of the old file or all of the new one, after a crash of the system as
/// well. The name of the new file depends on the target's alone and is short, so that a target's name may
/// have any length; those that ended writers left for the target are removed first. What goes wrong leaves
/// the old file alone.
///
/// A symbolic link stays and what it points at is replaced. Mode, owner and group stay; a group that may not
/// be given gets no more than everyone. Deliberate: another name of the file (a hard link) keeps the old
/// bytes, since writing into the shared file could leave half of it. A file that may not be written is not
/// replaced either.
std::error_code replaceFile(const std::filesystem::path& target, const PartSource& nextPart);

/// Whether bytes for the target go into what stands there, since it cannot be replaced: devices, pipes, and
/// the names of the process's own open files (/dev/stdout).
bool isWrittenInto(const std::filesystem::path& target);

/// Writes into a target for which isWrittenInto holds. A named pipe without a reader is waited for.
std::error_code writeInto(const std::filesystem::path& target, const PartSource& nextPart);

/// The name of the new file beside a target of this name; writers at the same time take different slots.
std::string besideName(const std::filesystem::path& target, unsigned slot);

} // namespace ormalux
