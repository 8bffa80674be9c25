#pragma once

#include <CLI/CLI.hpp>

#include <functional>

namespace ormalux::cli {

/// Each adds its subcommand to the program; what runs when it was chosen is left in `chosen`, which returns
/// the exit code.
using Chosen = std::function<int()>;

void addInfo(CLI::App& program, Chosen& chosen);
void addThreshold(CLI::App& program, Chosen& chosen);
void addBlobs(CLI::App& program, Chosen& chosen);
void addSource(CLI::App& program, Chosen& chosen);
void addMatch(CLI::App& program, Chosen& chosen);

} // namespace ormalux::cli
