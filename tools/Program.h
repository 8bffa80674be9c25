#pragma once

#include "tools/EffectTool.h"

#include <string_view>

namespace ormalux {

/// A whole program: it reads the picture named by its first argument (an 8- or 24-bit BMP; a colour picture
/// counts by (R + G + B) / 3), runs the body, in which the picture is `CKestImage image`, and prints what the
/// body prints with std::printf. The head says how to build it and names the picture that was on the screen.
CString completeProgram(const ToolScene& scene, std::string_view body);

/// The same for an effect: the call changes `image`, which is the area alone, and the picture with its area
/// changed is written to the file named by the second argument. A colour picture keeps its colours if the
/// effect can use them.
CString effectProgram(const ToolScene& scene, ColorUse use, std::string_view call);

/// The head of a program: how to build it, and the picture that was on the screen.
CString programHead(const ToolScene& scene);

/// "left, top, right, bottom".
CString areaArguments(const RECT& area);

/// A text as a literal of the program: quoted, with what needs it escaped.
CString literal(const std::string& text);

} // namespace ormalux
