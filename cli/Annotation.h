#pragma once

#include "steps/Overlay.h"
#include "steps/Step.h"
#include "steps/Work.h"

#include <string>
#include <vector>

namespace ormalux::cli {

/// Draws what was found over a picture, step after step.
class Annotation
{
public:
    void add(const Step& step, const Findings& found);
    /// Writes the picture as the steps left it with the drawings over it, whole or not at all; throws
    /// InputError. A colour picture keeps its colours as long as no step changed its size.
    void write(const std::string& name, const Work& work);

private:
    std::vector<Shape> m_shapes;
};

} // namespace ormalux::cli
