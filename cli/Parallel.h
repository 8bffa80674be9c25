#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace ormalux::cli {

/// Calls work(0) … work(count - 1), each answering with one line, spread over processes, and gives the
/// answers to take in the order of their numbers as they come. jobs 0 is one process for each processor; one
/// process, or a system that cannot fork, works in this one.
void inProcesses(std::size_t count, int jobs, const std::function<std::string(std::size_t)>& work,
                 const std::function<void(const std::string&)>& take);

} // namespace ormalux::cli
