#pragma once

#include "steps/Step.h"
#include "steps/Work.h"

namespace ormalux {

/// Runs a measuring step on the region of a turned plate, resampled upright (bilinear); what it finds is
/// moved back into the picture. Sides of boxes stay upright.
void runUpright(const Operation& operation, const std::optional<RECT>& roi, Work& work, Findings& found);

} // namespace ormalux
