#pragma once

#include "platform/Types.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ormalux::cli {

/// What an operator writes for an option, read as a value; a text that means none is refused with a message
/// (CLI::ValidationError) that says what was expected.

/// Whole numbers between separators; nothing when anything else stands there.
std::optional<std::vector<int>> parseNumbers(std::string_view text, std::string_view separator);

/// "x1,y1,x2,y2": inclusive corners, put in order.
RECT parseRegion(const std::string& text);

/// "WxH", both at least 1.
SIZE parseSize(const std::string& text);

/// "auto", a level 0..255, or a range LOW..HIGH of levels.
struct ThresholdChoice
{
    bool automatic = true;
    int low = 0;
    int high = 0;
    bool pair = false; ///< written as a range, though it may hold one level
    bool range() const { return !automatic && high > low; }
};
ThresholdChoice parseThreshold(const std::string& text);

/// A range may be given where the operation takes one; elsewhere it is refused.
ThresholdChoice parsePlainThreshold(const std::string& text);

/// "white" is 255, "black" is 0.
int parseObject(const std::string& text);

} // namespace ormalux::cli
