#pragma once

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace ormalux::cli {

/// Each adds its subcommand to the program; what runs when it was chosen is left in `chosen`, which returns
/// the exit code.
using Chosen = std::function<int()>;

void addInfo(CLI::App& program, Chosen& chosen);
void addThreshold(CLI::App& program, Chosen& chosen);
void addSource(CLI::App& program, Chosen& chosen);
void addProcess(CLI::App& program, Chosen& chosen);
void addPlane(CLI::App& program, Chosen& chosen);
void addRun(CLI::App& program, Chosen& chosen);
void addRecipe(CLI::App& program, Chosen& chosen);
/// A measuring step as a subcommand of its own.
void addStep(CLI::App& parent, const std::string& commandName, const std::string& stepName, Chosen& chosen);

} // namespace ormalux::cli
