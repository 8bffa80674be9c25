#pragma once

#include "steps/RecipePlan.h"

#include <string>
#include <vector>

namespace ormalux {

/// Operations as an operator writes them behind one another: NAME or NAME:ARGUMENT,ARGUMENT,..., the
/// arguments in the order of the step's parameters. What is wrong is written to `why`, a line each.
std::vector<BoundStep> parseChain(const std::vector<std::string>& texts, std::vector<std::string>& why);

/// The step as it is written in a chain; what may be left out stands in brackets.
std::string chainUsage(const Step& step);

} // namespace ormalux
