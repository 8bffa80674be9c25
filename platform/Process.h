#pragma once

#include <string>

namespace ormalux {

/// The processors that this process may run on, at least 1.
int processorsAllowed();

/// The folder of the module that holds the address (UTF-8, no trailing separator), of a program the one that
/// it lies in however it was started; empty when there is none.
std::string moduleFolder(const void* address);

} // namespace ormalux
