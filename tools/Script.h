#pragma once

#include "platform/Types.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

namespace ormalux {

/// The calls for which there is a ready-made example program, in the order of their texts.
enum class ScriptTemplate
{
    DoubleThreshold,
    Gamma,
    Light,
    LineGauge,
    Match,
    OcrMatch,
    PointGauge,
    Rotate,
    Threshold,
    UserFilter,
    BlobList
};

/// What a placeholder is filled with. A number with a fraction gets six decimals and a point in every locale.
using ScriptValue = std::variant<int, double, std::string>;

/// The example program of a call: the size of the picture, then the values in the order of the placeholders.
CString toolScript(ScriptTemplate which, int width, int height, std::initializer_list<ScriptValue> values);

/// The example program of a call without a text of its own, such as "Erode()" or "Histogram(histogram)".
CString callScript(int width, int height, std::string_view call);

/// The example program of an operation without arguments, such as "Erode".
CString oneStepScript(int width, int height, std::string_view operation);

} // namespace ormalux
