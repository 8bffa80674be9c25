#pragma once

#include <string>

namespace ormalux {

/// A commented example of a recipe.
std::string exampleRecipe();

/// The JSON schema of recipes, made from the table of operations. Its steps are told apart by `if` and `then`
/// on "step", so that a validator names the field that is wrong.
std::string recipeSchema();

} // namespace ormalux
