#pragma once

#include "cli/Command.h"

#include <string>

namespace ormalux::cli {

// Each adds its command to the program.

void addInfo(Command& program);
void addThreshold(Command& program);
void addSource(Command& program);
void addProcess(Command& program);
void addPlane(Command& program);
void addRun(Command& program);
void addRecipe(Command& program);
/// A measuring step as a command of its own.
void addStep(Command& parent, const std::string& commandName, const std::string& stepName);

} // namespace ormalux::cli
