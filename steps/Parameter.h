#pragma once

#include "platform/Types.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace ormalux {

/// What a parameter of a step takes. The same text serves a recipe, a chain and an option.
enum class Kind
{
    Integer,   ///< std::int64_t
    Real,      ///< double
    Flag,      ///< bool
    Choice,    ///< std::string, one of the choices
    Threshold, ///< ThresholdChoice: auto, a level, a range
    Level,     ///< ThresholdChoice without a range
    Region,    ///< RECT, corners included and in order
    Corners,   ///< std::vector<double>: x1, y1, x2, y2 of a line or an upright box, in their order
    Point,     ///< std::vector<double>: x, y
    Box,       ///< std::vector<double>: middle x, y, length, width, angle
    Pair,      ///< std::vector<double>: two numbers within the limits
    Triple,    ///< std::vector<double>: three whole numbers within the limits
    Size,      ///< SIZE "WxH", both at least 1
    Extent,    ///< SIZE: "WxH" or one whole number for both, within the limits
    Text,      ///< std::string
    Files,     ///< std::vector<std::string>
    Kernel,    ///< std::vector<long>: the entries of a square, row by row
    Reference, ///< RowReference: a named step before, or one of its rows
    Fractions, ///< std::vector<double>: an object of numbers, one a choice; the fallback fills what is absent
    Conditions, ///< std::vector<Condition>: an object of columns and the ranges that they must lie in
    Column      ///< std::string: a column of the step's result, "-" before it for the largest first
};

/// A parameter of a step, as operators write it in a recipe, in a chain and as an option.
struct Parameter
{
    std::string name; ///< with '_' in recipes, with '-' as an option
    Kind kind;
    std::string fallback; ///< the value when it is not given, as text; empty when there is none
    std::string help;
    double low = 0, high = 0; ///< of numbers, both included
    std::vector<std::string> choices{};
    bool optional = false; ///< may be absent without a value to stand for it
    std::string unit{};

    bool required() const { return fallback.empty() && !optional; }
};

/// "auto", a level 0..255, or a range LOW..HIGH of levels.
struct ThresholdChoice
{
    bool automatic = true;
    int low = 0;
    int high = 0;
    bool pair = false; ///< written as a range, though it may hold one level
    std::string text;  ///< as it was written

    bool range() const { return !automatic && high > low; }
};

/// "hole", or "hole[2]": rows count from 1.
struct RowReference
{
    std::string name;
    int row = 1;
    int step = -1; ///< the number of the step in its recipe, from 0
};

/// What a row must have in a column; an end that is open is not a number.
struct Condition
{
    std::string column;
    double low, high;
};

using Argument = std::variant<std::monostate, std::int64_t, double, bool, std::string, ThresholdChoice, RECT,
                              SIZE, std::vector<double>, std::vector<long>, std::vector<std::string>,
                              RowReference, std::vector<Condition>>;

} // namespace ormalux
