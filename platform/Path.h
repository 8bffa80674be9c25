#pragma once

#include <filesystem>

namespace ormalux {

/// The platform's form of a path in UTF-8; empty for a null pointer or text that is not UTF-8 where the
/// platform needs it to be.
std::filesystem::path nativePath(const char* path);

} // namespace ormalux
