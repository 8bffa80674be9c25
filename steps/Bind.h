#pragma once

#include "steps/RecipePlan.h"

namespace ormalux {

/// A step that stands alone, without a recipe around it: its arguments read and checked, its files relative
/// to the working folder. What is wrong is reported; the step then has no operation.
BoundStep bindAlone(const Step& step, const Node& object, const ArgumentFault& fault);

/// Sizes whose least is above the largest are a slip.
void checkSizes(const Arguments& arguments, const Node& object, const ArgumentFault& fault);

/// The shape of a step's findings, without units.
Layout layoutOf(const Step& step, const std::string& name);

} // namespace ormalux
