#pragma once

#include "cli/Step.h"

#include <string>
#include <vector>

namespace ormalux::cli {

/// A step with its checked arguments.
struct BoundStep
{
    const Step* step;
    Json arguments;
};

/// Steps that change a picture, each written NAME or NAME:ARGUMENT,ARGUMENT in the order of the parameters;
/// throws InputError that names the step.
std::vector<BoundStep> parseChain(const std::vector<std::string>& texts);

} // namespace ormalux::cli
