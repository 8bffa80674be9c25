#pragma once

#include "Held.h"
#include "steps/Inspection.h"
#include "steps/Recipe.h"

namespace ormalux::python {

/// What a recipe found, and the array that it reads an unchanged picture in.
struct Inspection : Held<CKestInspection>
{
    std::shared_ptr<void> source;
};

} // namespace ormalux::python
