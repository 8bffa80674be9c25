#pragma once

#include "cli/Chain.h"

#include <string>
#include <vector>

namespace ormalux::cli {

/// A list of steps that is run on every picture alike.
struct Recipe
{
    std::string folder; ///< where the names of its sources are looked for
    std::vector<BoundStep> steps;
};

/// Reads and checks a recipe file; throws InputError that names the file, the step and the field.
Recipe loadRecipe(const std::string& file);

/// Runs the recipe on a picture: {"file": …, "steps": [what each measuring step found]}.
Json runRecipe(const Recipe& recipe, const std::string& file, Workpiece& work);

/// A commented recipe to start from.
std::string exampleRecipe();

/// The JSON schema of recipes, made from the steps themselves.
Json recipeSchema();

} // namespace ormalux::cli
