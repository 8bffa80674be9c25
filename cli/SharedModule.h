#pragma once

#include <filesystem>
#include <string>

namespace ormalux::cli {

/// Loads a shared module for as long as the process lives; null with the reason when that fails.
void* openModule(const std::filesystem::path& file, std::string& why);
/// A function of the module; null when it has none of that name.
void* moduleFunction(void* module, const char* name);

} // namespace ormalux::cli
