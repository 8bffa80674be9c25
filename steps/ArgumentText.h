#pragma once

#include "steps/Parameter.h"

#include <optional>
#include <string_view>

namespace ormalux {

// What an operator writes, read as a value; nothing when the text means none.

/// Whole numbers between separators, and nothing else.
std::optional<std::vector<int>> parseNumbers(std::string_view text, std::string_view separator);
/// Numbers between separators.
std::optional<std::vector<double>> parseReals(std::string_view text, std::string_view separator);
/// A whole text that is one finite number.
std::optional<double> parseReal(std::string_view text);
/// "x1,y1,x2,y2": inclusive corners, put in order.
std::optional<RECT> parseRegion(std::string_view text);
/// "WxH", both at least 1.
std::optional<SIZE> parseSize(std::string_view text);
std::optional<ThresholdChoice> parseThreshold(std::string_view text);
/// The same without a range.
std::optional<ThresholdChoice> parseLevel(std::string_view text);
/// "name" or "name[row]".
std::optional<RowReference> parseReference(std::string_view text);
/// Letters, digits and underscores, a letter first.
bool isName(std::string_view text);

inline constexpr const char* regionForm = "a region as x1,y1,x2,y2 (its first and last column and row)";
inline constexpr const char* sizeForm = "a size as WxH, both at least 1";
inline constexpr const char* thresholdForm =
    "'auto', a level from 0 to 255, or a range of levels as LOW..HIGH";
inline constexpr const char* levelForm = "'auto' or a level from 0 to 255";

} // namespace ormalux
