#pragma once

#include "platform/Export.h"
#include "array/MatchArray.h"
#include "platform/Export.h"

#include <string>
#include <vector>

namespace ormalux {

/// Characters as they are read: lines from top to bottom, in each from left to right. A character belongs to
/// the first line beside whose topmost character its middle lies.
ORMALUX_API std::vector<std::vector<_stMatchResult>> readingOrder(CMatchResultArray results);

/// How a source's character is shown: "?" for what is no ASCII letter, digit or sign.
inline std::string characterText(std::uint8_t key)
{
    return key >= 32 && key < 127 ? std::string(1, char(key)) : "?";
}

} // namespace ormalux
