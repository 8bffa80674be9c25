#pragma once

#include "cli/Step.h"

#include <string>

namespace ormalux::cli {

/// Draws the shapes of a workpiece over its picture and writes it in the format of the name's ending; throws
/// InputError. A colour picture keeps its colours as long as no step changed its size.
void writeAnnotated(const std::string& name, Workpiece& work);

/// A box around the inclusive rectangle with a small label above it, or beside it where that
/// place is taken.
void addLabelledBox(CDrawObjArray& shapes, const RECT& box, COLORREF color, const std::string& label);

} // namespace ormalux::cli
